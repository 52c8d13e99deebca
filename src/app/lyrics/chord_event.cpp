#include "app/lyrics/chord_event.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace tracksmith::lyrics {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint8_t kNoChord = 0x7F;
constexpr std::uint8_t kCancel = 0x22;

// By the type byte, as the keyboards' displays show them behind the root.
constexpr std::array<std::string_view, 34> kTypes{
    "",      "6",       "maj7",  "maj7(#11)", "add9",  "maj7(9)", "6(9)",    "aug",       "m",
    "m6",    "m7",      "m7b5",  "m(9)",      "m7(9)", "m7(11)",  "m(maj7)", "m(maj7,9)", "dim",
    "dim7",  "7",       "7sus4", "7b5",       "7(9)",  "7(#11)",  "7(13)",   "7(b9)",     "7(b13)",
    "7(#9)", "maj7aug", "7aug",  "(1+8)",     "5",     "sus4",    "sus2"};

constexpr std::array<std::uint8_t, 3> kMetaChord{0x43, 0x7B, 0x01};
constexpr std::array<std::uint8_t, 3> kChordControl{0x43, 0x7E, 0x02};

bool BeginsWith(Bytes payload, Bytes head) {
    return payload.size() >= head.size() && std::ranges::equal(payload.first(head.size()), head);
}

// Note in the low half, from C; accidentals in the high half, 3 for none. Empty if undefined.
std::string NoteName(std::uint8_t root) {
    constexpr std::string_view kNotes = "CDEFGAB";
    constexpr int kNatural = 3;
    constexpr int kMostSharps = 3;
    const std::size_t note = root & 0x0FU;
    const int accidental = (root >> 4) - kNatural;
    if (note == 0 || note > kNotes.size() || accidental > kMostSharps) {
        return {};
    }
    std::string name(1, kNotes[note - 1]);
    const auto signs = static_cast<std::size_t>(accidental < 0 ? -accidental : accidental);
    return name.append(signs, accidental < 0 ? 'b' : '#');
}

std::optional<std::string> ChordName(Bytes chord) {
    const std::uint8_t root = chord[0];
    const std::uint8_t type = chord[1];
    if (root == kNoChord || type == kNoChord || type == kCancel) {
        return std::string();
    }
    std::string name = NoteName(root);
    if (name.empty() || type >= kTypes.size()) {
        return std::nullopt;
    }
    name += kTypes.at(type);
    const std::string bass = chord.size() > 2 ? NoteName(chord[2]) : std::string();
    return bass.empty() || chord[2] == root ? name : name + "/" + bass;
}

} // namespace

std::optional<std::string> ChordOf(const song::MidiEvent& event) {
    constexpr std::size_t kHead = 3;
    constexpr std::size_t kLeast = kHead + 2;
    constexpr std::size_t kMetaLength = kHead + 4;
    const Bytes payload = event.Payload();
    const bool meta = event.IsMeta(song::kMetaSequencerSpecific) && payload.size() == kMetaLength &&
                      BeginsWith(payload, kMetaChord);
    const bool message = event.status == song::kSystemExclusive && payload.size() >= kLeast &&
                         BeginsWith(payload, kChordControl);
    return meta || message ? ChordName(payload.subspan(kHead)) : std::nullopt;
}

} // namespace tracksmith::lyrics
