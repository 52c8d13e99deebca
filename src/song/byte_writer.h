#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace tracksmith::song {

/// Collects the bytes of a file in memory that is kept and used again after Clear: fresh memory
/// costs more than everything else about writing.
class ByteWriter {
public:
    /// Drops what was written.
    void Clear() { used_ = 0; }

    /// Makes room for `bytes` more bytes.
    void Expect(std::size_t bytes) {
        if (bytes_.size() - used_ < bytes) {
            bytes_.resize(used_ + bytes);
        }
    }

    /// Room for one event without its payload; write there and give the new end to EndEvent.
    std::uint8_t* BeginEvent() {
        if (bytes_.size() - used_ < kMostPerEvent) [[unlikely]] {
            Expect(std::max(bytes_.size(), kMostPerEvent));
        }
        return bytes_.data() + used_;
    }
    /// The last place at which an event may start without BeginEvent; nothing may be written
    /// otherwise meanwhile.
    const std::uint8_t* LastStart() const { return bytes_.data() + bytes_.size() - kMostPerEvent; }

    /// Takes over what was written behind BeginEvent, up to `end`.
    void EndEvent(const std::uint8_t* end) {
        used_ = static_cast<std::size_t>(end - bytes_.data());
    }

    /// Puts a variable-length quantity (RP-001: 7 bits per byte, most significant group first) at
    /// `to` and returns the place behind it.
    static std::uint8_t* PutQuantity(std::uint8_t* to, std::uint32_t value) {
        int shift = 28;
        while (shift > 0 && (value >> shift) == 0) {
            shift -= 7;
        }
        for (; shift > 0; shift -= 7) {
            *to++ = static_cast<std::uint8_t>(0x80U | ((value >> shift) & 0x7FU));
        }
        *to = static_cast<std::uint8_t>(value & 0x7FU);
        return to + 1;
    }

    /// A byte block of any size.
    void Block(std::span<const std::uint8_t> bytes) {
        Expect(bytes.size());
        if (!bytes.empty()) {
            std::memcpy(bytes_.data() + used_, bytes.data(), bytes.size());
        }
        used_ += bytes.size();
    }

    /// Bytes written so far.
    std::size_t Size() const { return used_; }

    /// Puts `value`, big-endian, over the four bytes at `offset`.
    void PatchWord(std::size_t offset, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i) {
            bytes_[offset + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
        }
    }

    /// What was written, until more is.
    std::span<const std::uint8_t> Written() const { return std::span(bytes_).first(used_); }

private:
    // Two quantities of five bytes, a status, a type and two data bytes.
    static constexpr std::size_t kMostPerEvent = 16;

    std::vector<std::uint8_t> bytes_;
    std::size_t used_ = 0;
};

} // namespace tracksmith::song
