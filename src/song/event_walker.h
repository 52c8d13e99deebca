#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

#include "song/midi_event.h"
#include "song/reader_fault.h"

namespace tracksmith::song {

/// Header of a Standard MIDI File (RP-001, MThd).
struct FileHeader {
    std::uint8_t format = 0;
    std::uint16_t trackCount = 0;
    std::uint16_t division = 0;
};

/// The last tick that is read: leaves room below 2^31 for what is added to ticks later.
inline constexpr std::uint32_t kMostTick = (1U << 31) - 65'536;

/// Where the first track chunk starts, in bytes.
inline constexpr std::size_t kHeaderBytes = 14;

/// True when the first bytes are those of a Standard MIDI File.
bool BeginsLikeSong(std::span<const std::uint8_t> start);

/// Reads and checks the header. Throws ReaderFault.
FileHeader ReadFileHeader(std::span<const std::uint8_t> file);

/// Walks over the events of a file's track chunks and hands each to `Sink`: the one place that
/// knows the byte format, so that measuring and building cannot disagree. Throws ReaderFault.
///
/// A sink has BeginTrack(track), Short(status, data1, data2, tick, offset), Sysex(bytes, tick),
/// Escape(), System(), Meta(type, bytes, tick), EndOfTrack(tick, bytesAfter) and EndTrack(). The
/// status of Short is the one of the file; its first data byte may be above 127.
template <typename Sink>
class EventWalker {
public:
    EventWalker(std::span<const std::uint8_t> file, bool runningStatusAcrossSysex, Sink& sink)
        : begin_(file.data()),
          end_(file.data() + file.size()),
          keepRunningStatus_(runningStatusAcrossSysex),
          sink_(sink) {}

    /// Walks over `trackCount` chunks. Returns the offset behind the last one, which may lie
    /// behind the file's end when a chunk promised more than there is after its End of Track.
    std::uint64_t Walk(std::uint32_t trackCount) {
        std::uint64_t position = kHeaderBytes;
        for (std::uint32_t track = 0; track < trackCount; ++track) {
            position = WalkTrack(track, position);
        }
        return position;
    }

    /// The largest tick of the events that count towards the song's length.
    std::uint32_t LargestTick() const { return largestTick_; }

private:
    using Byte = std::uint8_t;

    std::uint64_t Offset() const { return static_cast<std::uint64_t>(p_ - begin_); }

    [[noreturn, gnu::noinline]] void Fail(FaultKind kind, std::uint32_t value = 0) const {
        FailAt(kind, Offset(), value);
    }
    [[noreturn]] void FailAt(FaultKind kind, std::uint64_t position, std::uint32_t value) const {
        throw ReaderFault{kind, position, tick_, value};
    }

    Byte ReadByte() {
        if (p_ == end_) [[unlikely]] {
            Fail(FaultKind::InvalidOffset);
        }
        return *p_++;
    }

    std::uint32_t ReadQuantity() {
        const Byte first = ReadByte();
        return first < 0x80 ? first : ReadLongQuantity(first);
    }

    [[gnu::noinline]] std::uint32_t ReadLongQuantity(Byte first) {
        std::uint64_t value = first & 0x7FU;
        for (Byte next = 0x80; next >= 0x80;) {
            next = ReadByte();
            value = (value << 7) | (next & 0x7FU);
            if (value > std::numeric_limits<std::int32_t>::max()) {
                Fail(FaultKind::InvalidOffset);
            }
        }
        return static_cast<std::uint32_t>(value);
    }

    std::span<const Byte> ReadBytes(std::uint32_t count) {
        if (count > static_cast<std::size_t>(end_ - p_)) [[unlikely]] {
            Fail(FaultKind::InvalidOffset);
        }
        const std::span<const Byte> bytes(p_, count);
        p_ += count;
        return bytes;
    }

    // Returns the offset behind the chunk's 8 header bytes and its declared length.
    std::uint64_t ReadTrackHeader(std::uint32_t track, std::uint64_t position) {
        constexpr std::array<std::uint8_t, 4> kName{'M', 'T', 'r', 'k'};
        const auto size = static_cast<std::uint64_t>(end_ - begin_);
        tick_ = 0;
        for (std::uint64_t i = 0; i < 4; ++i) {
            if (position + i >= size || begin_[position + i] != kName[i]) {
                FailAt(FaultKind::TrackHeader, position, track);
            }
        }
        p_ = begin_ + position + 4;
        std::uint64_t length = 0;
        for (int i = 0; i < 4; ++i) {
            length = (length << 8) | ReadByte();
        }
        return position + 8 + length;
    }

