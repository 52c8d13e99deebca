#include "app/texts.h"

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

std::string AndMore(Language language, std::size_t number) {
    static constexpr Text kMore{De{" weitere"}, En{" more"}};
    return std::to_string(number) + In(kMore, language);
}

} // namespace tracksmith::app::texts
