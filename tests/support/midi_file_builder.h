#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tracksmith::test {

using Bytes = std::vector<std::uint8_t>;

inline void Append(Bytes& target, const Bytes& more) {
    target.insert(target.end(), more.begin(), more.end());
}

/// Bytes of `text`, for the payload of a text event.
inline Bytes BytesOf(std::string_view text) {
    Bytes bytes;
    for (const char character : text) {
        bytes.push_back(static_cast<std::uint8_t>(character));
    }
    return bytes;
}

/// `value` as the variable-length quantity of Standard MIDI Files (RP-001).
inline Bytes Quantity(std::uint64_t value) {
    Bytes bytes{static_cast<std::uint8_t>(value & 0x7F)};
    for (value >>= 7; value != 0; value >>= 7) {
        bytes.insert(bytes.begin(), static_cast<std::uint8_t>(0x80 | (value & 0x7F)));
    }
    return bytes;
}

/// `value` in `count` bytes, most significant first.
inline Bytes BigEndian(std::uint64_t value, std::size_t count) {
    Bytes bytes;
    for (std::size_t i = count; i-- > 0;) {
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
    return bytes;
}

/// Composes the event bytes of one track chunk. Every call takes the delta time in ticks first.
class TrackBuilder {
public:
    /// Any bytes behind a delta time: wrong ones, or a message under running status.
    TrackBuilder& Raw(std::uint64_t delta, const Bytes& bytes) {
        Append(bytes_, Quantity(delta));
        Append(bytes_, bytes);
        return *this;
    }
    /// Any bytes without a delta time.
    TrackBuilder& Loose(const Bytes& bytes) {
        Append(bytes_, bytes);
        return *this;
    }
    TrackBuilder& Note(std::uint64_t delta, int channel, int key, int velocity) {
        return Short(delta, 0x90 | channel, key, velocity);
    }
    TrackBuilder& NoteOff(std::uint64_t delta, int channel, int key) {
        return Short(delta, 0x80 | channel, key, 64);
    }
    TrackBuilder& Short(std::uint64_t delta, int status, int data1, int data2) {
        return Raw(delta, {Byte(status), Byte(data1), Byte(data2)});
    }
    TrackBuilder& Program(std::uint64_t delta, int channel, int program) {
        return Raw(delta, {Byte(0xC0 | channel), Byte(program)});
    }
    TrackBuilder& Meta(std::uint64_t delta, int type, const Bytes& payload) {
        Raw(delta, {0xFF, Byte(type)});
        return Loose(Quantity(payload.size())).Loose(payload);
    }
    TrackBuilder& Text(std::uint64_t delta, int type, std::string_view text) {
        return Meta(delta, type, BytesOf(text));
    }
    TrackBuilder& Tempo(std::uint64_t delta, std::uint32_t microseconds) {
        return Meta(delta, 0x51, BigEndian(microseconds, 3));
    }
    /// Time signature `numerator` / 2^`exponent`.
    TrackBuilder& TimeSignature(std::uint64_t delta, int numerator, int exponent) {
        return Meta(delta, 0x58, {Byte(numerator), Byte(exponent), 24, 8});
    }
    /// System exclusive; `payload` follows the F0 and should end with F7.
    TrackBuilder& Sysex(std::uint64_t delta, const Bytes& payload) {
        return Raw(delta, {0xF0}).Loose(Quantity(payload.size())).Loose(payload);
    }
    TrackBuilder& End(std::uint64_t delta = 0) { return Meta(delta, 0x2F, {}); }

    /// The chunk with its header.
    Bytes Chunk() const {
        Bytes chunk = BytesOf("MTrk");
        Append(chunk, BigEndian(bytes_.size(), 4));
        Append(chunk, bytes_);
        return chunk;
    }

private:
    static std::uint8_t Byte(int value) { return static_cast<std::uint8_t>(value); }

    Bytes bytes_;
};

/// Composes a Standard MIDI File of track chunks.
class MidiFileBuilder {
public:
    explicit MidiFileBuilder(int format = 1, int division = 480)
        : format_(format), division_(division) {}

    MidiFileBuilder& Track(const TrackBuilder& track) {
        ++tracks_;
        return Loose(track.Chunk());
    }
    /// Any bytes where a chunk is expected.
    MidiFileBuilder& Loose(const Bytes& bytes) {
        Append(chunks_, bytes);
        return *this;
    }
    /// Writes `count` into the header, whatever there is.
    MidiFileBuilder& Promise(int count) {
        promised_ = count;
        return *this;
    }
    Bytes Build() const {
        Bytes file = BytesOf("MThd");
        Append(file, BigEndian(6, 4));
        Append(file, BigEndian(static_cast<std::uint64_t>(format_), 2));
        Append(file, BigEndian(static_cast<std::uint64_t>(promised_ < 0 ? tracks_ : promised_), 2));
        Append(file, BigEndian(static_cast<std::uint64_t>(division_), 2));
        Append(file, chunks_);
        return file;
    }

private:
    int format_;
    int division_;
    int tracks_ = 0;
    int promised_ = -1;
    Bytes chunks_;
};

} // namespace tracksmith::test
