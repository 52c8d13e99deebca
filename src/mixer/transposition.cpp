#include "mixer/transposition.h"

#include "song/shared_byte.h"

namespace tracksmith::mixer {
namespace {

constexpr int kOctave = 12;
constexpr int kHighest = 127;

// The note events of all tracks, for writing their data bytes.
template <typename F>
void ForEachPitch(const song::Song& song, F&& take) {
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            if (event->status >= song::kNoteOff && event->status < song::kControlChange) {
                take(song::EventLink(event.Unit()));
            }
        }
    }
}

} // namespace

bool Transposition::Any() const {
    for (std::size_t channel = 0; channel < channels.size(); ++channel) {
        if (Of(channel) != 0) {
            return true;
        }
    }
    return false;
}

std::uint8_t SoundingPitch(std::uint8_t pitch, int semitones) {
    int sounding = (pitch & kHighest) + semitones;
    while (sounding < 0) {
        sounding += kOctave;
    }
    while (sounding > kHighest) {
        sounding -= kOctave;
    }
    return static_cast<std::uint8_t>(sounding);
}

void WritePitches(const song::Song& song, const Transposition& transposition) {
    ForEachPitch(song, [&](song::EventLink event) {
        const int semitones = transposition.Of(event->Channel());
        const std::uint8_t pitch =
            semitones == 0 ? event->origData1 : SoundingPitch(event->origData1, semitones);
        if (song::ReadShared(event->data1) != pitch) {
            song::WriteShared(event->data1, pitch);
        }
    });
}

// The playback thread does not read what is written here.
void KeepPitches(const song::Song& song) {
    ForEachPitch(song,
                 [](song::EventLink event) { event->origData1 = song::ReadShared(event->data1); });
}

} // namespace tracksmith::mixer
