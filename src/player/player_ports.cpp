#include <algorithm>

#include "midi/texts.h"
#include "player/chase.h"
#include "player/player.h"
#include "player/texts.h"

// The player's dealings with devices, and what it tells the user about them.

namespace tracksmith::player {

void TMidiPlayer::FormCreate(const PlayerSetup& setup) {
    host_ = &setup.host;
    sendPatience_ = setup.sendPatience;
    if (setup.input != nullptr) {
        input_.Create(*setup.input, setup.storedInputName, setup.host);
    }
    ports_.Enumerate(setup.outputs);
    TellMissingDevices();
    thread_.Start();
    created_ = true;
}

void TMidiPlayer::FormDestroy() {
    if (std::exchange(created_, false)) {
        DisconnectMidiInPort();
        static_cast<void>(Stop()); // what hangs is left to itself
        thread_.Terminate();
        ports_.CloseAll();
    }
}

bool TMidiPlayer::WaitUntilSent(std::chrono::milliseconds patience) const {
    return ports_.WaitUntilSent(patience);
}

std::string TMidiPlayer::HangingPort() const {
    const std::optional<std::size_t> port = ports_.HoldingPort();
    return port && thread_.Passes().Stuck() ? ports_.At(*port).ProductName() : std::string();
}

void TMidiPlayer::Tell(const std::string& text) const {
    host_->ShowMessage(text);
}

void TMidiPlayer::TellPortsChanged() const {
    if (listener_.onPortsChanged) {
        listener_.onPortsChanged();
    }
}

void TMidiPlayer::TellMissingDevices() {
    if (ports_.Count() == 0) {
        const Text& text = ports_.DevicesPresent() == 0 ? texts::kNoDevice : texts::kNoUsableDevice;
        Tell(std::string(text.In(host_->CurrentLanguage())));
    }
}

void TMidiPlayer::TellNotOpened(std::size_t port, midi::ResultCode result) {
    if (port >= ports_.Count()) {
        return;
    }
    const OutputPort& told = ports_.At(port);
    const Language language = host_->CurrentLanguage();
    if (result == midi::kNotReady) {
        Tell(texts::OfPort(texts::kPortNotReady, language, told.ProductName()));
        return;
    }
    toldNotOpened_.insert(port);
    if (result == midi::kNoDevice) {
        Tell(texts::OfPort(texts::kPortAbsent, language, told.ProductName()));
    } else if (told.SoftwareInstrument()) {
        Tell(texts::OfPort(texts::kPortNotOpened, language, told.ProductName()));
    } else {
        Tell(texts::OfPort(texts::kPortNotOpened, language, told.ProductName(), texts::kInUse));
    }
}

bool TMidiPlayer::OpenPort(std::size_t port) {
    const midi::ResultCode result = ports_.Open(port);
    if (result != midi::kNoError) {
        TellNotOpened(port, result);
        return false;
    }
    return !ports_.At(port).Lost();
}

void TMidiPlayer::OpenPorts(const std::set<std::size_t>& ports) {
    for (const std::size_t port : ports) {
        OpenPort(port);
    }
}

std::vector<std::string> TMidiPlayer::SilentPorts() const {
    std::vector<std::string> names;
    for (const std::size_t port : routing_.Ports()) {
        if (port < ports_.Count() && ports_.At(port).State() != PortState::Open) {
            names.push_back(ports_.At(port).ProductName());
        }
    }
    return names;
}

void TMidiPlayer::CheckPorts() {
    const std::size_t count = ports_.Count();
    const OutputPorts::Changes changes = ports_.Check(routing_.Ports());
    for (const std::size_t port : changes.back) {
        toldNotOpened_.erase(port);
    }
    for (const auto& [port, result] : changes.notOpened) {
        if (!toldNotOpened_.contains(port)) {
            TellNotOpened(port, result);
        }
    }
    SetUpPorts(changes.back);
    const bool inputsChanged = input_.Check();
    if (!changes.back.empty() || ports_.Count() != count || inputsChanged) {
        TellPortsChanged();
    }
}

bool TMidiPlayer::ReopenPort(std::size_t port) {
    const bool open = ports_.Reopen(port);
    if (open) {
        SetUpPorts({port});
    }
    return open;
}

// A device that is back knows nothing of what was sent before. Where a pass hangs, it is done
// later.
void TMidiPlayer::SetUpPorts(const std::vector<std::size_t>& ports) {
    toSetUp_.insert(ports.begin(), ports.end());
    if (toSetUp_.empty()) {
        return;
    }
    const Hold hold(*this);
    if (!hold) {
        return;
    }
    for (const std::size_t port : toSetUp_) {
        // Whatever sounded when it went, also on channels that are routed elsewhere by now.
        ports_.Silence(port);
    }
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        if (toSetUp_.contains(routing_.Port(channel))) {
            activity_.Clear(channel);
        }
    }
    SetUpNow(InUse(toSetUp_));
    toSetUp_.clear();
}

// Those of the ports that channels go to.
PortSet TMidiPlayer::InUse(const std::set<std::size_t>& ports) const {
    PortSet inUse;
    for (const std::size_t port : routing_.Ports()) {
        if (port < inUse.size() && ports.contains(port)) {
            inUse.set(port);
        }
    }
    return inUse;
}

// Gives ports the set-up messages and then what is set on their channels, while the music goes on
// elsewhere. While stopped nobody is in a hurry to hear them, and Play sends all of it again.
void TMidiPlayer::SetUpNow(const PortSet& ports) {
    keeper_.MakeRoomForPorts();
    PreparationPlan plan{Chase().setUp, ports, ports, Extent::Anew, false};
    if (!Playing()) {
        for (SetUpMessage& message : plan.setUp) {
            message.pauseMs = 0;
        }
    }
    keeper_.ForgetSetUps(ports);
    dispatcher_.Prepare(std::move(plan));
}

void TMidiPlayer::OnNotice(std::uint32_t notice) {
    if (notice == PortTrouble) {
        TellTrouble();
    } else if (notice == HangOver) {
        if (listener_.onHangOver) {
            listener_.onHangOver();
        }
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
            Tell(texts::OfPort(texts::kPortLost, language, port.ProductName()));
        }
        if (trouble.hanging) {
            Tell(texts::OfPort(texts::kPortHangs, language, port.ProductName(), texts::kSwitchOff));
        }
        if (trouble.refused) {
            Tell(texts::OfPort(texts::kMessageRefused, language, port.ProductName()));
        }
        if (trouble.sysexTooLong) {
            Tell(std::string(midi::texts::kPrepareAddress.In(language)));
        }
    }
    TellPortsChanged();
}

} // namespace tracksmith::player
