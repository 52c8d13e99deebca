#pragma once

#include <cstdint>
#include <span>

#include "song/event_arena.h"
#include "song/reader_fault.h"

namespace tracksmith::song {

/// What one walk over a file sees, as the measuring pass counts it.
struct ScanResult {
    std::uint64_t events = 0;
    std::uint64_t payloadBytes = 0;
    std::uint64_t checksum = 0;
    std::int32_t songLength = 0;
};

/// The sink of EventWalker that only sums what the walker sees, with the checks of building.
class MeasureSink {
public:
    void BeginTrack(std::uint32_t index) {
        track = index;
        ++result.events;
    }
    void Short(std::uint8_t status, std::uint8_t data1, std::uint8_t data2, std::uint32_t tick,
               std::uint64_t offset) {
        if (data1 > 127 && !dataFault) [[unlikely]] {
            dataFault = true;
            fault = {FaultKind::DataTooLarge, offset, tick, data1};
            faultTrack = track;
        }
        Count(tick + status + data1 + data2);
    }
    void Sysex(std::span<const std::uint8_t> bytes, std::uint32_t tick) { CountLong(bytes, tick); }
    void Escape() {}
    void System() {}
    void Meta(std::uint8_t /*type*/, std::span<const std::uint8_t> bytes, std::uint32_t tick) {
        CountLong(bytes, tick);
    }
    void EndOfTrack(std::uint32_t tick, std::uint64_t /*bytesAfter*/) { Count(tick); }
    void EndTrack() {}

    ScanResult result;
    /// Index of the track that was begun last.
    std::uint32_t track = 0;
    /// The first fault that only building would meet, and its track.
    bool dataFault = false;
    ReaderFault fault;
    std::uint32_t faultTrack = 0;

private:
    void Count(std::uint32_t sum) {
        ++result.events;
        result.checksum += sum;
    }
    void CountLong(std::span<const std::uint8_t> bytes, std::uint32_t tick) {
        Count(tick);
        result.payloadBytes +=
            (sizeof(std::uint32_t) + bytes.size() + kLinkUnit - 1) / kLinkUnit * kLinkUnit;
    }
};

} // namespace tracksmith::song
