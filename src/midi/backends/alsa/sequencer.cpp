#include "midi/backends/alsa/sequencer.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

#include "midi/backends/alsa/port_names.h"

namespace tracksmith::midi::alsa {

bool SequencerIsThere() {
    const int handle = open("/dev/snd/seq", O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (handle >= 0) {
        close(handle);
    }
    return handle >= 0;
}

std::vector<std::string> PortNames(RtMidi& device) {
    std::vector<std::string> names;
    try {
        const unsigned count = device.getPortCount();
        for (unsigned i = 0; i < count; ++i) {
            names.push_back(device.getPortName(i));
        }
    } catch (const std::exception&) {
        names.clear();
    }
    return names;
}

bool OpenNamedPort(RtMidi& device, const std::string& fullName) {
    const std::vector<std::string> names = PortNames(device);
    const auto place = std::find(names.begin(), names.end(), fullName);
    if (place == names.end()) {
        return false;
    }
    try {
        device.openPort(static_cast<unsigned>(place - names.begin()), std::string(kClientName));
    } catch (const std::exception&) {
        return false;
    }
    return device.isPortOpen();
}

} // namespace tracksmith::midi::alsa
