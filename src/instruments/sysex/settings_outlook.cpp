#include "instruments/sysex/settings_outlook.h"

#include <algorithm>
#include <utility>

namespace tracksmith::instruments {
namespace {

void Close(LaneOutlook& lane, PlayPlace place) {
    if (lane.open) {
        lane.open = false;
        lane.limit = lane.limit.value_or(place);
    }
}

} // namespace

SettingsOutlook::SettingsOutlook(const PlayWalk& walk, const SetUpMarks& marks,
                                 AllSettings settings, const PartVoices& voices,
                                 std::uint64_t order, const Wish& wish)
    : marks_(marks), wish_(wish), settings_(std::move(settings)), voices_(voices), order_(order) {
    if (wish.voiceOf) {
        messages_.open = false;
        for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
            channels_.at(channel).open = channel == *wish.voiceOf;
        }
    }
    Look(walk);
    for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
        std::vector<SettingEvent>& needed = channels_.at(channel).needed;
        needed = settings_.at(channel).InForce();
        std::erase_if(needed, [&](const SettingEvent& setting) {
            return setting.order > order || !Counts(*setting.event);
        });
    }
}

bool SettingsOutlook::Counts(const song::MidiEvent& setting) const {
    return !wish_.voiceOf || (setting.Channel() == *wish_.voiceOf && IsVoiceSetting(setting));
}

void SettingsOutlook::Look(PlayWalk walk) {
    for (; !walk.AtEnd() && walk.Place().tick <= wish_.lastTick; walk.Take()) {
        if (Done(walk.Place().tick)) {
            return;
        }
        Meet(walk.Event(), walk.Place());
    }
}

// Channels without settings are looked at for those in the time that the instrument needs only.
bool SettingsOutlook::Done(std::int32_t tick) const {
    if (messages_.open && tick < wish_.wantedMessageTick) {
        return false;
    }
    for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
        if (channels_.at(channel).open &&
            (tick < wish_.wantedTick || !settings_.at(channel).Empty())) {
            return false;
        }
    }
    return true;
}

void SettingsOutlook::Meet(song::EventLink event, PlayPlace place) {
    if (event->status == song::kSystemExclusive) {
        MeetMessage(event, place);
    } else if (event->IsNoteOn() && event->length > 0) {
        Close(channels_.at(event->Channel()), place);
        Close(messages_, place);
    } else if (IsSetting(*event)) {
        MeetSetting({event, place.track, ++order_}, place);
    }
}

void SettingsOutlook::MeetSetting(const SettingEvent& setting, PlayPlace place) {
    const std::size_t channel = setting.event->Channel();
    LaneOutlook& lane = channels_.at(channel);
    if (!lane.open) {
        return;
    }
    if (const std::uint8_t slot = PlainSlot(*setting.event); slot != kNoSlot) {
        settings_[channel].ApplyPlain(setting, slot);
    } else {
        settings_[channel].Apply(setting);
        voices_.Meet(*setting.event);
    }
    if (!Counts(*setting.event)) {
        return;
    }
    if (place.tick < wish_.wantedTick) {
        lane.window.push_back(setting);
    } else if (!lane.limit) {
        lane.limit = place;
    }
}

void SettingsOutlook::MeetMessage(song::EventLink event, PlayPlace place) {
    const SetUpMark mark = marks_.Of(event);
    switch (mark.effect) {
        case SetUpEffect::Resets:
            if (wish_.carried || !mark.removed) {
                CloseAll(place);
            }
            break;
        case SetUpEffect::ChangesPart:
            if (wish_.carried) {
                ChangePart(mark.part);
            }
            break;
        case SetUpEffect::Undoes:
            if (!wish_.carried) {
                CloseAll(place);
            }
            break;
        case SetUpEffect::None:
            if (event->length > 0 && messages_.open && place.tick < wish_.wantedMessageTick) {
                messages_.window.push_back({event, place.track, ++order_});
            }
            break;
        default:
            break;
    }
}

// A voice that is undone here must not be carried to behind a message that makes the same change.
void SettingsOutlook::ChangePart(const PartMode& mode) {
    LaneOutlook& lane = channels_.at(mode.channel);
    if (lane.open && voices_.Changes(mode)) {
        settings_.at(mode.channel).ClearVoice();
        std::erase_if(lane.window,
                      [](const SettingEvent& setting) { return IsVoiceSetting(*setting.event); });
    }
    voices_.SetPart(mode);
}

void SettingsOutlook::CloseAll(PlayPlace place) {
    for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
        if (channels_.at(channel).open) {
            settings_.at(channel).Clear();
            Close(channels_.at(channel), place);
        }
    }
    Close(messages_, place);
}

} // namespace tracksmith::instruments
