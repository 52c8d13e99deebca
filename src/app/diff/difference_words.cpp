#include "app/diff/difference_words.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <span>
#include <vector>

#include "base/display_text.h"

#include "app/diff/texts.h"
#include "instruments/sysex/describe_sysex.h"
#include "song/control_names.h"
#include "song/midi_numbers.h"
#include "song/song_position.h"

namespace tracksmith::diff {
namespace {

std::string With(const Text& text, Language language, const std::string& first,
                 const std::string& second = {}) {
    std::string filled(text.In(language));
    for (const auto& [mark, value] : {std::pair{"%1", &first}, std::pair{"%2", &second}}) {
        if (const std::size_t at = filled.find(mark); at != std::string::npos) {
            filled.replace(at, 2, *value);
        }
    }
    return filled;
}

std::string Signed(std::int64_t value) {
    return (value > 0 ? "+" : "") + std::to_string(value);
}

std::optional<std::uint8_t> PartOf(std::int64_t voice, unsigned shift) {
    const auto byte = static_cast<std::uint8_t>(static_cast<std::uint64_t>(voice) >> shift);
    return byte == 0xFF ? std::nullopt : std::optional(byte);
}

std::string VoiceText(std::uint8_t channel, std::int64_t voice, const Wording& wording) {
    const auto msb = PartOf(voice, 16);
    const auto lsb = PartOf(voice, 8);
    const auto program = PartOf(voice, 0);
    const auto number = [](std::optional<std::uint8_t> part, int add) {
        return part ? std::to_string(*part + add) : std::string("?");
    };
    const std::string numbers = number(msb, 0) + "·" + number(lsb, 0) + "·" + number(program, 1);
    const std::string name =
        wording.voiceName && program ? wording.voiceName(channel, msb, lsb, *program) : "";
    return name.empty() ? numbers : name + " (" + numbers + ")";
}

std::string ControllerText(std::uint16_t control, Language language) {
    return control >= kPolyPressure
               ? With(texts::kKeyPressure, language, std::to_string(control - kPolyPressure))
               : song::ControlName(control, language);
}

std::string BpmText(std::int64_t microseconds) {
    constexpr double kMinute = 60'000'000;
    constexpr std::int64_t kUsual = 500'000;
    std::array<char, 32> text{};
    const auto length =
        std::snprintf(text.data(), text.size(), "%.2f",
                      kMinute / static_cast<double>(microseconds > 0 ? microseconds : kUsual));
    std::string bpm(text.data(), static_cast<std::size_t>(length));
    bpm.erase(bpm.find_last_not_of('0') + 1);
    return bpm.ends_with('.') ? bpm.substr(0, bpm.size() - 1) : bpm;
}

std::string TempoText(const Difference& row, std::int64_t value, const song::TimeMap& map,
                      Language language) {
    const auto bytes = static_cast<std::uint32_t>(value);
    switch (row.control) {
        case song::kMetaTempo:
            return With(texts::kTempo, language, BpmText(value));
        case song::kMetaTimeSignature:
            return With(texts::kTimeSignature, language,
                        std::to_string(bytes >> 24U) + "/" +
                            std::to_string(std::uint64_t{1} << ((bytes >> 16U) & 0x1FU)));
        case song::kMetaKeySignature:
            return With(texts::kKeySignature, language,
                        Signed(static_cast<std::int8_t>(bytes >> 24U)) + "/" +
                            std::to_string((bytes >> 16U) & 0xFFU));
        case kSongLength:
            return With(texts::kSongEnd, language,
                        song::SongPositionToMTC(map, static_cast<std::int32_t>(value)));
        default:
            return With(texts::kTicks, language, std::to_string(value));
    }
}

std::string MessageText(const Difference& row, const std::string& bytes, Language language) {
    std::vector<std::uint8_t> message(bytes.size() + 1);
    message[0] = static_cast<std::uint8_t>(row.control);
    std::ranges::copy(bytes, message.begin() + 1);
    return instruments::DescribeSysex(message).In(language);
}

/// Writes what one row was and is.
class Writer {
public:
    Writer(const Difference& row, const song::TimeMap& before, const song::TimeMap& after,
           const Wording& wording)
        : row_(row),
          before_(before),
          after_(after),
          wording_(wording),
          language_(wording.language) {}

    DifferenceWords Write() {
        words_.kind = texts::kKindWords.at(static_cast<std::size_t>(row_.kind)).one.In(language_);
        words_.position = song::SongPositionToMTC(after_, row_.tickAfter);
        if (row_.change >= Change::Cut) {
            WriteStretch();
        } else if (row_.kind == Kind::Note) {
            WriteNotes();
        } else {
            WriteValues();
        }
        words_.doneBy = wording_.doneBy ? wording_.doneBy(row_) : std::string();
        return words_;
    }

private:
    std::string Say(const Text& text) const { return std::string(text.In(language_)); }
    static std::string At(const song::TimeMap& map, std::int32_t tick) {
        return song::SongPositionToMTC(map, tick);
    }

