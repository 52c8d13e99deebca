#include "editing/range_check.h"

#include <charconv>
#include <utility>

#include "editing/range_edits.h"
#include "editing/texts.h"

namespace tracksmith::editing {
namespace {

using Field = RangeReading::Field;

RangeReading Faulty(RangeReading reading, Field field, std::string fault) {
    reading.field = field;
    reading.fault = std::move(fault);
    return reading;
}

std::string LabelOf(const Transposing& transposing) {
    return transposing.label.empty() ? std::to_string(*transposing.channel + 1) : transposing.label;
}

} // namespace

RangeReading CheckDelete(const song::Song& song, const RangeWish& wish, Language language) {
    RangeReading reading = ReadRange(song, wish, language);
    if (reading.fault.empty() && !MayDelete(song, reading.range)) {
        return Faulty(std::move(reading), Field::From, std::string(texts::kLeadIn.In(language)));
    }
    return reading;
}

RangeReading CheckCopy(const song::Song& song, const RangeWish& wish, Language language) {
    RangeReading reading = ReadRange(song, wish, language);
    if (reading.fault.empty() && !HasRoomFor(song, reading.range)) {
        return Faulty(std::move(reading), Field::To, std::string(texts::kTooLong.In(language)));
    }
    return reading;
}

std::optional<int> SemitonesOf(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    int value = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && behind == end ? std::optional(value) : std::nullopt;
}

TransposeCheck CheckTranspose(const song::Song& song, const RangeWish& wish,
                              const Transposing& transposing, Language language) {
    const std::optional<int> semitones = SemitonesOf(transposing.semitones);
    if (!semitones) {
        return {Faulty({}, Field::Semitones, std::string(texts::kNoSemitones.In(language))), {}};
    }
    TransposeWish edit{{}, *semitones, {}, transposing.live, transposing.isMegaVoice};
    if (!transposing.channel) {
        edit.channels = MelodyChannels(song);
    } else if (ChannelsWithNotes(song)[*transposing.channel]) {
        edit.channels.set(*transposing.channel);
    } else {
        return {Faulty({}, Field::Channel, texts::CannotTranspose(language, LabelOf(transposing))),
                {}};
    }
    RangeReading reading = ReadRange(song, wish, language);
    edit.range = reading.range;
    return {std::move(reading), std::move(edit)};
}

} // namespace tracksmith::editing
