#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "song/song.h"
#include "song/sysex_place.h"

namespace tracksmith::instruments {

/// All system-exclusive events of a song with their tracks, in track order and then chain order,
/// so that nobody has to walk the song for them, and whether there are banks of drums. Removed ones
/// (length 0) are in it too. Valid until someone else adds or frees events of the song. One thread.
class SysexIndex {
public:
    SysexIndex() = default;

    /// Takes over a list that was collected while decoding, and orders it where needed. `drumBanks`
    /// as in song::DecodeResult.
    SysexIndex(std::vector<song::SysexPlace> places, bool drumBanks);

    /// Collects the events by walking over the song. Throws std::bad_alloc.
    static SysexIndex Of(song::Song& song);

    std::span<const song::SysexPlace> Places() const { return places_; }

    /// Whether a channel selects a bank that some instruments take for drums.
    bool DrumBanks() const { return drumBanks_; }

    /// The events of one track at one tick.
    std::span<const song::SysexPlace> At(std::int32_t track, std::int32_t tick) const;

    /// Makes room for one more event. Throws std::bad_alloc.
    void Reserve();

    /// Adds an event that has just been linked into its track.
    void Insert(song::SysexPlace place);

    /// Finds the order again after some of the events have moved; those of `toTrack` are in `track`
    /// now. Throws std::bad_alloc.
    void Reorder(std::span<const song::EventLink> toTrack, std::int32_t track);

private:
    std::vector<song::SysexPlace> places_;
    bool drumBanks_ = false;
};

} // namespace tracksmith::instruments
