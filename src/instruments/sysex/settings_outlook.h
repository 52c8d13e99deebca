#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "instruments/sysex/channel_settings.h"
#include "instruments/sysex/part_voices.h"
#include "instruments/sysex/play_walk.h"
#include "instruments/sysex/set_up_marks.h"

namespace tracksmith::instruments {

using AllSettings = std::array<ChannelSettings, song::kMidiChannels>;

/// What comes behind a message that undoes settings, for one channel or for the song's set-up
/// messages.
struct LaneOutlook {
    /// Settings from before that are still in force at the next note.
    std::vector<SettingEvent> needed;
    /// Settings behind the message that stand before the wanted tick.
    std::vector<SettingEvent> window;
    /// The first event that stays where it is: a note, a later setting, a reset.
    std::optional<PlayPlace> limit;
    bool open = true;
};

/// Looks ahead from a place up to the next note of each channel, or so far as is asked.
class SettingsOutlook {
public:
    struct Wish {
        /// No event behind this tick is looked at.
        std::int32_t lastTick = 0;
        /// Settings of channels, and set-up messages, before these ticks are collected.
        std::int32_t wantedTick = 0;
        std::int32_t wantedMessageTick = 0;
        /// Settings are carried over messages that were put in; otherwise these undo them.
        bool carried = true;
        /// Only program and bank of this channel count.
        std::optional<std::size_t> voiceOf;
    };

    /// `settings` and `voices` are those in force at the place where `walk` stands; `order` is the
    /// order of the last event before it. Throws std::bad_alloc.
    SettingsOutlook(const PlayWalk& walk, const SetUpMarks& marks, AllSettings settings,
                    const PartVoices& voices, std::uint64_t order, const Wish& wish);

    LaneOutlook& Channel(std::size_t channel) { return channels_.at(channel); }
    LaneOutlook& Messages() { return messages_; }

private:
    bool Counts(const song::MidiEvent& setting) const;
    void Look(PlayWalk walk);
    void Meet(song::EventLink event, PlayPlace place);
    void MeetSetting(const SettingEvent& setting, PlayPlace place);
    void MeetMessage(song::EventLink event, PlayPlace place);
    void ChangePart(const PartMode& mode);
    void CloseAll(PlayPlace place);
    bool Done(std::int32_t tick) const;

    const SetUpMarks& marks_;
    Wish wish_;
    AllSettings settings_;
    PartVoices voices_;
    std::uint64_t order_;
    std::array<LaneOutlook, song::kMidiChannels> channels_;
    LaneOutlook messages_;
};

} // namespace tracksmith::instruments
