#include "app/texts.h"

#include <array>

#include "base/display_text.h"

namespace tracksmith::app::texts {
namespace {

constexpr Text kCreateFailed{De{"Fehler: Schreibvorgang der Datei \""},
                             En{"Error rewriting the midi file \""}};
constexpr std::string_view kCreateFailedEnd = "\" konnnte nicht eingeleitet werden!";
constexpr Text kIncomplete{De{"Beim Speichern der Datei \""}, En{"Error saving the midi file \""}};
constexpr Text kIncompleteWritten{De{"\" sind nur "}, En{"\"\nThere were only "}};
constexpr Text kIncompleteOf{De{" aus "}, En{" from "}};
constexpr Text kIncompleteEnd{De{" Bytes gespeichert"}, En{" bytes saved"}};
constexpr Text kOverwrite{De{"Wollen Sie die Datei \""},
                          En{"Do you really want to overwrite the midifile \""}};
constexpr std::string_view kOverwriteEnd = "\" überschreiben?";

struct PluralText {
    Text one;
    Text many;
};

// By KeptKind, behind the number.
constexpr auto kKept = std::to_array<PluralText>({
    {{De{" Note beginnt, bevor das Instrument bereit ist"},
      En{" note begins before the instrument is ready"}},
     {De{" Noten beginnen, bevor das Instrument bereit ist"},
      En{" notes begin before the instrument is ready"}}},
    {{De{" Einstellung konnte nicht zurückgesetzt werden"}, En{" setting could not be put back"}},
     {De{" Einstellungen konnten nicht zurückgesetzt werden"},
      En{" settings could not be put back"}}},
    {{De{" Note wechselt zwischen Schlagzeug und Melodie: Das Instrument kennt hier keinen Weg"},
      En{" note changes between drums and melody: the instrument knows no way here"}},
     {De{" Noten wechseln zwischen Schlagzeug und Melodie: Das Instrument kennt hier keinen Weg"},
      En{" notes change between drums and melody: the instrument knows no way here"}}},
    {{De{" Einstellung steht jetzt hinter dem Reset"}, En{" setting stands behind the reset now"}},
     {De{" Einstellungen stehen jetzt hinter dem Reset"},
      En{" settings stand behind the reset now"}}},
    {{De{" Einstellung wird hinter dem Reset wiederholt"},
      En{" setting is repeated behind the reset"}},
     {De{" Einstellungen werden hinter dem Reset wiederholt"},
      En{" settings are repeated behind the reset"}}},
    {{De{" Grundwert ersetzt einen entfernten Reset"},
      En{" basic value stands in for a removed reset"}},
     {De{" Grundwerte ersetzen einen entfernten Reset"},
      En{" basic values stand in for a removed reset"}}},
    {{De{" Kanal bleibt Schlagzeug oder Melodie wie bisher"},
      En{" channel stays drums or melody as before"}},
     {De{" Kanäle bleiben Schlagzeug oder Melodie wie bisher"},
      En{" channels stay drums or melody as before"}}},
    {{De{" Einrichtungsmeldung steht jetzt hinter dem Reset"},
      En{" set-up message stands behind the reset now"}},
     {De{" Einrichtungsmeldungen stehen jetzt hinter dem Reset"},
      En{" set-up messages stand behind the reset now"}}},
});
constexpr Text kOnChannel{De{" (Kanal "}, En{" (channel "}};
constexpr Text kOnChannels{De{" (Kanäle "}, En{" (channels "}};

std::string In(const Text& text, Language language) {
    return std::string(text.In(language));
}

} // namespace

std::string OpenFailed(Language language, std::string_view name) {
    return In(kOpenFailed, language) + ": \"" + DisplayPath(name) + "\"";
}

std::string CreateFailed(Language language, std::string_view name) {
    std::string text = In(kCreateFailed, language) + DisplayPath(name);
    return language == Language::German ? text.append(kCreateFailedEnd) : text;
}

std::string SavedIncompletely(Language language, std::string_view name, std::size_t written,
                              std::size_t size) {
    return In(kIncomplete, language) + DisplayPath(name) + In(kIncompleteWritten, language) +
           std::to_string(written) + In(kIncompleteOf, language) + std::to_string(size) +
           In(kIncompleteEnd, language);
}

std::string SaveFailed(Language language, std::string_view name) {
    return In(kSaveFailed, language) + "\"" + DisplayPath(name);
}

std::string OverwriteQuestion(Language language, std::string_view name) {
    std::string text = In(kOverwrite, language) + DisplayPath(name);
    return language == Language::German ? text.append(kOverwriteEnd) : text;
}

std::string ChannelName(Language language, int number) {
    static constexpr Text kChannel{De{"Kanal "}, En{"Channel "}};
    return In(kChannel, language) + std::to_string(number);
}

std::string PreparedFor(Language language, std::string_view instrument, std::string_view what) {
    static constexpr Text kPrepared{De{"Vorbereitet für "}, En{"Prepared for "}};
    static constexpr Text kNothing{De{"alles war schon da"}, En{"everything was there already"}};
    return In(kPrepared, language)
        .append(instrument)
        .append(": ")
        .append(what.empty() ? kNothing.In(language) : what);
}

std::string Kept(Language language, std::size_t kind, std::int64_t count,
                 const std::vector<int>& channels) {
    const PluralText& words = kKept.at(kind);
    std::string text = std::to_string(count) + In(count == 1 ? words.one : words.many, language);
    if (channels.empty()) {
        return text;
    }
    text += In(channels.size() == 1 ? kOnChannel : kOnChannels, language);
    for (const int channel : channels) {
        text += (channel == channels.front() ? "" : ", ") + std::to_string(channel);
    }
    return text + ")";
}

std::string AndMore(Language language, std::size_t number) {
    static constexpr Text kMore{De{" weitere"}, En{" more"}};
    return std::to_string(number) + In(kMore, language);
}

} // namespace tracksmith::app::texts
