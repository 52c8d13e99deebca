#include "player/chase.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "song/mode_message.h"

namespace tracksmith::player {
namespace {

std::int64_t FirstNoteTick(const song::Song& song) {
    std::int64_t first = std::numeric_limits<std::int64_t>::max();
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event && event->tick < first;
             event = event->next) {
            if (event->IsNoteOn() && event->length > 0) {
                first = event->tick;
            }
        }
    }
    return first;
}

/// What is heard before the cursors and sets something.
struct SettingsBefore {
    song::EventLinkField song::Track::*end;

    static bool Enters(const song::Track& track) { return track.ignored == 0 && track.muted == 0; }
    static bool Wants(const song::MidiEvent& event) {
        return event.length > 0 &&
               (event.IsChannelMessage() ? event.status >= song::kControlChange
                                         : event.status == song::kSystemExclusive);
    }
    song::ConstEventLink EndOf(const song::Track& track) const { return track.*end; }
};

// Pauses between set-up messages, in milliseconds: the song's own as far as these, and what an
// instrument needs that has been reset.
constexpr std::int64_t kMostPauseMs = 60;
constexpr std::int64_t kResetPauseMs = 50;

/// Fills a ChaseMemory, event by event.
class Collector {
public:
    Collector(const song::Song& song, const ChaseRules& rules)
        : rules_(rules), firstNote_(FirstNoteTick(song)) {}

    void Take(const song::MidiEvent& event, std::int64_t dueMs) {
        MeasurePause(dueMs);
        if (event.IsChannelMessage()) {
            memory_.channels[event.Channel()].Take(song::LinkTo(event));
            memory_.controls[event.Channel()].Take(song::LinkTo(event));
        } else if (rules_.sysex) {
            TakeSysex(event, dueMs);
        }
    }

    ChaseMemory&& Memory() { return std::move(memory_); }

private:
    // The song's own distance goes to the next set-up message, behind the last one to whatever
    // comes next.
    void MeasurePause(std::int64_t dueMs) {
        if (std::exchange(measuring_, false)) {
            SetPause(dueMs);
        }
    }
    void SetPause(std::int64_t dueMs) {
        const std::int64_t least = afterReset_ ? kResetPauseMs : 0;
        memory_.setUp.back().pauseMs = std::clamp(dueMs - lastDueMs_, least, kMostPauseMs);
    }

    void TakeSysex(const song::MidiEvent& event, std::int64_t dueMs) {
        const auto body = song::WithoutFrame(event.Payload());
        const bool reset = song::ModeOfReset(body).has_value();
        if (reset) {
            ForgetChannels();
        }
        if (event.tick > firstNote_ && !reset && !song::RhythmPartOf(body)) {
            return;
        }
        if (!memory_.setUp.empty()) {
            SetPause(dueMs);
        }
        memory_.setUp.push_back({song::LinkTo(event), kMostPauseMs});
        lastDueMs_ = dueMs;
        afterReset_ = reset;
        measuring_ = true;
    }

    void ForgetChannels() {
        for (std::size_t channel = 0; channel < memory_.channels.size(); ++channel) {
            if ((rules_.channels >> channel & 1U) != 0) {
                memory_.channels[channel].Clear();
            }
        }
    }

    const ChaseRules& rules_;
    std::int64_t firstNote_;
    ChaseMemory memory_;
    std::int64_t lastDueMs_ = 0;
    bool afterReset_ = false;
    bool measuring_ = false;
};

} // namespace

song::EventLink FirstDue(song::Track& track, std::int64_t ms) {
    song::EventLink event = track.first;
    while (event && song::DueMs(track, *event) < ms) {
        event = event->next;
    }
    return event;
}

void SeekCursors(song::Song& song, std::int64_t ms) {
    for (song::Track& track : song.tracks) {
        track.cursor = FirstDue(track, ms);
    }
}

ChaseMemory CollectChase(const song::Song& song, const ChaseRules& rules,
                         song::EventLinkField song::Track::*end) {
    Collector collector(song, rules);
    song::TrackWalk<song::DueOrder, SettingsBefore> walk(song, {end});
    while (walk.Peek() != nullptr) {
        const song::Track& track = song.tracks[walk.NextTrack()];
        const song::MidiEvent& event = *walk.Take();
        collector.Take(event, song::DueMs(track, event));
    }
    return collector.Memory();
}

} // namespace tracksmith::player
