#include "base/parallel.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "base/system/stream_copy.h"

namespace tracksmith {
namespace {

// One call of ParallelFor.
class Crew {
public:
    Crew(std::size_t count, const std::function<void(std::size_t)>& work)
        : count_(count), work_(work) {}

    void Run(std::size_t threads) {
        std::vector<std::jthread> helpers;
        try {
            for (std::size_t i = 1; i < threads; ++i) {
                helpers.emplace_back([this] { Work(); });
            }
        } catch (const std::system_error&) {
            // No more threads to be had; those that run do the work.
        }
        Work();
        helpers.clear();
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }

private:
    void Work() {
        try {
            for (std::size_t i = next_++; i < count_; i = next_++) {
                work_(i);
            }
        } catch (...) {
            const std::scoped_lock lock(mutex_);
            failure_ = failure_ ? failure_ : std::current_exception();
            next_ = count_;
        }
    }

    std::size_t count_;
    const std::function<void(std::size_t)>& work_;
    std::atomic<std::size_t> next_ = 0;
    std::mutex mutex_;
    std::exception_ptr failure_;
};

// The blocks in pieces that threads can share.
std::vector<MemoryCopy> PiecesOf(std::span<const MemoryCopy> blocks) {
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    std::vector<MemoryCopy> pieces;
    for (const MemoryCopy& block : blocks) {
        for (std::size_t start = 0; start < block.bytes; start += kPiece) {
            pieces.push_back({static_cast<std::byte*>(block.to) + start,
                              static_cast<const std::byte*>(block.from) + start,
                              std::min(kPiece, block.bytes - start)});
        }
    }
    return pieces;
}

} // namespace

std::size_t ThreadsFor(std::size_t bytes) {
    constexpr std::size_t kBytesPerThread = std::size_t{4} << 20;
    constexpr std::size_t kMostThreads = 4;
    const std::size_t cores = std::max(std::thread::hardware_concurrency(), 1U);
    return std::clamp<std::size_t>(bytes / kBytesPerThread, 1, std::min(kMostThreads, cores));
}

void ParallelFor(std::size_t count, std::size_t threads,
                 const std::function<void(std::size_t)>& work) {
    Crew(count, work).Run(std::min(threads, count));
}

void CopyLarge(std::span<const MemoryCopy> blocks) {
    // What is smaller may well be in the caches still, and is best copied there.
    constexpr std::size_t kMostCached = std::size_t{8} << 20;
    std::size_t bytes = 0;
    for (const MemoryCopy& block : blocks) {
        bytes += block.bytes;
    }
    const std::vector<MemoryCopy> pieces = PiecesOf(blocks);
    ParallelFor(pieces.size(), ThreadsFor(bytes), [&](std::size_t index) {
        const MemoryCopy& piece = pieces[index];
        if (bytes <= kMostCached) {
            std::memcpy(piece.to, piece.from, piece.bytes);
        } else {
            system::CopyPastCaches(piece.to, piece.from, piece.bytes);
        }
    });
}

} // namespace tracksmith
