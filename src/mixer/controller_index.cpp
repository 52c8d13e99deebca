#include "mixer/controller_index.h"

#include <algorithm>

#include "song/shared_byte.h"

namespace tracksmith::mixer {

ControllerIndex::ControllerIndex(const song::Song& song) {
    for (const song::Track& track : song.tracks) {
        song::ConstEventLink event;
        if (track.ignored == 0) {
            event = track.first;
        }
        for (; event; event = event->next) {
            if (event->IsChannelMessage() && event->length > 0) {
                Take(event);
            }
        }
    }
    for (Channel& channel : channels_) {
        for (std::vector<ControllerPlace>& places : channel.places) {
            std::ranges::stable_sort(places, {}, &ControllerPlace::tick);
        }
    }
}

void ControllerIndex::Take(song::ConstEventLink event) {
    Channel& channel = channels_[event->Channel()];
    channel.used = true;
    if (event->IsNoteOn()) {
        channel.firstNote = std::min(channel.firstNote.value_or(event->tick), event->tick);
    } else if (event->Command() == song::kControlChange) {
        const auto controller = static_cast<std::uint8_t>(song::ReadShared(event->data1) & 0x7F);
        if (const auto control = ControlOf(controller)) {
            channel.places[IndexOf(*control)].push_back(
                {event->tick, song::EventLink(event.Unit())});
        }
    }
}

FirstValues ReadFirstValues(const song::Song& song) {
    const ControllerIndex index(song);
    FirstValues values;
    for (std::size_t channel = 0; channel < values.size(); ++channel) {
        for (const Control control : kAllControls) {
            const auto places = index.Places(channel, control);
            if (!places.empty()) {
                values[channel][IndexOf(control)] =
                    static_cast<std::uint8_t>(song::ReadShared(places.front().event->data2) & 0x7F);
            }
        }
    }
    return values;
}

} // namespace tracksmith::mixer
