#include "song/event_pool.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "base/parallel.h"

namespace tracksmith::song {
namespace {

constexpr std::size_t kFirstChunk = std::size_t{256} << 10;
constexpr std::size_t kLargestChunk = std::size_t{16} << 20;

std::byte* AddressOf(std::uint32_t unit) {
    return EventArena::Base() + std::size_t{unit} * kLinkUnit;
}

// A free block holds the unit of the next free one in its first bytes.
std::uint32_t NextFree(std::uint32_t unit) {
    std::uint32_t next = 0;
    Unpoison(AddressOf(unit), sizeof(next));
    std::memcpy(&next, AddressOf(unit), sizeof(next));
    return next;
}

constexpr std::size_t UnitsForData(std::size_t bytes) {
    return (sizeof(std::uint32_t) + bytes + kLinkUnit - 1) / kLinkUnit;
}

} // namespace

EventPool::~EventPool() {
    for (const PoolChunk& chunk : chunks_) {
        Unpoison(chunk.memory.begin, chunk.memory.bytes);
        EventArena::Instance().GiveBack(chunk.memory);
    }
}

std::uint32_t EventPool::NewUnitsSlow(std::size_t units) {
    const std::uint32_t reused = ReuseUnits(units);
    if (reused != 0) {
        return reused;
    }
    if (units * kLinkUnit > static_cast<std::size_t>(limit_ - cursor_)) {
        OpenChunk(units * kLinkUnit);
    }
    return BumpUnits(units);
}

std::uint32_t EventPool::ReuseUnits(std::size_t units) {
    std::uint32_t unit = 0;
    if (units <= kSmallUnits) {
        unit = freeSmall_[units];
        if (unit != 0) {
            freeSmall_[units] = NextFree(unit);
        }
    } else if (const auto found = freeLarge_.find(units);
               found != freeLarge_.end() && !found->second.empty()) {
        unit = found->second.back();
        found->second.pop_back();
    }
    if (unit != 0) {
        Unpoison(AddressOf(unit), units * kLinkUnit);
    }
    return unit;
}

void EventPool::FreeUnits(std::uint32_t unit, std::size_t units) {
    if (units <= kSmallUnits) {
        std::memcpy(AddressOf(unit), &freeSmall_[units], sizeof(std::uint32_t));
        freeSmall_[units] = unit;
    } else {
        freeLarge_[units].push_back(unit);
    }
    Poison(AddressOf(unit), units * kLinkUnit);
}

// Goes on with the next kept chunk that is large enough, or takes a new one.
void EventPool::OpenChunk(std::size_t bytes) {
    std::size_t next = chunks_.empty() ? 0 : current_ + 1;
    while (next < chunks_.size() && chunks_[next].memory.bytes < bytes) {
        ++next;
    }
    if (next == chunks_.size()) {
        const std::size_t usual = chunks_.empty()
                                      ? kFirstChunk
                                      : std::min(chunks_.back().memory.bytes * 2, kLargestChunk);
        chunks_.reserve(chunks_.size() + 1);
        const EventArena::Chunk memory = EventArena::Instance().Take(std::max(bytes, usual));
        Poison(memory.begin, memory.bytes);
        chunks_.push_back({memory, 0});
    }
    SelectChunk(next);
}

void EventPool::SelectChunk(std::size_t index) {
    if (cursor_ != nullptr) {
        chunks_[current_].used = UsedOf(current_);
    }
    current_ = index;
    const EventArena::Chunk& memory = chunks_[index].memory;
    cursor_ = memory.begin + chunks_[index].used;
    limit_ = memory.begin + memory.bytes;
}

std::size_t EventPool::UsedOf(std::size_t chunk) const {
    return chunk == current_ && cursor_ != nullptr
               ? static_cast<std::size_t>(cursor_ - chunks_[chunk].memory.begin)
               : chunks_[chunk].used;
}

EventData EventPool::NewData(std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) {
        return {};
    }
    const std::uint32_t unit = NewUnits(UnitsForData(bytes.size()));
    const auto size = static_cast<std::uint32_t>(bytes.size());
    std::memcpy(AddressOf(unit), &size, sizeof(size));
    std::memcpy(AddressOf(unit) + sizeof(size), bytes.data(), bytes.size());
    return EventData(unit);
}

