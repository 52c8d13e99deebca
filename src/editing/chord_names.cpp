#include "editing/chord_names.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "app/lyrics/chord_event.h"

namespace tracksmith::editing {
namespace {

constexpr int kOctave = 12;
using Names = std::array<std::string_view, 12>;

constexpr Names kSharps{"C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"};
constexpr Names kFlats{"C", "Db", "D", "Eb", "E", "F", "Gb", "G", "Ab", "A", "Bb", "B"};
constexpr Names kGermanSharps{"C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "H"};
constexpr Names kGermanFlats{"C", "Db", "D", "Eb", "E", "F", "Gb", "G", "Ab", "A", "B", "H"};

// What may follow the root: "m7", "maj7", "sus4", "7(b9)", "dim", "add9", "6/9".
constexpr std::string_view kChordMarks = "abdgijmnosu0123456789#+-()/M*";

int Wrapped(int pitch) {
    return ((pitch % kOctave) + kOctave) % kOctave;
}

std::optional<std::size_t> IndexIn(const Names& names, std::string_view name) {
    const auto found = std::ranges::find(names, name);
    return found == names.end() ? std::nullopt
                                : std::optional(static_cast<std::size_t>(found - names.begin()));
}

// A root moved: searched among the sharp names and then among the flat ones; empty when in neither.
std::string_view MovedNote(std::string_view note, int semitones, bool german) {
    const std::array<const Names*, 2> tables{german ? &kGermanSharps : &kSharps,
                                             german ? &kGermanFlats : &kFlats};
    for (const Names* names : tables) {
        if (const auto index = IndexIn(*names, note)) {
            const int moved = Wrapped(static_cast<int>(*index) + semitones);
            return (*names)[static_cast<std::size_t>(moved)];
        }
    }
    return {};
}

std::string_view RootOf(std::string_view name) {
    const bool accidental = name.size() > 1 && (name[1] == '#' || name[1] == 'b');
    return name.substr(0, accidental ? 2 : 1);
}

bool IsChordEnding(std::string_view ending) {
    return std::ranges::all_of(
        ending, [](char mark) { return kChordMarks.find(mark) != std::string_view::npos; });
}

char ClosingMark(char opening) {
    return opening == '[' ? ']' : opening == '-' ? '-' : '\0';
}

// Calls `visit(name, begin)` for what stands between marks in a lyric.
template <typename Visit>
void ForEachMarked(std::string_view lyric, Visit visit) {
    for (std::size_t begin = 0; begin < lyric.size(); ++begin) {
        const char closing = ClosingMark(lyric[begin]);
        const std::size_t end =
            closing == '\0' ? std::string_view::npos : lyric.find(closing, begin + 1);
        if (end != std::string_view::npos &&
            visit(lyric.substr(begin + 1, end - begin - 1), begin)) {
            begin = end;
        }
    }
}

bool IsLyric(const song::MidiEvent& event) {
    return event.length > 0 && (event.IsMeta(song::kMetaLyric) || event.IsMeta(song::kMetaText));
}

std::string_view TextOf(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

bool HasGermanNames(const song::Song& song) {
    bool german = false;
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event && !german; event = event->next) {
            if (!IsLyric(*event)) {
                continue;
            }
            ForEachMarked(TextOf(event->Payload()), [&german](std::string_view name, std::size_t) {
                const bool chord = !MovedChordName(name, 0, true).empty();
                german = german || (chord && name.front() == 'H');
                return chord;
            });
        }
    }
    return german;
}

void MoveChord(song::MidiEvent& event, int semitones) {
    constexpr std::size_t kRoot = 3;
    constexpr std::size_t kBass = 5;
    const auto bytes = event.data.Bytes();
    bytes[kRoot] = MovedRoot(bytes[kRoot], semitones);
    bytes[kBass] = MovedRoot(bytes[kBass], semitones);
}

void MoveLyric(song::Song& song, song::MidiEvent& event, int semitones, bool german) {
    const std::string_view text = TextOf(event.Payload());
    const std::string moved = MovedLyric(text, semitones, german);
    if (moved != text) {
        const std::vector<std::uint8_t> bytes(moved.begin(), moved.end());
        const song::EventData data = song.pool.NewData(bytes);
        song.pool.FreeData(event.data);
        event.data = data;
        event.length = static_cast<std::int32_t>(bytes.size());
    }
}

} // namespace

bool IsChord(const song::MidiEvent& event) {
    constexpr std::array<std::uint8_t, 3> kXfChord{0x43, 0x7B, 0x01};
    const auto bytes = event.Payload();
    return event.IsMeta(song::kMetaSequencerSpecific) && bytes.size() == 7 &&
           std::equal(kXfChord.begin(), kXfChord.end(), bytes.begin());
}

std::uint8_t MovedRoot(std::uint8_t root, int semitones) {
    constexpr std::array<int, 7> kNatural{0, 2, 4, 5, 7, 9, 11};
    constexpr int kNaturalMark = 3;
    const unsigned note = root & 0x0FU;
    const int accidental = (root >> 4) - kNaturalMark;
    if (note < 1 || note > kNatural.size() || accidental > 3) {
        return root;
    }
    const int pitch = Wrapped(kNatural.at(note - 1) + accidental + semitones);
    const std::string_view name =
        (accidental < 0 ? kFlats : kSharps).at(static_cast<std::size_t>(pitch));
    constexpr std::string_view kLetters = "CDEFGAB";
    const unsigned mark = name.size() == 1 ? 3U : name[1] == '#' ? 4U : 2U;
    return static_cast<std::uint8_t>((mark << 4U) | (kLetters.find(name.front()) + 1));
}

std::string MovedChordName(std::string_view name, int semitones, bool german) {
    if (name.empty()) {
        return {};
    }
    const std::string_view root = RootOf(name);
    const std::string_view movedRoot = MovedNote(root, semitones, german);
    std::string_view ending = name.substr(root.size());
    std::string bass;
    if (const std::size_t slash = ending.rfind('/'); slash != std::string_view::npos) {
        const std::string_view moved = MovedNote(ending.substr(slash + 1), semitones, german);
        if (!moved.empty()) {
            bass = "/" + std::string(moved);
            ending = ending.substr(0, slash);
        }
    }
    if (movedRoot.empty() || !IsChordEnding(ending)) {
        return {};
    }
    return std::string(movedRoot) + std::string(ending) + bass;
}

std::string MovedLyric(std::string_view lyric, int semitones, bool german) {
    std::string moved;
    std::size_t copied = 0;
    ForEachMarked(lyric, [&](std::string_view name, std::size_t begin) {
        const std::string chord = MovedChordName(name, semitones, german);
        if (!chord.empty()) {
            moved += lyric.substr(copied, begin + 1 - copied);
            moved += chord;
            copied = begin + 1 + name.size();
        }
        return !chord.empty();
    });
    moved += lyric.substr(copied);
    return moved;
}

void MoveChords(song::Song& song, const TickRange& range, int semitones) {
    const bool german = HasGermanNames(song);
    for (song::Track& track : song.tracks) {
        for (song::EventLink event = track.first; event && event->tick < range.end;
             event = event->next) {
            if (event->tick < range.start) {
                continue;
            }
            if (IsChord(*event)) {
                MoveChord(*event, semitones);
            } else if (IsLyric(*event)) {
                MoveLyric(song, *event, semitones, german);
            }
        }
    }
}

std::vector<std::string> ChordsIn(const song::Song& song, const TickRange& range,
                                  std::size_t most) {
    const bool german = HasGermanNames(song);
    std::vector<std::pair<std::int32_t, std::string>> found;
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event && event->tick < range.end;
             event = event->next) {
            if (event->tick < range.start || event->length <= 0) {
                continue;
            }
            if (IsChord(*event)) {
                found.emplace_back(event->tick, lyrics::ChordOf(*event).value_or(std::string()));
            } else if (IsLyric(*event)) {
                ForEachMarked(TextOf(event->Payload()), [&](std::string_view name, std::size_t) {
                    const bool chord = !MovedChordName(name, 0, german).empty();
                    if (chord) {
                        found.emplace_back(event->tick, name);
                    }
                    return chord;
                });
            }
        }
    }
    std::ranges::stable_sort(found, {}, &std::pair<std::int32_t, std::string>::first);
    std::vector<std::string> chords;
    for (auto& [tick, name] : found) {
        if (!name.empty() && (chords.empty() || chords.back() != name) && chords.size() < most) {
            chords.push_back(std::move(name));
        }
    }
    return chords;
}

ChordEvents FindChordEvents(const song::Song& song) {
    ChordEvents chords;
    for (std::size_t index = 0; index < song.tracks.size(); ++index) {
        for (song::ConstEventLink event = song.tracks[index].first; event; event = event->next) {
            if (IsChord(*event)) {
                ++chords.count;
                chords.track = index;
            }
        }
    }
    return chords;
}

} // namespace tracksmith::editing
