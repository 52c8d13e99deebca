#include "instruments/sysex/keep_settings.h"

#include <algorithm>
#include <limits>

#include "instruments/sysex/count_early_notes.h"
#include "instruments/sysex/neutral_settings.h"
#include "instruments/sysex/operation_table.h"
#include "instruments/sysex/set_up_pauses.h"
#include "instruments/sysex/settings_outlook.h"
#include "instruments/sysex/settings_placement.h"
#include "instruments/sysex/sysex_edit.h"
#include "song/event_chain.h"

namespace tracksmith::instruments {
namespace {

using song::EventLink;
using Wish = SettingsOutlook::Wish;

constexpr std::int64_t kQuartersAhead = 8;

// Walks over the song up to the last message that matters and keeps the settings at each.
class SettingsKeeper {
public:
    SettingsKeeper(song::Song& song, SysexSession& session)
        : song_(song),
          session_(session),
          marks_(song, session),
          clock_(song),
          walk_(song),
          early_(song, session) {}

    void Run() {
        for (std::size_t left = marks_.Count(); left > 0 && !walk_.AtEnd();) {
            if (walk_.Event()->status != song::kSystemExclusive) {
                TakeRun();
                continue;
            }
            const std::int32_t track = walk_.Track();
            const EventLink event = walk_.Take();
            left -= MeetMessage(event, {event->tick, track}) ? 1 : 0;
        }
        early_.MeetRest(walk_);
    }

private:
    // Takes events of one track up to a message, which changes more than what is kept here. All
    // that each of millions of settings needs is in registers.
    [[gnu::noinline]] void TakeRun() {
        const std::int32_t track = walk_.Track();
        std::uint64_t order = order_;
        walk_.TakeRun([this, track, &order](EventLink event) {
            ++order;
            if (const std::uint8_t slot = PlainSlot(*event); slot != kNoSlot) {
                settings_[event->Channel()].ApplyPlain({event, track, order}, slot);
                return true;
            }
            return MeetOther({event, track, order});
        });
        order_ = order;
    }

    // Returns false for a message.
    [[gnu::noinline]] bool MeetOther(SettingEvent setting) {
        const song::MidiEvent& event = *setting.event;
        if (event.IsNoteOn() && event.length > 0) {
            played_[event.Channel()] = true;
            early_.Meet(event);
        } else if (IsSetting(event)) {
            settings_[event.Channel()].Apply(setting);
            if (IsVoiceSetting(event)) {
                voices_.Meet(event);
                target_.Meet(event);
            }
        }
        return event.status != song::kSystemExclusive;
    }

    // Returns whether the message is one of those that the marks count.
    bool MeetMessage(EventLink event, PlayPlace place) {
        const SetUpMark mark = marks_.Of(event);
        switch (mark.effect) {
            case SetUpEffect::Resets:
                if (mark.removed) {
                    Undo(event, place, {});
                }
                ClearAll();
                voices_.Reset(mark.reset);
                if (!mark.removed || !IsGs(DrumWayOf(session_.report.instrument))) {
                    target_.Reset(mark.reset);
                }
                return mark.removed;
            case SetUpEffect::ChangesPart:
                if (!mark.removed && target_.Changes(mark.part) && !voices_.Changes(mark.part)) {
                    KeepFromPart(event, place, mark.part.channel);
                }
                ChangePart(event, place, mark);
                if (!mark.removed) {
                    KeepMessage(event, place);
                }
                return mark.removed;
            case SetUpEffect::Undoes:
                KeepFromReset(event, place);
                ClearAll();
                target_.Reset(mark.reset);
                return true;
            case SetUpEffect::UndoesPart:
                if (target_.Changes(mark.part)) {
                    KeepFromPart(event, place, mark.part.channel);
                }
                target_.SetPart(mark.part);
                return true;
            case SetUpEffect::None:
                KeepMessage(event, place);
                return false;
            default:
                return false;
        }
    }

