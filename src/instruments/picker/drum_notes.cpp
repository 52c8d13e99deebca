#include "instruments/picker/drum_notes.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>
#include <utility>

#include "base/display_text.h"
#include "base/system/file_io.h"
#include "base/tab_lines.h"

#include "instruments/picker/texts.h"
#include "instruments/voices/shared_sets.h"
#include "instruments/voices/voice_file_error.h"
#include "song/midi_numbers.h"

namespace tracksmith::instruments {
namespace {

constexpr std::string_view kHeader = "set\tmsb\tprogram\tkit\tnote\tname";
constexpr std::size_t kColumns = 6;

// Instruments that follow GS: Roland's SC series and the arrangers that are set up by a GS reset.
constexpr auto kGs = std::to_array<InstrumentId>({1, 2, 3, 4, 12, 15, 17, 22, 38, 60, 72, 83});

std::optional<std::uint8_t> Number(std::string_view field) {
    std::uint8_t value = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    const bool whole = error == std::errc() && end == field.data() + field.size();
    return whole && value < 128 ? std::optional(value) : std::nullopt;
}

} // namespace

DrumNotes::DrumNotes(std::string bytes)
    : text_(std::make_unique<const std::string>(std::move(bytes))) {
    std::string_view rest = *text_;
    if (TakeLine(rest) != kHeader || !IsUtf8(*text_)) {
        throw VoiceFileError(texts::kDrumNotesFault, 1);
    }
    for (std::size_t number = 2; !rest.empty(); ++number) {
        AddLine(TakeLine(rest), number);
    }
}

DrumNotes DrumNotes::ReadFile(const std::filesystem::path& path) {
    const auto bytes = system::ReadRegularFile(path);
    if (!bytes) {
        throw VoiceFileError(texts::kDrumNotesUnreadable);
    }
    return DrumNotes(std::string(bytes->begin(), bytes->end()));
}

void DrumNotes::AddLine(std::string_view line, std::size_t number) {
    static constexpr auto kSets = std::to_array<std::pair<std::string_view, Set>>(
        {{"GM", Set::Gm}, {"GS", Set::Gs}, {"XG", Set::Xg}});
    const auto fields = SplitColumns<kColumns>(line);
    const auto* set =
        fields ? std::ranges::find(kSets, (*fields)[0], &std::pair<std::string_view, Set>::first)
               : kSets.end();
    const auto msb = fields ? Number((*fields)[1]) : std::nullopt;
    const auto program = fields ? Number((*fields)[2]) : std::nullopt;
    const auto note = fields ? Number((*fields)[4]) : std::nullopt;
    if (set == kSets.end() || !msb || !program || !note || (*fields)[5].empty()) {
        throw VoiceFileError(texts::kDrumNotesFault, number);
    }
    kits_[{set->second, *msb, *program}][*note] = (*fields)[5];
}

DrumNotes::KitKey DrumNotes::KeyFor(InstrumentId instrument, VoiceNumbers numbers) {
    if (HasXgSet(instrument)) {
        return {Set::Xg, numbers.msb, numbers.program};
    }
    if (std::ranges::find(kGs, instrument) != kGs.end()) {
        return {Set::Gs, 0, numbers.program};
    }
    return {Set::Gm, 0, numbers.program};
}

KitNotes DrumNotes::NotesOf(InstrumentId instrument, VoiceNumbers numbers) const {
    const KitKey key = KeyFor(instrument, numbers);
    if (const auto kit = kits_.find(key); kit != kits_.end()) {
        return {kit->second, true};
    }
    const auto common = kits_.find({Set::Gm, 0, 0});
    const bool isEffects = numbers.msb == song::kXgEffectKitBank;
    return isEffects || common == kits_.end() ? KitNotes() : KitNotes{common->second, false};
}

} // namespace tracksmith::instruments
