#include "midi/my_midi_event.h"

#include <algorithm>

namespace tracksmith::midi {

void TMyMidiEvent::SetSysex(const std::uint8_t* bytes, std::uint16_t length) {
    std::uint8_t* copy = length > 0 ? new std::uint8_t[length] : nullptr;
    std::copy_n(bytes, length, copy);
    delete[] Sysex;
    Sysex = copy;
    SysexLength = length;
}

} // namespace tracksmith::midi