    void KeepMessage(EventLink event, PlayPlace place) {
        if (event->length > 0) {
            messages_.push_back({event, place.track, ++order_});
        }
    }

    void ChangePart(EventLink event, PlayPlace place, const SetUpMark& mark) {
        if (voices_.Changes(mark.part)) {
            if (mark.removed && !mark.deaf) {
                Undo(event, place, mark.part);
            }
            settings_.at(mark.part.channel).ClearVoice();
        }
        voices_.SetPart(mark.part);
        if (!mark.removed) {
            target_.SetPart(mark.part);
        }
    }

    void ClearAll() {
        for (ChannelSettings& settings : settings_) {
            settings.Clear();
        }
        messages_.clear();
    }

    Wish WishFrom(std::int32_t tick) const {
        const std::int64_t last = tick + kQuartersAhead * song::EffectiveDivision(song_);
        Wish wish;
        wish.lastTick = static_cast<std::int32_t>(
            std::min<std::int64_t>(last, std::numeric_limits<std::int32_t>::max()));
        return wish;
    }

    SettingsOutlook LookAhead(Wish wish) const {
        wish.lastTick = std::max({wish.lastTick, wish.wantedTick, wish.wantedMessageTick});
        return {walk_, marks_, settings_, voices_, order_, wish};
    }

    SettingsPlacement Behind(EventLink message, PlayPlace place) {
        return {song_, session_, clock_, walk_, message, place.track};
    }

    void KeepFromReset(EventLink reset, PlayPlace place) {
        const std::int32_t afterReset = clock_.MsOf(place.tick) + kResetPauseMs;
        std::int32_t ready = std::max(marks_.ReadyMs(clock_), afterReset);
        if (!messages_.empty()) {
            ready = std::max(ready, afterReset + kSetUpPauseMs);
        }
        Wish wish = WishFrom(place.tick);
        wish.wantedTick = clock_.FirstTickAt(ready);
        wish.wantedMessageTick = clock_.FirstTickAt(afterReset);
        SettingsOutlook outlook = LookAhead(wish);
        SettingsPlacement placement = Behind(reset, place);
        KeepMessages(placement, outlook.Messages(), wish.wantedMessageTick);
        for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
            KeepChannel(placement, outlook.Channel(channel), channel, wish.wantedTick);
        }
        walk_.Refresh();
    }

    void KeepFromPart(EventLink message, PlayPlace place, std::size_t channel) {
        const std::int32_t afterMessage = clock_.MsOf(place.tick) + kSetUpPauseMs;
        Wish wish = WishFrom(place.tick);
        wish.wantedTick = clock_.FirstTickAt(std::max(marks_.ReadyMs(clock_), afterMessage));
        wish.voiceOf = channel;
        SettingsOutlook outlook = LookAhead(wish);
        if (!outlook.Channel(channel).needed.empty()) {
            SettingsPlacement placement = Behind(message, place);
            KeepChannel(placement, outlook.Channel(channel), channel, wish.wantedTick);
            walk_.Refresh();
        }
    }

    PlacedSettings Placed(const std::vector<SettingEvent>& needed, const LaneOutlook& lane,
                          std::int32_t wantedTick) const {
        PlacedSettings placed{
            .settings = needed, .order = order_, .wantedTick = wantedTick, .limit = lane.limit};
        placed.settings.insert(placed.settings.end(), lane.window.begin(), lane.window.end());
        return placed;
    }

    void KeepChannel(SettingsPlacement& placement, const LaneOutlook& lane, std::size_t channel,
                     std::int32_t wantedTick) {
        ChannelReport& report = session_.report.channels.at(channel);
        PlacedSettings placed = Placed(lane.needed, lane, wantedTick);
        const std::size_t needed = lane.needed.size();
        placed.repeated = played_.at(channel) ? needed : 0;
        if (const auto moved = placement.Place(placed)) {
            report.moved += *moved;
            report.repeated += static_cast<std::int32_t>(placed.repeated);
        } else {
            placement.RepeatBehindMessage(lane.needed, needed);
            report.repeated += static_cast<std::int32_t>(needed);
        }
    }

