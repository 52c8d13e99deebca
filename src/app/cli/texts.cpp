#include "app/cli/texts.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "base/system_reason.h"

#include "song/song_position.h"

namespace tracksmith::cli::texts {
namespace {

constexpr Text kInFile{De{" (Datei: "}, En{" (file: "}};
constexpr Text kTicks{De{" Ticks je Viertelnote"}, En{" ticks per quarter note"}};
constexpr Text kAndBefore{De{"… und "}, En{"… and "}};
constexpr Text kAndBehind{De{" weitere (--all zeigt alle)"}, En{" more (--all shows them)"}};
constexpr Text kFiles{De{" Dateien: "}, En{" files: "}};
constexpr Text kDone{De{" erledigt, "}, En{" done, "}};
constexpr Text kSkipped{De{" waren fertig, "}, En{" were done before, "}};
constexpr Text kFailed{De{" fehlgeschlagen"}, En{" failed"}};
constexpr Text kPeak{De{", Spitze "}, En{", peak "}};
constexpr Text kLimited{De{" Samples begrenzt"}, En{" samples limited"}};

constexpr Text kNoInputFits{De{"Kein MIDI-Eingang heißt so: "}, En{"No MIDI input is called "}};
constexpr Text kInputsFit{De{"Mehrere MIDI-Eingänge passen zu "}, En{"Several MIDI inputs fit "}};
constexpr Text kNoOutputFits{De{"Kein MIDI-Ausgang heißt so: "}, En{"No MIDI output is called "}};
constexpr Text kNoInstrumentFits{De{"Kein Instrument heißt so: "},
                                 En{"No instrument is called so: "}};
constexpr Text kInstrumentsFit{De{"Mehrere Instrumente heißen so: "},
                               En{"Several instruments are called so: "}};
constexpr Text kOutputsFit{De{"Mehrere MIDI-Ausgänge passen zu "}, En{"Several MIDI outputs fit "}};
constexpr Text kThereAre{De{". Vorhanden: "}, En{". There are: "}};

} // namespace

std::string InFile(Language language, int fileFormat) {
    return std::string(kInFile.In(language)) + std::to_string(fileFormat) + ")";
}

std::string TicksPerQuarter(Language language, int division) {
    return std::to_string(division).append(kTicks.In(language));
}

std::string AndMore(Language language, std::size_t number) {
    return std::string(kAndBefore.In(language))
        .append(std::to_string(number))
        .append(kAndBehind.In(language));
}

std::string LoadableWith(Language language, std::string_view name) {
    static constexpr Text kWith{De{"Mit "}, En{"With "}};
    static constexpr Text kLoadable{De{" lässt sie sich laden."}, En{" it can be loaded."}};
    return std::string(kWith.In(language)).append(name).append(kLoadable.In(language));
}

std::string FolderNotRead(Language language, const std::error_code& error) {
    static constexpr Text kNotRead{De{"Der Ordner lässt sich nicht lesen. "},
                                   En{"The folder cannot be read. "}};
    return std::string(kNotRead.In(language)) + SystemReason(error, language);
}

std::string Summary(Language language, std::size_t total, std::size_t failed, std::size_t skipped) {
    std::ostringstream text;
    text << total << kFiles.In(language) << total - failed - skipped << kDone.In(language);
    if (skipped > 0) {
        text << skipped << kSkipped.In(language);
    }
    text << failed << kFailed.In(language);
    return text.str();
}

std::string RevoicingCounts(Language language, std::size_t changed, std::size_t all,
                            std::size_t withoutBank, std::size_t sharingBank) {
    const bool german = language == Language::German;
    std::ostringstream text;
    text << changed << (german ? " von " : " of ") << all
         << (german ? " Programmwechseln ersetzt" : " program changes replaced");
    if (withoutBank > 0) {
        text << "; " << withoutBank << (german ? " ohne Bankwahl" : " without bank select");
    }
    if (sharingBank > 0) {
        text << "; " << sharingBank
             << (german ? " mit der Bankwahl eines früheren"
                        : " with an earlier one's bank select");
    }
    if (withoutBank + sharingBank > 0) {
        text << " (--add-banks)";
    }
    return text.str();
}

std::string FindingCounts(Language language, const std::array<std::int64_t, 3>& counts) {
    struct Words {
        Text one;
        Text several;
    };
    static constexpr std::array<Words, 3> kWords{
        {{Text{De{" Fehler"}, En{" error"}}, Text{De{" Fehler"}, En{" errors"}}},
         {Text{De{" Warnung"}, En{" warning"}}, Text{De{" Warnungen"}, En{" warnings"}}},
         {Text{De{" Hinweis"}, En{" hint"}}, Text{De{" Hinweise"}, En{" hints"}}}}};
    static constexpr Text kNothing{De{"nichts gefunden"}, En{"nothing found"}};
    std::string text;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (counts.at(i) > 0) {
            const Words& words = kWords.at(i);
            text += (text.empty() ? "" : ", ") + std::to_string(counts.at(i));
            text += (counts.at(i) == 1 ? words.one : words.several).In(language);
        }
    }
    return text.empty() ? std::string(kNothing.In(language)) : text;
}