void EventPool::FreeEvent(EventLink event) {
    FreeData(event->data);
    FreeUnits(event.Unit(), kEventUnits);
}

void EventPool::FreeData(EventData data) {
    if (data.Unit() != 0) {
        FreeUnits(data.Unit(), UnitsForData(data.Size()));
    }
}

void EventPool::Clear() {
    for (PoolChunk& chunk : chunks_) {
        chunk.used = 0;
        Poison(chunk.memory.begin, chunk.memory.bytes);
    }
    freeSmall_.fill(0);
    freeLarge_.clear();
    cursor_ = nullptr;
    limit_ = nullptr;
    if (!chunks_.empty()) {
        SelectChunk(0);
    }
}

void EventPool::Swap(EventPool& other) noexcept {
    std::swap(cursor_, other.cursor_);
    std::swap(limit_, other.limit_);
    chunks_.swap(other.chunks_);
    std::swap(current_, other.current_);
    freeSmall_.swap(other.freeSmall_);
    freeLarge_.swap(other.freeLarge_);
}

std::size_t EventPool::UsedBytes() const {
    std::size_t used = 0;
    for (std::size_t i = 0; i < chunks_.size(); ++i) {
        used += UsedOf(i);
    }
    return used;
}

void EventPool::Snapshot::Reserve(std::size_t bytes) {
    if (bytes > capacity_) {
        bytes_.reset();
        capacity_ = 0;
        // NOLINTNEXTLINE(modernize-avoid-c-arrays)
        bytes_ = std::make_unique_for_overwrite<std::byte[]>(bytes);
        capacity_ = bytes;
    }
}

void EventPool::CopyTo(Snapshot& target) const {
    target.used_ = 0;
    target.chunkUsed_.resize(chunks_.size());
    target.freeLarge_ = freeLarge_;
    target.Reserve(UsedBytes());
    std::vector<MemoryCopy> copies;
    std::size_t copied = 0;
    for (std::size_t i = 0; i < chunks_.size(); ++i) {
        const std::size_t used = UsedOf(i);
        Unpoison(chunks_[i].memory.begin, used);
        copies.push_back({target.bytes_.get() + copied, chunks_[i].memory.begin, used});
        target.chunkUsed_[i] = used;
        copied += used;
    }
    CopyLarge(copies);
    target.used_ = copied;
    target.freeSmall_ = freeSmall_;
    target.current_ = current_;
    PoisonFree();
}

void EventPool::RestoreFrom(const Snapshot& source) {
    auto freeLarge = source.freeLarge_;
    const std::byte* from = source.bytes_.get();
    std::vector<MemoryCopy> copies;
    for (std::size_t i = 0; i < chunks_.size(); ++i) {
        const std::size_t used = i < source.chunkUsed_.size() ? source.chunkUsed_[i] : 0;
        Unpoison(chunks_[i].memory.begin, used);
        copies.push_back({chunks_[i].memory.begin, from, used});
        from += used;
    }
    CopyLarge(copies);
    for (std::size_t i = 0; i < chunks_.size(); ++i) {
        const EventArena::Chunk& memory = chunks_[i].memory;
        Poison(memory.begin + copies[i].bytes, memory.bytes - copies[i].bytes);
        chunks_[i].used = copies[i].bytes;
    }
    freeLarge_.swap(freeLarge);
    freeSmall_ = source.freeSmall_;
    cursor_ = nullptr;
    if (!chunks_.empty()) {
        SelectChunk(source.current_);
    }
    PoisonFree();
}

// Copying had to make everything readable; the free blocks become unreadable again.
void EventPool::PoisonFree() const {
#ifdef TRACKSMITH_POISONING
    for (std::size_t units = 1; units < freeSmall_.size(); ++units) {
        for (std::uint32_t unit = freeSmall_[units]; unit != 0;) {
            const std::uint32_t next = NextFree(unit);
            Poison(AddressOf(unit), units * kLinkUnit);
            unit = next;
        }
    }
    for (const auto& [units, blocks] : freeLarge_) {
        for (const std::uint32_t unit : blocks) {
            Poison(AddressOf(unit), units * kLinkUnit);
        }
    }
#endif
}

} // namespace tracksmith::song
