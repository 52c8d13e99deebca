#include "midi/backends/alsa/midi_in.h"

#include <chrono>
#include <utility>

#include "midi/backends/alsa/port_names.h"
#include "midi/backends/alsa/sequencer.h"

namespace tracksmith::midi::alsa {

std::unique_ptr<MidiIn> MidiIn::Open(const std::string& fullName, MessageReceiver receiver,
                                     ResultCode& result) {
    std::unique_ptr<MidiIn> in(new MidiIn(std::move(receiver)));
    result = in->OpenPort(fullName);
    return result == kNoError ? std::move(in) : nullptr;
}

ResultCode MidiIn::OpenPort(const std::string& fullName) {
    device_ = MakeDevice<RtMidiIn>(std::string(kClientName), &MidiIn::OnError, this);
    if (device_ == nullptr) {
        return kNoDriver;
    }
    // Everything is wanted, also the clock and active sensing, which RtMidi leaves out by default.
    device_->ignoreTypes(false, false, false);
    device_->setCallback(&MidiIn::OnMessage, this);
    return OpenNamedPort(*device_, fullName) && !failed_ ? kNoError : kBadDeviceId;
}

void MidiIn::OnMessage(double /*seconds*/, std::vector<unsigned char>* message, void* self) {
    using std::chrono::steady_clock;
    const auto now = std::chrono::duration_cast<std::chrono::milliseconds>(
        steady_clock::now().time_since_epoch());
    if (message != nullptr && !message->empty()) {
        static_cast<MidiIn*>(self)->receiver_(*message, static_cast<std::uint64_t>(now.count()));
    }
}

void MidiIn::OnError(RtMidiError::Type /*type*/, const std::string& /*text*/, void* self) {
    static_cast<MidiIn*>(self)->failed_ = true;
}

} // namespace tracksmith::midi::alsa
