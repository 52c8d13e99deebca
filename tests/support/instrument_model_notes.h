#pragma once

#include <string>
#include <vector>

#include "support/instrument_model.h"

#include "song/song.h"
#include "song/track_walk.h"

namespace tracksmith::test {

/// A note as it begins.
struct PlayedNote {
    std::int32_t tick = 0;
    std::uint8_t channel = 0;
    std::uint8_t key = 0;
    std::uint8_t velocity = 0;
    ChannelState state;
};

/// Hands every event of the song that is played to `visit(const MidiEvent&)`, in the order of
/// playing.
template <typename Visit>
void ForEachPlayed(const song::Song& song, Visit visit) {
    song::TrackWalk<song::TickOrder> walk(song);
    while (const song::MidiEvent* event = walk.Take()) {
        if (event->length > 0) {
            visit(*event);
        }
    }
}

/// Plays the song to the instrument and calls `visit(note, state)` for every note that begins.
template <typename Visit>
void PlayTo(InstrumentModel& model, const song::Song& song, Visit visit) {
    ForEachPlayed(song, [&](const song::MidiEvent& event) {
        if (event.IsNoteOn()) {
            visit(event, model.Channel(event.Channel()));
        } else if (event.IsChannelMessage()) {
            model.Short(event.status, event.data1, event.data2);
        } else if (event.status == song::kSystemExclusive) {
            model.Sysex(event.Payload());
        }
    });
}

/// All notes of the song as `model` would begin them.
inline std::vector<PlayedNote> PlayedNotes(const song::Song& song, InstrumentModel model) {
    std::vector<PlayedNote> notes;
    PlayTo(model, song, [&](const song::MidiEvent& event, const ChannelState& state) {
        notes.push_back({event.tick, event.Channel(), event.data1, event.data2, state});
    });
    return notes;
}

/// What of a note differs, in words: "volume 90/100 pan 0/64"; empty when nothing does. Banks count
/// for melody voices only, as families of instruments have banks of their own (from 120) for drums.
inline std::string Differences(const ChannelState& before, const ChannelState& after) {
    std::string words;
    const auto compare = [&words](const std::string& name, int first, int second) {
        if (first != second) {
            words += (words.empty() ? "" : " ") + name + " " + std::to_string(first) + "/" +
                     std::to_string(second);
        }
    };
    if (!before.drumUnsure) {
        compare("drum", before.drum ? 1 : 0, after.drum ? 1 : 0);
    }
    compare("program", before.program, after.program);
    if (!before.drum && !after.drum && before.bankMsb < 120) {
        compare("bank", before.bankMsb * 128 + before.bankLsb, after.bankMsb * 128 + after.bankLsb);
    }
    const auto compareEach = [&compare](const char* name, const auto& first, const auto& second) {
        for (std::size_t i = 0; first != second && i < first.size(); ++i) {
            compare(name + std::to_string(i), first.at(i), second.at(i));
        }
    };
    compareEach("controller", before.controllers, after.controllers);
    compareEach("key", before.keyPressure, after.keyPressure);
    compare("pressure", before.pressure, after.pressure);
    compare("bend", before.bend, after.bend);
    compare("mono", before.mono ? 1 : 0, after.mono ? 1 : 0);
    if (before.parameters != after.parameters) {
        words += " parameters";
    }
    return words;
}

} // namespace tracksmith::test
