#include "song/event_arena.h"

#include <algorithm>
#include <bit>
#include <new>

#include "base/system/virtual_memory.h"

namespace tracksmith::song {
namespace {

constexpr std::size_t kMostBytes = std::size_t{64} << 30;
constexpr std::size_t kFewestBytes = std::size_t{64} << 20;
constexpr std::size_t kLeastRoom = std::size_t{48} << 20;
constexpr std::size_t kSmallestChunk = std::size_t{1} << 16;

// A range of `bytes`, null when the system does not grant it or would have little left for all else
// in a limited address space.
std::byte* ReserveWithRoom(std::size_t bytes) {
    void* range = system::ReserveAddressRange(bytes);
    if (range == nullptr) {
        return nullptr;
    }
    const std::size_t room = std::min(bytes, kLeastRoom);
    void* rest = system::ReserveAddressRange(room);
    if (rest == nullptr) {
        system::ReleaseAddressRange(range, bytes);
        return nullptr;
    }
    system::ReleaseAddressRange(rest, room);
    return static_cast<std::byte*>(range);
}

} // namespace

EventArena& EventArena::Instance() {
    // Never destroyed: songs of static storage give their chunks back after main has ended.
    static EventArena& arena = *new EventArena;
    return arena;
}

EventArena::EventArena() {
    for (capacity_ = kMostBytes; capacity_ >= kFewestBytes; capacity_ /= 2) {
        base_ = ReserveWithRoom(capacity_);
        if (base_ != nullptr) {
            used_ = kSmallestChunk; // link 0 must never be an event
            return;
        }
    }
    capacity_ = 0;
}

EventArena::Chunk EventArena::Take(std::size_t bytes) {
    const std::size_t rounded = std::bit_ceil(std::max(bytes, kSmallestChunk));
    const std::scoped_lock lock(mutex_);
    SizeClass& size = sizes_[rounded];
    if (!size.free.empty()) {
        std::byte* begin = size.free.back();
        if (!system::CommitMemory(begin, rounded)) {
            throw std::bad_alloc();
        }
        size.free.pop_back();
        return {begin, rounded};
    }
    size.free.reserve(size.taken + 1);
    if (rounded > capacity_ - std::min(used_, capacity_) ||
        !system::CommitMemory(base_ + used_, rounded)) {
        throw std::bad_alloc();
    }
    std::byte* begin = base_ + used_;
    used_ += rounded;
    ++size.taken;
    return {begin, rounded};
}

void EventArena::GiveBack(Chunk chunk) noexcept {
    const std::scoped_lock lock(mutex_);
    system::DecommitMemory(chunk.begin, chunk.bytes);
    sizes_.find(chunk.bytes)->second.free.push_back(chunk.begin);
}

} // namespace tracksmith::song
