#include <algorithm>

#include "midi/texts.h"
#include "player/chase.h"
#include "player/chase_messages.h"
#include "player/player.h"
#include "player/texts.h"

// The player's dealings with devices, and what it tells the user about them.

namespace tracksmith::player {

void TMidiPlayer::FormCreate(const PlayerSetup& setup) {
    host_ = &setup.host;
    FindInputs(setup);
    ports_.Enumerate(setup.outputs);
    TellMissingDevices();
    thread_.Start();
}

void TMidiPlayer::FormDestroy() {
    if (thread_.WorkingFlag()) {
        DisconnectMidiInPort();
        Stop();
        thread_.Terminate();
        ports_.CloseAll();
    }
}

void TMidiPlayer::TellMissingDevices() {
    if (ports_.Count() == 0) {
        const Text& text = ports_.DevicesPresent() == 0 ? texts::kNoDevice : texts::kNoUsableDevice;
        host_->ShowMessage(text.In(host_->CurrentLanguage()));
    }
}

void TMidiPlayer::OpenRoutedPorts() {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        const std::size_t port = routing_.Port(channel);
        if (port < ports_.Count() && !ports_.At(port).IsOpen()) {
            ports_.Open(port);
        }
    }
}

void TMidiPlayer::CheckPorts() {
    const std::size_t count = ports_.Count();
    const std::vector<std::size_t> back = ports_.Check();
    if (!back.empty()) {
        SetUpPorts(back);
    }
    if ((!back.empty() || ports_.Count() != count) && listener_.onPortsChanged) {
        listener_.onPortsChanged();
    }
}

bool TMidiPlayer::ReopenPort(std::size_t port) {
    const bool open = ports_.Reopen(port);
    if (open) {
        SetUpPorts({port});
    }
    return open;
}

// A device that is back knows nothing of what was sent before.
void TMidiPlayer::SetUpPorts(const std::vector<std::size_t>& ports) {
    const PassHold hold(thread_, *stopwatch_);
    if (!hold) {
        return;
    }
    const auto isBack = [&](std::size_t channel) {
        return std::find(ports.begin(), ports.end(), routing_.Port(channel)) != ports.end();
    };
    for (const std::size_t port : ports) {
        // Whatever sounded when it went, also on channels that are routed elsewhere by now.
        ports_.Silence(port);
    }
    const ChaseMemory memory = CollectChase(song_);
    if (isBack(0)) {
        SendSetUp(memory, sender_);
    }
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        if (isBack(channel)) {
            activity_.Clear(channel);
            SendChannelChase(memory.channels[channel], channel, sender_);
        }
    }
}

void TMidiPlayer::OnNotice(std::uint32_t notice) {
    if (notice == PortTrouble) {
        TellTrouble();
    } else if (!Playing() && listener_.onPlaying) {
        listener_.onPlaying(false);
    }
}

void TMidiPlayer::TellTrouble() {
    for (std::size_t index = 0; index < ports_.Count(); ++index) {
        OutputPort& port = ports_.At(index);
        const OutputPort::Trouble trouble = port.TakeTrouble();
        const Language language = host_->CurrentLanguage();
        if (trouble.lost) {
            host_->ShowMessage(texts::PortLost(language, port.ProductName()));
        }
        if (trouble.sysexTooLong) {
            host_->ShowMessage(midi::texts::kPrepareAddress.In(language));
        }
    }
    if (listener_.onPortsChanged) {
        listener_.onPortsChanged();
    }
}

} // namespace tracksmith::player
