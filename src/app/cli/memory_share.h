#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace tracksmith::cli {

/// The memory that the songs of a batch may take together. Whoever asks waits until its part is
/// free, in the order of asking, so that one large song is not kept waiting by many small ones.
/// Any thread.
class MemoryShare {
public:
    /// `total` bytes are to be shared.
    explicit MemoryShare(std::uint64_t total) : total_(total), free_(total) {}

    /// Bytes that are given back when the scope ends.
    class Part {
    public:
        Part(MemoryShare& share, std::uint64_t bytes) : share_(share), bytes_(bytes) {}
        Part(const Part&) = delete;
        Part& operator=(const Part&) = delete;
        ~Part() { share_.GiveBack(bytes_); }

        std::uint64_t Bytes() const { return bytes_; }

    private:
        MemoryShare& share_;
        std::uint64_t bytes_;
    };

    /// Bytes that are shared, free or not.
    std::uint64_t Total() const { return total_; }

    /// Waits for `wanted` bytes, or for all there are when that is less.
    Part Take(std::uint64_t wanted);

private:
    void GiveBack(std::uint64_t bytes);

    const std::uint64_t total_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::uint64_t free_;
    std::uint64_t asked_ = 0;
    std::uint64_t served_ = 0;
};

} // namespace tracksmith::cli
