#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <span>
#include <vector>

namespace tracksmith::audio {

/// MIDI messages with their times on the way to the audio thread. Several threads may put messages
/// in; one thread takes them out and never waits for the others.
class MessageRing {
public:
    /// Most bytes that a message may have.
    static constexpr std::size_t kLongestMessage = 65'535;

    MessageRing();

    /// Puts one message in, sent at `timeUs` of a steady clock. False, and nothing is kept, when
    /// there is no room for it or it is too long.
    bool Put(std::span<const std::uint8_t> message, std::int64_t timeUs);

    /// Time of the next message; false when there is none.
    bool PeekTime(std::int64_t& timeUs) const;

    /// Takes the next message out; it is valid until the next call. Call only after PeekTime.
    std::span<const std::uint8_t> Take();

private:
    struct Head {
        std::uint32_t length;
        std::int64_t timeUs;
    };
    static constexpr std::size_t kCapacity = std::size_t{1} << 19;

    void CopyIn(std::size_t position, const void* from, std::size_t bytes);
    void CopyOut(std::size_t position, void* to, std::size_t bytes) const;

    std::vector<std::uint8_t> bytes_;
    std::vector<std::uint8_t> taken_;
    std::mutex putting_;
    // Both only grow; the place in `bytes_` is their remainder.
    std::atomic<std::size_t> written_ = 0;
    std::atomic<std::size_t> read_ = 0;
};

} // namespace tracksmith::audio
