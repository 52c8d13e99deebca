#include "editing/transpose_range.h"

#include <array>
#include <vector>

#include "editing/chord_names.h"
#include "instruments/picker/patch_state.h"
#include "song/drum_channels.h"
#include "song/note_pairing.h"

namespace tracksmith::editing {
namespace {

using song::EventLink;

constexpr int kOctave = 12;
constexpr std::uint8_t kHighestMegaVoiceNote = 95;
constexpr int kLowestMegaVoiceNote = 28;

/// Which channels play a voice with effect notes, and where.
class MegaVoices {
public:
    MegaVoices(const song::Song& song, const TransposeWish& wish) {
        if (!wish.isMegaVoice) {
            return;
        }
        patches_ = instruments::SongPatches(song);
        for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
            for (const instruments::VoiceChange& change : patches_.Changes(channel)) {
                changes_.at(channel).push_back(wish.isMegaVoice(change.state.Numbers()));
                any_[channel] = any_[channel] || changes_.at(channel).back();
            }
        }
    }
    bool At(std::size_t channel, std::int32_t tick) const {
        return any_[channel] && changes_.at(channel)[patches_.ChangeAt(channel, tick)];
    }

private:
    instruments::SongPatches patches_;
    std::array<std::vector<bool>, song::kMidiChannels> changes_;
    std::bitset<song::kMidiChannels> any_;
};

/// One run of TransposeRange.
class Transposer {
public:
    Transposer(song::Song& song, const TransposeWish& wish)
        : song_(song), wish_(wish), mega_(song, wish), lines_(song::NotePairing::kKeys) {}

    std::int64_t Run() {
        for (song::Track& track : song_.tracks) {
            MoveTrack(track);
        }
        MoveChords(song_, wish_.range, wish_.semitones);
        return moved_;
    }

private:
    // The notes of a channel and pitch that sound, as they stood in the file: for the note-offs.
    struct Line {
        std::vector<std::optional<std::uint8_t>> pitches; // none for those that stay
        std::size_t ended = 0;
    };

    void MoveTrack(song::Track& track) {
        if (track.eventCount <= 2) {
            return; // head and End of Track
        }
        for (Line& line : lines_) {
            line.pitches.clear();
            line.ended = 0;
        }
        for (EventLink event = track.first; event; event = event->next) {
            const bool isPitch = event->status >= song::kNoteOff &&
                                 event->status < song::kControlChange && event->length > 0;
            if (isPitch && wish_.channels[event->Channel()]) {
                MoveEvent(*event);
            }
        }
    }

    void MoveEvent(song::MidiEvent& event) {
        Line& line = lines_[song::NotePairing::KeyOf(event.status, event.data1)];
        if (event.IsNoteOn()) {
            line.pitches.push_back(PitchOf(event));
            moved_ += line.pitches.back() ? 1 : 0;
            Write(event, line.pitches.back());
        } else if (line.ended < line.pitches.size()) {
            Write(event, line.pitches[line.ended]);
            line.ended += event.Command() == song::kNoteOff ? 1 : 0;
        }
    }

    std::optional<std::uint8_t> PitchOf(const song::MidiEvent& event) const {
        const bool inRange = event.tick >= wish_.range.start && event.tick < wish_.range.end;
        const std::uint8_t pitch = TransposedPitch(event.origData1, wish_.semitones,
                                                   mega_.At(event.Channel(), event.tick));
        return inRange && pitch != event.origData1 ? std::optional(pitch) : std::nullopt;
    }

    void Write(song::MidiEvent& event, std::optional<std::uint8_t> pitch) const {
        if (pitch) {
            event.origData1 = *pitch;
            event.data1 = mixer::SoundingPitch(*pitch, wish_.live.Of(event.Channel()));
        }
    }

    song::Song& song_;
    const TransposeWish& wish_;
    MegaVoices mega_;
    std::vector<Line> lines_;
    std::int64_t moved_ = 0;
};

} // namespace

std::string ChannelLabel(std::string_view entry) {
    std::string_view label = entry.substr(0, entry.find(" - "));
    if (label.starts_with('0')) {
        label.remove_prefix(1);
    }
    return std::string(label);
}

std::bitset<song::kMidiChannels> ChannelsWithNotes(const song::Song& song) {
    std::bitset<song::kMidiChannels> channels;
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            if (event->IsNoteOn() && event->length > 0) {
                channels.set(event->Channel());
            }
        }
    }
    return channels;
}

std::bitset<song::kMidiChannels> MelodyChannels(const song::Song& song) {
    return ChannelsWithNotes(song) & ~song::DrumChannels(song);
}

std::uint8_t TransposedPitch(std::uint8_t pitch, int semitones, bool megaVoice) {
    if (!megaVoice) {
        return mixer::SoundingPitch(pitch, semitones % (128 * kOctave));
    }
    if (pitch > kHighestMegaVoiceNote) {
        return pitch;
    }
    int moved = mixer::SoundingPitch(pitch, semitones % (128 * kOctave));
    while (moved < kLowestMegaVoiceNote) {
        moved += kOctave;
    }
    return static_cast<std::uint8_t>(moved);
}

std::int64_t TransposeRange(song::Song& song, const TransposeWish& wish,
                            const NoteFaultListener& listener) {
    if (listener) {
        OpenNotes open;
        const std::array<std::int32_t, 1> end{wish.range.end};
        for (song::Track& track : song.tracks) {
            ScanNotes(track, end, open, listener);
        }
    }
    return Transposer(song, wish).Run();
}

} // namespace tracksmith::editing
