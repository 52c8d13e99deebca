#include "app/cli/info_text.h"

#include <algorithm>
#include <ostream>

#include "app/cli/columns.h"
#include "app/cli/texts.h"
#include "song/song_position.h"

namespace tracksmith::cli {
namespace {

constexpr std::size_t kLabelWidth = 15;
constexpr std::size_t kNumberWidth = 9;
constexpr std::size_t kChannelWidth = 9;

/// One description on its way to the stream.
class InfoWriter {
public:
    InfoWriter(std::ostream& out, const app::SongDescription& song, Language language, bool all)
        : out_(out), song_(song), language_(language), all_(all) {}

    void WriteHead() {
        Labelled(texts::kName, song_.title);
        std::string format = std::to_string(song_.format);
        if (song_.format != song_.fileFormat) {
            format += texts::InFile(language_, song_.fileFormat);
        }
        Labelled(texts::kFormat, format);
        Labelled(texts::kDivision, texts::TicksPerQuarter(language_, song_.division));
        Labelled(texts::kLength,
                 song_.lengthPosition + "   " + song::ClockText(song_.lengthMs, true));
        Labelled(texts::kEvents, std::to_string(song_.events));
        Labelled(texts::kNotes, std::to_string(song_.notes));
        Labelled(texts::kSysex, std::to_string(song_.sysex));
        Labelled(texts::kFamilies, Families());
        Labelled(texts::kLyrics, std::to_string(song_.lyrics));
        Labelled(texts::kKeySignatures, std::to_string(song_.keySignatures));
    }

    void WriteTimeMap() {
        WriteList(texts::kTempo, song_.tempos, [this](const auto& line) {
            return Place(line) + std::to_string(line.bpm) + " BPM";
        });
        WriteList(texts::kTimeSignature, song_.timeSignatures, [this](const auto& line) {
            return Place(line) + std::to_string(line.numerator) + "/" +
                   std::to_string(line.denominator);
        });
    }

    void WriteTracks() {
        out_ << "  " << Left(Say(texts::kTracks), kLabelWidth) << Right("#", 5)
             << Right(Say(texts::kChannel), kChannelWidth)
             << Right(Say(texts::kEvents), kNumberWidth + 2)
             << Right(Say(texts::kNotes), kNumberWidth) << "  " << Say(texts::kName) << "\n";
        std::size_t number = 0;
        for (const auto& track : song_.tracks) {
            out_ << std::string(2 + kLabelWidth, ' ') << Right(std::to_string(++number), 5)
                 << Right(ChannelText(track.channel), kChannelWidth)
                 << Right(std::to_string(track.events), kNumberWidth + 2)
                 << Right(std::to_string(track.notes), kNumberWidth) << "  " << track.name
                 << (track.ignored ? Say(texts::kIgnored) : std::string()) << "\n";
        }
    }

    void WriteChannels(std::span<const instruments::NamedVoice> voices) {
        if (song_.channels.empty()) {
            return;
        }
        out_ << "  " << Left(Say(texts::kChannels), kLabelWidth) << Right("#", 5)
             << Right(Say(texts::kProgram), kChannelWidth)
             << Right(Say(texts::kBank), kNumberWidth + 2)
             << Right(Say(texts::kNotes), kNumberWidth) << "  " << Say(texts::kVoice) << "\n";
        std::size_t index = 0;
        for (const auto& line : song_.channels) {
            out_ << std::string(2 + kLabelWidth, ' ') << Right(ChannelText(line.channel), 5)
                 << Right(line.program ? std::to_string(*line.program + 1) : "-", kChannelWidth)
                 << Right(BankText(line), kNumberWidth + 2)
                 << Right(std::to_string(line.notes), kNumberWidth) << "  "
                 << VoiceText(voices[index++]) << "\n";
        }
    }

    void WriteChanges() {
        if (song_.changes.Kinds() == 0) {
            Labelled(texts::kChanges, Say(texts::kNone));
            return;
        }
        std::string label = Say(texts::kChanges);
        for (std::size_t i = 0; i < song::kLoadChangeCount; ++i) {
            const auto change = static_cast<song::LoadChange>(i);
            if (song_.changes[change] != 0) {
                Row(label, Right(std::to_string(song_.changes[change]), 5) + "  " +
                               Say(song::LoadChangeText(change)));
                label.clear();
            }
        }
    }

private:
    std::string Say(const Text& text) const { return std::string(text.In(language_)); }

    std::string Families() const {
        std::string names;
        for (const instruments::SysexFamily family : song_.families) {
            names.append(names.empty() ? "" : ", ");
            names.append(instruments::FamilyName(family).In(language_));
        }
        return names.empty() ? "-" : names;
    }

    void Row(const std::string& label, const std::string& value) {
        out_ << "  " << Left(label, kLabelWidth) << value << "\n";
    }

    void Labelled(const Text& label, const std::string& value) { Row(Say(label), value); }

    template <class Line>
    std::string Place(const Line& line) const {
        return line.position + Right(song::ClockText(line.timeMs), 9) + "   ";
    }

    template <class Line, class Format>
    void WriteList(const Text& label, const std::vector<Line>& lines, Format format) {
        const std::size_t shown = all_ ? lines.size() : std::min(lines.size(), kShownChanges);
        for (std::size_t i = 0; i < shown; ++i) {
            Row(i == 0 ? Say(label) : std::string(), format(lines[i]));
        }
        if (shown < lines.size()) {
            Row({}, texts::AndMore(language_, lines.size() - shown));
        }
    }

    static std::string ChannelText(std::uint8_t channel) {
        return channel < song::kMidiChannels ? std::to_string(channel + 1) : "-";
    }

    // "≈" before a name that stands at another bank only.
    static std::string VoiceText(const instruments::NamedVoice& voice) {
        const bool similar = voice.match == instruments::VoiceMatch::Similar;
        return (similar && !voice.name.empty() ? "≈ " : "") + voice.name;
    }

    static std::string BankText(const app::SongDescription::ChannelLine& line) {
        const auto number = [](const std::optional<std::uint8_t>& value) {
            return value ? std::to_string(*value) : std::string("-");
        };
        return number(line.bankMsb) + "/" + number(line.bankLsb);
    }

    std::ostream& out_;
    const app::SongDescription& song_;
    Language language_;
    bool all_;
};

} // namespace

void WriteInfo(std::ostream& out, const std::string& file, const app::SongDescription& song,
               std::span<const instruments::NamedVoice> voices, Language language, bool all) {
    out << file << "\n";
    InfoWriter writer(out, song, language, all);
    writer.WriteHead();
    writer.WriteTimeMap();
    writer.WriteTracks();
    writer.WriteChannels(voices);
    writer.WriteChanges();
}

} // namespace tracksmith::cli
