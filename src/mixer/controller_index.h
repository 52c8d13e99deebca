#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "mixer/controls.h"
#include "song/midi_numbers.h"
#include "song/song.h"

namespace tracksmith::mixer {

/// Where a song sets a control of a channel.
struct ControllerPlace {
    std::int32_t tick = 0;
    /// The control change. Only its data bytes may be changed, by song::WriteShared.
    song::EventLink event;
};

/// Every event of a song that a strip's control stands for, and which channels the song uses,
/// collected in one walk over the tracks that are not ignored. Holds links: collect it anew after a
/// change of the song's structure.
class ControllerIndex {
public:
    /// Of no song.
    ControllerIndex() = default;
    /// Throws std::bad_alloc.
    explicit ControllerIndex(const song::Song& song);

    /// The events of a control of `channel` (0-15) by tick, equal ticks in track order.
    std::span<const ControllerPlace> Places(std::size_t channel, Control control) const {
        return channels_[channel].places[IndexOf(control)];
    }
    /// The song has a message of the channel.
    bool Used(std::size_t channel) const { return channels_[channel].used; }
    /// Tick of the channel's first note; none for a channel without notes.
    std::optional<std::int32_t> FirstNote(std::size_t channel) const {
        return channels_[channel].firstNote;
    }

private:
    struct Channel {
        std::array<std::vector<ControllerPlace>, kControls> places;
        std::optional<std::int32_t> firstNote;
        bool used = false;
    };

    void Take(song::ConstEventLink event);

    std::array<Channel, song::kMidiChannels> channels_;
};

/// What a song sets first on each channel: the values that count as in effect at its start. Nothing
/// where the song never sets a control.
using FirstValues =
    std::array<std::array<std::optional<std::uint8_t>, kControls>, song::kMidiChannels>;

/// The first values of a song. Throws std::bad_alloc.
FirstValues ReadFirstValues(const song::Song& song);

} // namespace tracksmith::mixer
