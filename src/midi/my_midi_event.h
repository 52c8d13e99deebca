#pragma once

#include <cstdint>

namespace tracksmith::midi {

/// One received message. Whoever takes it from the port owns it.
class TMyMidiEvent {
public:
    TMyMidiEvent() = default;
    TMyMidiEvent(const TMyMidiEvent&) = delete;
    TMyMidiEvent& operator=(const TMyMidiEvent&) = delete;
    ~TMyMidiEvent() { delete[] Sysex; }

    /// Replaces the system-exclusive bytes by a copy of `length` bytes; none when `length` is 0.
    void SetSysex(const std::uint8_t* bytes, std::uint16_t length);

    /// Status byte; 0xF0 for a system-exclusive message or a part of one.
    std::uint8_t MidiMessage = 0;
    std::uint8_t Data1 = 0;
    std::uint8_t Data2 = 0;
    /// Milliseconds since the input was started.
    std::uint32_t Time = 0;
    /// Bytes at `Sysex`; 0 for a short message.
    std::uint16_t SysexLength = 0;
    /// Heap copy of the system-exclusive bytes, or null. Deleted with the event.
    std::uint8_t* Sysex = nullptr;
};

} // namespace tracksmith::midi
