#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace tracksmith::song {

/// Collects the bytes of a file. Small pieces go into a block first, because growing a vector byte
/// by byte would cost more than everything else about an event.
class ByteWriter {
public:
    /// `expected` bytes are made room for at once.
    explicit ByteWriter(std::size_t expected) { bytes_.reserve(expected); }

    /// Room for one event without its payload; write there and give the new end to EndEvent.
    std::uint8_t* BeginEvent() {
        if (block_.size() - used_ < kMostPerEvent) [[unlikely]] {
            Flush();
        }
        return block_.data() + used_;
    }
    /// The last place in the block at which an event may still start.
    const std::uint8_t* LastStart() const {
        return block_.data() + (block_.size() - kMostPerEvent);
    }

    /// Takes over what was written behind BeginEvent, up to `end`.
    void EndEvent(const std::uint8_t* end) {
        used_ = static_cast<std::size_t>(end - block_.data());
    }

    /// Puts a variable-length quantity (RP-001: 7 bits per byte, most significant group first) at
    /// `to` and returns the place behind it.
    static std::uint8_t* PutQuantity(std::uint8_t* to, std::uint32_t value) {
        if (value < 0x4000) [[likely]] {
            // One byte or two without a branch, since the length of a delta cannot be predicted.
            const std::uint32_t two = value > 0x7F ? 1 : 0;
            const std::uint32_t first = (value >> (7 * two)) | (two << 7);
            to[0] = static_cast<std::uint8_t>(first);
            to[1] = static_cast<std::uint8_t>(value & 0x7FU);
            return to + 1 + two;
        }
        return PutLongQuantity(to, value);
    }

    /// A byte block of any size.
    void Block(std::span<const std::uint8_t> bytes) {
        Flush();
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    }

    /// Bytes written so far.
    std::size_t Size() {
        Flush();
        return bytes_.size();
    }

    /// Puts `value`, big-endian, over the four bytes at `offset`.
    void PatchWord(std::size_t offset, std::uint32_t value) {
        Flush();
        for (std::size_t i = 0; i < 4; ++i) {
            bytes_[offset + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
        }
    }

    /// The finished bytes; the writer is empty then.
    std::vector<std::uint8_t> Take() {
        Flush();
        return std::move(bytes_);
    }

private:
    // Two quantities of five bytes, a status, a type and two data bytes.
    static constexpr std::size_t kMostPerEvent = 16;

    static std::uint8_t* PutLongQuantity(std::uint8_t* to, std::uint32_t value) {
        int shift = 28;
        while ((value >> shift) == 0) {
            shift -= 7;
        }
        for (; shift > 0; shift -= 7) {
            *to++ = static_cast<std::uint8_t>(0x80U | ((value >> shift) & 0x7FU));
        }
        *to = static_cast<std::uint8_t>(value & 0x7FU);
        return to + 1;
    }

    void Flush() {
        bytes_.insert(bytes_.end(), block_.begin(),
                      block_.begin() + static_cast<std::ptrdiff_t>(used_));
        used_ = 0;
    }

    std::vector<std::uint8_t> bytes_;
    std::array<std::uint8_t, 4096> block_{};
    std::size_t used_ = 0;
};

} // namespace tracksmith::song
