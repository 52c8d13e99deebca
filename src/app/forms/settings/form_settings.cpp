#include "app/forms/settings/form_settings.h"

#include <algorithm>
#include <system_error>

#include "base/forms/qt_text.h"
#include "base/system/file_io.h"
#include <QDir>
#include <QLocale>

namespace tracksmith::forms {
namespace {

constexpr const char* kLyricsEncodings = "LyricsEncodings";

} // namespace

Language FormSettings::ReadLanguage() {
    const std::string chosen = store_.ReadStrFromUserRegistry("Language", "");
    if (chosen.empty()) {
        const bool german = QLocale::system().language() == QLocale::German;
        return german ? Language::German : Language::English;
    }
    return chosen == "de" ? Language::German : Language::English;
}

void FormSettings::WriteLanguage(Language language) {
    store_.WriteStrToUserRegistry("Language", language == Language::German ? "de" : "en");
}

Theme FormSettings::ReadTheme() {
    const std::string chosen = store_.ReadStrFromUserRegistry("Theme", "dark");
    return chosen == "light" ? Theme::Light : chosen == "system" ? Theme::System : Theme::Dark;
}

void FormSettings::WriteTheme(Theme theme) {
    store_.WriteStrToUserRegistry("Theme", theme == Theme::Dark    ? "dark"
                                           : theme == Theme::Light ? "light"
                                                                   : "system");
}

int FormSettings::ReadTextSize() {
    return std::clamp(store_.ReadIntFromUserRegistry("TextSize", kSmallestText), kSmallestText,
                      kLargestText);
}

void FormSettings::WriteTextSize(int percent) {
    store_.WriteIntToUserRegistry("TextSize", percent);
}

QByteArray FormSettings::ReadGeometry() {
    const std::string stored = store_.ReadStrFromUserRegistry("Geometry", "");
    return QByteArray::fromBase64(QByteArray::fromStdString(stored));
}

void FormSettings::WriteGeometry(const QByteArray& geometry) {
    store_.WriteStrToUserRegistry("Geometry", geometry.toBase64().toStdString());
}

std::filesystem::path FormSettings::ReadLastFolder() {
    const std::string stored = store_.ReadStrFromUserRegistry("LastFolder", "");
    const std::filesystem::path folder = PathFromQString(ToQString(stored));
    std::error_code ignored;
    return std::filesystem::is_directory(folder, ignored) ? folder
                                                          : PathFromQString(QDir::homePath());
}

void FormSettings::WriteLastFolder(const std::filesystem::path& folder) {
    store_.WriteStrToUserRegistry("LastFolder", system::PathText(folder));
}

int FormSettings::ReadLyricsEncoding(const std::string& song) {
    return song.empty() ? 0 : store_.ReadIntFromUserRegistrySubdir(kLyricsEncodings, song, 0);
}

// What is chosen for no song but the likeliest needs no room.
void FormSettings::WriteLyricsEncoding(const std::string& song, int encoding) {
    if (song.empty()) {
        return;
    }
    if (encoding == 0) {
        store_.DeleteFromUserRegistrySubdir(kLyricsEncodings, song);
    } else {
        store_.WriteIntToUserRegistrySubdir(kLyricsEncodings, song, encoding);
    }
}

} // namespace tracksmith::forms
