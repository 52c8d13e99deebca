#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "editing/side_state.h"
#include "song/channel_state.h"
#include "song/song.h"

namespace tracksmith::editing {

/// The first event of each track that belongs behind a cut, in track order.
using CutPlaces = std::vector<song::EventLink>;

/// The first event of each track at `tick` or behind it; at tick 0 the first that is played or sung
/// there, so that names and settings stay in front. `tick` lies before the song's end.
CutPlaces PlacesAt(song::Song& song, std::int32_t tick);
/// The same, found from places that do not lie behind it.
CutPlaces PlacesAt(const CutPlaces& from, std::int32_t tick);

/// What the events before a place of the song have set: the channels, tempo, metre and key. Holds
/// links to them.
struct MusicState {
    std::array<song::ChannelState, song::kMidiChannels> channels;
    std::array<SideState, song::kMidiChannels> sides;
    /// Track of the last event that set something on a channel.
    std::array<std::optional<std::size_t>, song::kMidiChannels> track;
    song::ConstEventLink tempo;
    song::ConstEventLink metre;
    song::ConstEventLink key;
    std::size_t keyTrack = 0;

    /// Takes what stands between two places, in the order of playing; `begin` may be empty for the
    /// song's start. Ignored tracks only count for tempo, metre and key. Resets of the instrument
    /// forget what was set. Throws std::bad_alloc.
    void Play(const song::Song& song, const CutPlaces& begin, const CutPlaces& end);
};

/// A channel message and the track that it belongs in.
struct CarriedMessage {
    std::size_t track = 0;
    std::uint8_t status = 0;
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;
};

/// A meta event and the track that it belongs in.
struct CarriedMeta {
    std::size_t track = 0;
    std::uint8_t type = 0;
    std::vector<std::uint8_t> bytes;
};

/// What has to be inserted at a seam so that the song goes on as if something else had come before.
struct CarriedState {
    /// At the seam, before everything else: tempo, metre, key, then modes, banks and programs.
    std::vector<CarriedMeta> metas;
    std::vector<CarriedMessage> messages;
    /// A tick behind the seam: controllers, parameters, bend, all pressure.
    std::vector<CarriedMessage> behind;
};

/// The states on both sides of a seam: what has come before it and what should have.
struct Seam {
    MusicState from;
    MusicState to;
};

/// Composes what leads from one state into the other; what the first events behind the seam set by
/// themselves is left out. These begin at `places`; `tick` is theirs. With `apart` only modes,
/// banks and programs go to the seam and everything else behind it. Throws std::bad_alloc.
CarriedState Carry(Seam seam, const song::Song& song, const CutPlaces& places, std::int32_t tick,
                   bool apart);

} // namespace tracksmith::editing