    std::uint64_t WalkTrack(std::uint32_t track, std::uint64_t position) {
        const std::uint64_t chunkEnd = ReadTrackHeader(track, position);
        const auto size = static_cast<std::uint64_t>(end_ - begin_);
        const Byte* const stop = begin_ + (chunkEnd < size ? chunkEnd : size);
        running_ = 0;
        countedTick_ = 0;
        sink_.BeginTrack(track);
        bool ended = false;
        while (p_ < stop && !ended) {
            ended = WalkEvent(stop);
        }
        if (!ended && chunkEnd > size) {
            Fail(FaultKind::InvalidOffset);
        }
        sink_.EndTrack();
        largestTick_ = countedTick_ > largestTick_ ? countedTick_ : largestTick_;
        return ended ? chunkEnd : Offset();
    }

    // One event with its delta time; true for End of Track.
    [[gnu::always_inline]] bool WalkEvent(const Byte* stop) {
        tick_ += ReadQuantity();
        if (tick_ > kMostTick) [[unlikely]] {
            Fail(FaultKind::InvalidOffset);
        }
        const Byte first = ReadByte();
        if (first >= 0xF0) [[unlikely]] {
            return WalkLong(first, stop);
        }
        Byte data1 = first;
        if (first >= 0x80) {
            running_ = first;
            data1 = ReadByte();
        } else if (running_ < 0x80 || running_ >= 0xF0) [[unlikely]] {
            FailRunning(first);
        }
        const auto at = static_cast<std::uint64_t>(p_ - begin_) - 1;
        const Byte data2 = (running_ & 0xE0) == 0xC0 ? Byte{0} : ReadByte();
        countedTick_ = tick_;
        sink_.Short(running_, data1, data2, tick_, at);
        return false;
    }

    [[noreturn, gnu::noinline]] void FailRunning(Byte data1) const {
        if (running_ < 0x80) {
            FailAt(FaultKind::NoRunningStatus, Offset() - 1, data1);
        }
        FailAt(FaultKind::RunningStatusTooHigh, Offset() - 1, running_);
    }

    [[gnu::noinline]] bool WalkLong(Byte status, const Byte* stop) {
        switch (status) {
            case 0xF0:
                sink_.Sysex(ReadBytes(ReadQuantity()), tick_);
                break;
            case 0xF7:
                ReadBytes(ReadQuantity());
                sink_.Escape();
                break;
            case 0xF8:
            case 0xF9:
            case 0xFA:
            case 0xFB:
            case 0xFC:
                sink_.System();
                break;
            case 0xFD:
            case 0xFE:
                FailAt(FaultKind::CommandFE, Offset() - 1, status);
            case 0xFF:
                return WalkMeta(stop);
            default:
                FailAt(FaultKind::CommandF1ToF6, Offset() - 1, status);
        }
        CancelRunningStatus();
        countedTick_ = tick_;
        return false;
    }

    bool WalkMeta(const Byte* stop) {
        const std::uint64_t at = Offset() - 1;
        const Byte type = ReadByte();
        const std::span<const Byte> bytes = ReadBytes(ReadQuantity());
        CancelRunningStatus();
        if (type == kMetaEndOfTrack) {
            if (!bytes.empty()) {
                FailAt(FaultKind::EndOfTrackLength, at, type);
            }
            sink_.EndOfTrack(tick_, p_ < stop ? static_cast<std::uint64_t>(stop - p_) : 0);
            return true;
        }
        if (type < kMetaEndOfTrack) {
            countedTick_ = tick_;
        }
        sink_.Meta(type, bytes, tick_);
        return false;
    }

    void CancelRunningStatus() {
        if (!keepRunningStatus_) {
            running_ = 0;
        }
    }

    const Byte* begin_;
    const Byte* end_;
    const Byte* p_ = nullptr;
    std::uint32_t tick_ = 0;
    std::uint32_t countedTick_ = 0;
    std::uint32_t largestTick_ = 0;
    Byte running_ = 0;
    bool keepRunningStatus_;
    Sink& sink_;
};

} // namespace tracksmith::song
