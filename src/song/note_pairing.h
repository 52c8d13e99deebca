#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "song/midi_numbers.h"
#include "song/song.h"

namespace tracksmith::song {

/// Pairs the note-offs of one track with its note-ons while the events are met in their order: by
/// channel and pitch, oldest open note-on first. Loading meets every event, so the usual case, one
/// open note of a pitch, has no branch that depends on the notes.
class NotePairing {
public:
    /// What a note-off ends.
    struct Ended {
        /// Null where no note-on of its channel and pitch is open, and for all other events.
        EventLink noteOn;
        /// Position of that note-on in ticks.
        std::int32_t tick = 0;
    };

    /// Meets the next channel message, which is or will be the event `event`. Throws
    /// std::bad_alloc.
    [[gnu::always_inline]] Ended Meet(std::uint8_t status, std::uint8_t data1, EventLink event,
                                      std::uint32_t tick) {
        const std::uint32_t command = status >> 4;
        const bool isNote = command <= (kNoteOn >> 4);
        const std::uint32_t isOn = static_cast<std::uint32_t>(isNote) & command & 1U;
        const std::size_t key = isNote ? KeyOf(status, data1) : kNoKey;
        Slot& slot = slots_[key];
        const auto taken = static_cast<std::uint32_t>(slot.unit != 0);
        if (((taken & isOn) | (slot.tick >> kTickBits)) != 0) [[unlikely]] {
            return isOn != 0 ? Queue(key, event, tick) : EndOldest(key);
        }
        const std::uint32_t unit = isOn != 0 ? 0 : slot.unit;
        const auto begun = static_cast<std::int32_t>(slot.tick);
        open_ += static_cast<std::int64_t>(isOn) - static_cast<std::int64_t>(unit != 0);
        strays_ += static_cast<std::uint32_t>(isNote) & (isOn ^ 1U) & (taken ^ 1U);
        slot.unit = isOn != 0 ? event.Unit() : 0;
        slot.tick = tick;
        return {EventLink(unit), begun};
    }

    /// The track ends: forgets what is open.
    void EndTrack();

    /// No note-off so far was without a note-on, and no note-on was open when its track ended.
    bool AllPaired() const { return strays_ == 0 && leftOpen_ == 0; }

    /// Place of a note in tables of channels and pitches.
    static std::size_t KeyOf(std::uint8_t status, std::uint8_t data1) {
        return (static_cast<std::size_t>(status & 0x0FU) << 7) | (data1 & 0x7FU);
    }
    static constexpr std::size_t kKeys = kMidiChannels * 128;

private:
    // The bit above every tick marks a pitch of which several notes are open.
    static constexpr unsigned kTickBits = 31;
    static constexpr std::uint32_t kSeveral = 1U << kTickBits;
    static constexpr std::size_t kNoKey = kKeys;

    struct Slot {
        std::uint32_t unit = 0; // the oldest open note-on
        std::uint32_t tick = 0;
    };
    // The younger notes of a pitch, in a list through `waiting_`; place 0 is none.
    struct Waiting {
        std::uint32_t unit = 0;
        std::uint32_t tick = 0;
        std::uint32_t next = 0;
    };
    struct Line {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
    };

    Ended Queue(std::size_t key, EventLink event, std::uint32_t tick);
    Ended EndOldest(std::size_t key);

    std::array<Slot, kKeys + 1> slots_{};
    std::vector<Line> lines_; // by key; made when the first is needed
    std::vector<Waiting> waiting_;
    std::uint32_t free_ = 0;
    std::int64_t open_ = 0;
    std::int64_t leftOpen_ = 0;
    std::uint64_t strays_ = 0;
};

/// Sets `noteOnLink` of every note-off of all tracks to the note-on that it ends: of the same
/// channel and pitch, the oldest that is open; null where there is none. Removed events (length 0)
/// count as absent. Linear; uses several threads for large songs. Throws std::bad_alloc.
void SetNoteOnOffPointers(Song& song);

} // namespace tracksmith::song
