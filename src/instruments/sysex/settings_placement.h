#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "instruments/sysex/channel_settings.h"
#include "instruments/sysex/insertion_clock.h"
#include "instruments/sysex/play_walk.h"
#include "instruments/sysex/sysex_session.h"

namespace tracksmith::instruments {

/// Settings that are to go behind a place, in the order of playing.
struct PlacedSettings {
    std::vector<SettingEvent> settings;
    /// Order of the message; what stands behind it only gives way.
    std::uint64_t order = 0;
    /// So many of the first are put in once more and stay where they are.
    std::size_t repeated = 0;
    /// Where they go if there is room.
    std::int32_t wantedTick = 0;
    /// Place of the next note or reset, which they must not pass.
    std::optional<PlayPlace> limit;
};

/// Puts settings behind a message that resets an instrument: each into its own track, in the same
/// order, as late as the wanted tick and the limit allow. Works on a song whose events up to the
/// message a walk has just passed. One thread.
class SettingsPlacement {
public:
    /// `behind` is the place of the message, the last event that `walk` has taken.
    SettingsPlacement(song::Song& song, SysexSession& session, const InsertionClock& clock,
                      PlayWalk& walk, song::EventLink message, std::int32_t messageTrack)
        : song_(song),
          session_(session),
          clock_(clock),
          walk_(walk),
          message_(message),
          behind_{message->tick, messageTrack} {}

    /// Returns how many events changed their tick or place; empty where there is no room in their
    /// own tracks, nothing has changed then. Raises EMidiError when memory ends.
    std::optional<std::int32_t> Place(const PlacedSettings& placed);

    /// Puts the first `count` settings once more into the message's own track, directly behind it.
    void RepeatBehindMessage(const std::vector<SettingEvent>& settings, std::size_t count);

    /// Moves them there.
    void MoveBehindMessage(const std::vector<SettingEvent>& settings);

    std::int32_t Track() const { return behind_.track; }

private:
    std::vector<std::int32_t> TicksOf(const PlacedSettings& placed) const;
    bool IsBehind(PlayPlace place) const;
    std::int32_t Latest(std::int32_t track, PlayPlace before) const;
    song::EventLink Copy(song::EventLink event, std::int32_t tick);
    void Take(const SettingEvent& setting);
    void PutAt(song::EventLink event, std::int32_t track, song::EventLink place, std::int32_t tick);

    song::Song& song_;
    SysexSession& session_;
    const InsertionClock& clock_;
    PlayWalk& walk_;
    song::EventLink message_;
    PlayPlace behind_;
};

} // namespace tracksmith::instruments