std::string Rendered(Language language, std::string_view file, std::int64_t lengthMs, double peakDb,
                     std::int64_t limitedSamples) {
    std::ostringstream text;
    text << file << " (" << song::ClockText(lengthMs);
    if (std::isfinite(peakDb)) {
        text.setf(std::ios::fixed);
        text.precision(1);
        text << kPeak.In(language) << peakDb << " dBFS";
    }
    if (limitedSamples > 0) {
        text << ", " << limitedSamples << kLimited.In(language);
    }
    text << ")";
    return text.str();
}

std::string NotOnePort(Language language, bool input, std::string_view name, bool several,
                       std::span<const std::string> ports) {
    std::ostringstream text;
    const Text& fitting = input ? kInputsFit : kOutputsFit;
    const Text& none = input ? kNoInputFits : kNoOutputFits;
    text << (several ? fitting : none).In(language) << name;
    const char* between = "";
    text << (ports.empty() ? std::string_view() : kThereAre.In(language));
    for (const std::string& port : ports) {
        text << between << port;
        between = ", ";
    }
    return text.str();
}

std::string NotOneInstrument(Language language, std::string_view name,
                             std::span<const std::string> matches) {
    constexpr std::size_t kMostShown = 8;
    std::ostringstream text;
    text << (matches.empty() ? kNoInstrumentFits : kInstrumentsFit).In(language) << name;
    for (std::size_t i = 0; i < std::min(matches.size(), kMostShown); ++i) {
        text << (i == 0 ? ": " : ", ") << matches[i];
    }
    text << (matches.size() > kMostShown ? ", …" : "");
    return text.str();
}

std::string RangeDone(Language language, std::int64_t measures, std::int64_t notes) {
    static constexpr Text kMeasures{De{"Takte: "}, En{"Measures: "}};
    static constexpr Text kNotesWord{De{", Noten: "}, En{", notes: "}};
    return std::string(kMeasures.In(language)) + std::to_string(measures) +
           std::string(kNotesWord.In(language)) + std::to_string(notes);
}

std::string SeamsDone(Language language, std::int64_t ended, std::int64_t begun,
                      std::int64_t carried) {
    static constexpr Text kEnded{De{"An der Nahtstelle beendete Noten: "},
                                 En{"At the seam notes end: "}};
    static constexpr Text kBegun{De{", neu begonnene: "}, En{", begin again: "}};
    static constexpr Text kCarried{De{", übernommene Einstellungen: "},
                                   En{", settings carried over: "}};
    return std::string(kEnded.In(language)) + std::to_string(ended) +
           std::string(kBegun.In(language)) + std::to_string(begun) +
           std::string(kCarried.In(language)) + std::to_string(carried);
}

std::string MessagesGone(Language language, std::int64_t messages) {
    static constexpr Text kGone{De{"Mit dem Bereich entfernte Meldungen an Instrumente: "},
                                En{"Messages to instruments that went with the range: "}};
    return std::string(kGone.In(language)) + std::to_string(messages);
}

std::string NoSuchChannel(Language language, int channel) {
    static constexpr Text kNothing{De{"Der Song enthält nichts auf Kanal "},
                                   En{"The song has nothing on channel "}};
    return std::string(kNothing.In(language)) + std::to_string(channel) + ".";
}

std::string NoEventToSet(Language language, std::span<const std::string> options) {
    static constexpr Text kNoEvent{De{"Der Song enthält auf diesem Kanal kein Ereignis für "},
                                   En{"On this channel the song has no event for "}};
    static constexpr Text kWayOn{De{" (--insert setzt eines ein)"}, En{" (--insert makes one)"}};
    std::string text(kNoEvent.In(language));
    for (std::size_t i = 0; i < options.size(); ++i) {
        text += (i == 0 ? "" : ", ") + options[i];
    }
    return text.append(kWayOn.In(language)).append(".");
}

std::string NotOneVoice(Language language, std::string_view name,
                        std::span<const std::string> matches) {
    static constexpr Text kNoVoiceFits{De{"Kein Klang passt zu "}, En{"No voice matches "}};
    static constexpr Text kSeveral{De{"Mehrere Klänge passen zu "}, En{"Several voices match "}};
    std::string text((matches.empty() ? kNoVoiceFits : kSeveral).In(language));
    text += name;
    for (std::size_t i = 0; i < matches.size(); ++i) {
        text += (i == 0 ? ": " : ", ") + matches[i];
    }
    return text;
}

std::string NamesOf(Language language, std::string_view set) {
    return language == Language::German ? std::string("Namen von ").append(set)
                                        : std::string(set).append(" names");
}

std::string VoiceCounts(Language language, std::size_t own, std::size_t inherited) {
    static constexpr Text kInherited{De{" geerbt"}, En{" inherited"}};
    static constexpr Text kOwnVoices{De{" eigene"}, En{" own"}};
    std::ostringstream text;
    text << own << kOwnVoices.In(language);
    if (inherited > 0) {
        text << " + " << inherited << kInherited.In(language);
    }
    return text.str();
}

std::string VoicesImported(Language language, std::string_view model, std::size_t voices,
                           std::size_t leftOut) {
    static constexpr Text kTaken{De{" Klänge übernommen"}, En{" voices taken"}};
    static constexpr Text kLeftOut{De{" unvollständige weggelassen"}, En{" incomplete left out"}};
    std::ostringstream text;
    text << model << ": " << voices << kTaken.In(language);
    if (leftOut > 0) {
        text << ", " << leftOut << kLeftOut.In(language);
    }
    return text.str();
}

} // namespace tracksmith::cli::texts
