#include "instruments/sysex/drum_channels.h"

#include "instruments/sysex/part_voices.h"
#include "instruments/sysex/sysex_patterns.h"
#include "song/track_walk.h"

namespace tracksmith::instruments {
namespace {

/// What decides whether a channel plays drums.
struct PartEvents : song::EveryEvent {
    static bool Enters(const song::Track& track) { return track.ignored == 0; }
    static bool Wants(const song::MidiEvent& event) {
        return event.length > 0 &&
               (event.status == song::kSystemExclusive || event.Command() == song::kProgramChange ||
                (event.Command() == song::kControlChange && event.data1 == song::kBankMsb));
    }
};

void MeetMessage(PartVoices& parts, const song::MidiEvent& event) {
    const ResetKind reset = ResetKindOf(event.Payload());
    if (reset != ResetKind::None) {
        parts.Reset(reset);
    } else if (const auto part = PartModeOf(event.Payload())) {
        parts.SetPart(*part);
    }
}

} // namespace

std::uint32_t DrumChannels(const song::Song& song, std::optional<DrumWay> way) {
    PartVoices parts(way);
    std::uint32_t drums = 1U << song::kDrumChannel;
    song::TrackWalk<song::DueOrder, PartEvents> walk(song);
    for (; const song::MidiEvent* event = walk.Peek(); walk.Take()) {
        event->status == song::kSystemExclusive ? MeetMessage(parts, *event) : parts.Meet(*event);
        for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
            drums |= parts.Of(channel).drum ? 1U << channel : 0U;
        }
    }
    return drums;
}

} // namespace tracksmith::instruments
