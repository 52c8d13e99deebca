#pragma once

#include <RtMidi.h>
#include <memory>
#include <string>
#include <vector>

namespace tracksmith::midi::alsa {

/// True when the system's sequencer can be opened. Asked beforehand, because the ALSA library
/// writes to standard error when it fails to open one.
bool SequencerIsThere();

/// Makes a client of the sequencer whose complaints go to `callback` instead of standard error;
/// null without a sequencer.
template <typename Device>
std::unique_ptr<Device> MakeDevice(const std::string& clientName, RtMidiErrorCallback callback,
                                   void* user) {
    if (!SequencerIsThere()) {
        return nullptr;
    }
    try {
        auto device = std::make_unique<Device>(RtMidi::LINUX_ALSA, clientName);
        device->setErrorCallback(callback, user);
        return device;
    } catch (const std::exception&) {
        return nullptr;
    }
}

/// Full names of all ports of one side, by number; empty when they cannot be listed.
std::vector<std::string> PortNames(RtMidi& device);

/// Connects a client to the port of that full name; false when it is no longer there.
bool OpenNamedPort(RtMidi& device, const std::string& fullName);

} // namespace tracksmith::midi::alsa
