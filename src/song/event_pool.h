#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <vector>

#include "song/event_arena.h"
#include "song/midi_event.h"
#include "song/poison.h"
#include "song/prefetch.h"

namespace tracksmith::song {

/// Memory of one song's events and payloads. Records never move; freed ones are reused. One thread
/// at a time.
class EventPool {
public:
    EventPool() = default;
    EventPool(const EventPool&) = delete;
    EventPool& operator=(const EventPool&) = delete;
    ~EventPool();

    /// An uninitialised event record. Throws std::bad_alloc.
    EventLink NewEvent() {
        const std::uint32_t unit = NewUnits(kEventUnits);
        return EventLink(unit);
    }

    /// A payload block that holds a copy of `bytes`; null for no bytes. Throws std::bad_alloc.
    EventData NewData(std::span<const std::uint8_t> bytes);

    /// Takes an event record back, and its payload. No link may point to it any more.
    void FreeEvent(EventLink event);

    /// Takes a payload block back; null is allowed.
    void FreeData(EventData data);

    /// Forgets all events at once; the memory stays for the next song.
    void Clear();

    /// Exchanges everything with `other`.
    void Swap(EventPool& other) noexcept;

    /// Bytes handed out since the last Clear, freed ones included.
    std::size_t UsedBytes() const;

    /// Copy of a pool's contents, restorable in place. Its buffers keep their memory between uses.
    class Snapshot {
    public:
        /// Bytes of events and payloads that the copy holds.
        std::size_t Bytes() const { return used_; }

    private:
        friend class EventPool;
        void Reserve(std::size_t bytes);

        // An array that nobody fills with zeros first, unlike a vector.
        std::unique_ptr<std::byte[]> bytes_; // NOLINT(modernize-avoid-c-arrays)
        std::size_t capacity_ = 0;
        std::size_t used_ = 0;
        std::vector<std::size_t> chunkUsed_;
        std::size_t current_ = 0;
        std::array<std::uint32_t, 65> freeSmall_{};
        std::map<std::size_t, std::vector<std::uint32_t>> freeLarge_;
    };

    /// Copies everything into `target`. Throws std::bad_alloc and then leaves `target` empty.
    void CopyTo(Snapshot& target) const;

    /// Puts back what CopyTo took from this same pool; no Clear may lie between. Throws
    /// std::bad_alloc before anything changes.
    void RestoreFrom(const Snapshot& source);

private:
    static constexpr std::size_t kEventUnits = sizeof(MidiEvent) / kLinkUnit;
    static constexpr std::size_t kSmallUnits = 64;

    struct PoolChunk {
        EventArena::Chunk memory;
        std::size_t used = 0; // bytes; kept up to date only for chunks that are not current
    };

    std::uint32_t NewUnits(std::size_t units) {
        if (units <= kSmallUnits && freeSmall_[units] == 0 &&
            units * kLinkUnit <= static_cast<std::size_t>(limit_ - cursor_)) [[likely]] {
            return BumpUnits(units);
        }
        return NewUnitsSlow(units);
    }
    std::uint32_t BumpUnits(std::size_t units) {
        std::byte* place = cursor_;
        cursor_ = place + units * kLinkUnit;
        PrefetchForWriting(place);
        Unpoison(place, units * kLinkUnit);
        return static_cast<std::uint32_t>(static_cast<std::size_t>(place - EventArena::Base()) /
                                          kLinkUnit);
    }
    std::uint32_t NewUnitsSlow(std::size_t units);
    std::uint32_t ReuseUnits(std::size_t units);
    void FreeUnits(std::uint32_t unit, std::size_t units);
    void OpenChunk(std::size_t bytes);
    void SelectChunk(std::size_t index);
    void PoisonFree() const;
    std::size_t UsedOf(std::size_t chunk) const;

    std::byte* cursor_ = nullptr;
    std::byte* limit_ = nullptr;
    std::vector<PoolChunk> chunks_;
    std::size_t current_ = 0;
    // Free blocks by size in units, linked through their first four bytes; larger ones by list.
    std::array<std::uint32_t, kSmallUnits + 1> freeSmall_{};
    std::map<std::size_t, std::vector<std::uint32_t>> freeLarge_;
};

} // namespace tracksmith::song