    void KeepMessages(SettingsPlacement& placement, const LaneOutlook& lane,
                      std::int32_t wantedTick) {
        const auto moved = placement.Place(Placed(messages_, lane, wantedTick));
        if (!moved) {
            placement.MoveBehindMessage(messages_);
        }
        const auto count = moved.value_or(static_cast<std::int32_t>(messages_.size()));
        session_.report.movedMessages += count;
        if (count > 0) {
            Reindex(!moved, placement.Track());
        }
    }

    // With `others` all messages have gone to `track`.
    void Reindex(bool others, std::int32_t track) {
        std::vector<EventLink> moved;
        for (const SettingEvent& message : messages_) {
            moved.push_back(message.event);
        }
        if (session_.index) {
            session_.index->Reorder(others ? moved : std::vector<EventLink>(), track);
        }
    }

    // Brings back what a message had done that was taken out.
    void Undo(EventLink removed, PlayPlace place, const std::optional<PartMode>& part) {
        Wish wish = WishFrom(place.tick);
        wish.carried = false;
        if (part) {
            wish.voiceOf = part->channel;
        }
        if (std::ranges::all_of(settings_, &ChannelSettings::Empty)) {
            return;
        }
        SettingsOutlook outlook = LookAhead(wish);
        for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
            const bool drum = part ? target_.Of(channel).drum : channel == song::kDrumChannel;
            const NeutralSettings neutral =
                NeutralOf(outlook.Channel(channel).needed, static_cast<std::uint8_t>(channel),
                          FirstBank(drum));
            removed = PutNeutral(neutral, channel, removed, place.track);
        }
        walk_.Skip(removed, place.track);
        walk_.Refresh();
    }

    // Returns the last event that was put.
    EventLink PutNeutral(const NeutralSettings& neutral, std::size_t channel, EventLink behind,
                         std::int32_t track) {
        for (const ShortMessage& message : neutral.messages) {
            const EventLink event = song::NewShortEvent(song_.pool, behind->tick, message.status,
                                                        message.data1, message.data2);
            event->timeMs = behind->timeMs;
            song::InsertAfter(song_.tracks[static_cast<std::size_t>(track)], behind, event);
            behind = event;
        }
        ChannelReport& report = session_.report.channels.at(channel);
        report.undone += static_cast<std::int32_t>(neutral.messages.size());
        report.lost += neutral.unknown;
        return behind;
    }

    // Bank select MSB after a reset of the instrument.
    std::uint8_t FirstBank(bool drum) const {
        switch (DrumWayOf(session_.report.instrument)) {
            case DrumWay::BankXg:
                return drum ? song::kXgDrumBank : 0;
            case DrumWay::BankGm2:
                return drum ? song::kGm2DrumBank : song::kGm2MelodyBank;
            default:
                return 0;
        }
    }

    song::Song& song_;
    SysexSession& session_;
    SetUpMarks marks_;
    InsertionClock clock_;
    PlayWalk walk_;
    EarlyNotes early_;
    AllSettings settings_;
    std::vector<SettingEvent> messages_; // the song's own set-up messages since the last reset
    PartVoices voices_{std::nullopt};
    PartVoices target_{DrumWayOf(session_.report.instrument)};
    std::array<bool, song::kMidiChannels> played_{};
    std::uint64_t order_ = 0;
};

} // namespace

void KeepChannelSettings(song::Song& song, SysexSession& session) {
    WithMemory(session, [&] {
        if (SetUpMarks(song, session).Count() > 0) {
            SettingsKeeper(song, session).Run();
        } else {
            CountEarlyNotes(song, session);
        }
    });
}

} // namespace tracksmith::instruments
