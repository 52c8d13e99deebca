#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <vector>

namespace tracksmith::song {

/// Bytes in one unit of an event link.
inline constexpr std::size_t kLinkUnit = 16;

/// The one reserved address range in which the events of all songs live, so that a link between
/// events fits into 32 bits. Only address space is reserved; memory is committed chunk by chunk.
/// All functions may be called from any thread.
class EventArena {
public:
    /// A piece of the range with memory behind it.
    struct Chunk {
        std::byte* begin = nullptr;
        std::size_t bytes = 0;
    };

    /// The arena of the process; reserves its range at the first call: 64 GiB, less where the
    /// system does not grant that and some room beside it, down to 64 MiB.
    static EventArena& Instance();

    /// Start of the range; link 0 points here and means "no event".
    static std::byte* Base() { return base_; }

    /// A committed chunk of at least `bytes` bytes, rounded up to a power of two. Throws
    /// std::bad_alloc when the range or the memory is used up.
    Chunk Take(std::size_t bytes);

    /// Gives a chunk back; its memory returns to the system. Needs no memory itself.
    void GiveBack(Chunk chunk) noexcept;

    /// Bytes in the reserved range.
    std::size_t Capacity() const { return capacity_; }

private:
    // The chunks of one size.
    struct SizeClass {
        std::vector<std::byte*> free; // with room for all that were ever taken
        std::size_t taken = 0;
    };

    EventArena();

    // Constant while any link exists, hence readable without the lock.
    static inline std::byte* base_ = nullptr;
    std::size_t capacity_ = 0;
    std::size_t used_ = 0;
    std::mutex mutex_;
    std::map<std::size_t, SizeClass> sizes_;
};

} // namespace tracksmith::song