    void WriteStretch() {
        const bool copied = row_.change == Change::Copied;
        const std::int32_t start = copied ? row_.source : row_.tickBefore;
        const std::int32_t end = start + row_.length;
        words_.kind = Say(texts::kWholeSong);
        if (row_.change == Change::Inserted) {
            words_.before = Say(texts::kNothing);
            words_.after =
                With(texts::kInserted, language_, At(after_, row_.tickAfter + row_.length));
            return;
        }
        words_.before = With(texts::kStretch, language_, At(before_, start), At(before_, end));
        words_.after =
            copied ? With(texts::kCopiedTo, language_, words_.position) : Say(texts::kCut);
    }

    void WriteNotes() {
        const std::string notes = row_.count == 1
                                      ? Say(texts::kOneNote)
                                      : With(texts::kNotes, language_, std::to_string(row_.count));
        const std::string none = Say(texts::kNothing);
        words_.before = row_.change == Change::Added ? none : notes;
        switch (row_.change) {
            case Change::Added:
                words_.after = notes;
                break;
            case Change::Removed:
                words_.after = none;
                break;
            case Change::EndsMoved:
                words_.after = Say(texts::kOtherEnds);
                break;
            case Change::Transposed:
                words_.after = With(texts::kTransposed, language_, Signed(row_.after));
                break;
            default:
                WriteVelocities(notes);
        }
    }
    void WriteVelocities(const std::string& notes) {
        const Text& text = row_.control == 0 ? texts::kVelocity : texts::kRelease;
        words_.before = notes + ": " + With(text, language_, std::to_string(row_.before));
        words_.after = Summed(With(text, language_, std::to_string(row_.after)));
    }

    void WriteValues() {
        const std::string name =
            row_.kind == Kind::Controller ? ControllerText(row_.control, language_) + " " : "";
        const std::string old = Times(name + Value(row_.before, row_.bytesBefore, before_));
        const std::string now = name + Value(row_.after, row_.bytesAfter, after_);
        const bool voice = row_.kind == Kind::Voice;
        const std::string none = Say(texts::kNothing);
        words_.before = row_.change == Change::Added && !voice ? none : old;
        switch (row_.change) {
            case Change::Added:
                words_.after = voice ? Say(texts::kAlsoHere) : Times(now);
                break;
            case Change::Removed:
                words_.after = voice ? Say(texts::kNotHere) : none;
                break;
            case Change::Moved:
                words_.after = With(texts::kMoved, language_, At(before_, row_.tickBefore));
                break;
            default:
                words_.after = Summed(now);
        }
    }

    std::string Times(const std::string& value) const {
        return row_.count > 1 ? With(texts::kTimes, language_, value, std::to_string(row_.count))
                              : value;
    }

    std::string Value(std::int64_t value, const std::string& bytes,
                      const song::TimeMap& map) const {
        switch (row_.kind) {
            case Kind::Voice:
                return VoiceText(row_.channel, value, wording_);
            case Kind::Tempo:
                return TempoText(row_, value, map, language_);
            case Kind::Message:
                return MessageText(row_, bytes, language_);
            case Kind::Text:
                return "\"" + DisplayText(bytes) + "\"";
            default:
                return row_.control == kBend ? Signed(value - song::kBendCentre)
                                             : std::to_string(value);
        }
    }

    // Of several changes all values are told when they moved by the same distance.
    std::string Summed(const std::string& first) const {
        const bool numbers = row_.kind == Kind::Controller || row_.kind == Kind::Note;
        if (row_.count == 1 || row_.kind == Kind::Voice) {
            return first;
        }
        return numbers && row_.sameDistance
                   ? With(texts::kAllBy, language_, Signed(row_.after - row_.before))
                   : With(texts::kAndMore, language_, first);
    }

    const Difference& row_;
    const song::TimeMap& before_;
    const song::TimeMap& after_;
    const Wording& wording_;
    Language language_;
    DifferenceWords words_;
};

} // namespace

DifferenceWords WordsOf(const Difference& difference, const song::TimeMap& before,
                        const song::TimeMap& after, const Wording& wording) {
    return Writer(difference, before, after, wording).Write();
}

std::string ChannelWords(std::uint8_t channel, Language language) {
    return channel == kWholeSong ? std::string(texts::kWholeSong.In(language))
                                 : With(texts::kChannel, language, std::to_string(channel + 1));
}

std::string_view KindWord(Kind kind, Language language) {
    return texts::kKindWords.at(static_cast<std::size_t>(kind)).several.In(language);
}

std::string_view KindName(Kind kind) {
    return texts::kKindWords.at(static_cast<std::size_t>(kind)).name;
}

std::string_view ChangeName(Change change) {
    return texts::kChangeNames.at(static_cast<std::size_t>(change));
}

std::string DifferencesText(const Differences& differences, const song::TimeMap& before,
                            const song::TimeMap& after, const Wording& wording) {
    const Language language = wording.language;
    if (differences.Same()) {
        return std::string(texts::kSame.In(language)) + "\n";
    }
    std::string text;
    int channel = -1;
    for (const Difference& row : differences.rows) {
        if (channel != row.channel) {
            channel = row.channel;
            text += ChannelWords(row.channel, language) + "\n";
        }
        const DifferenceWords words = WordsOf(row, before, after, wording);
        text += "  " + words.position + "  " + words.kind + ": " + words.before + " -> " +
                words.after + (words.doneBy.empty() ? "" : " [" + words.doneBy + "]") + "\n";
    }
    return text;
}

} // namespace tracksmith::diff
