#include "base/forms/qt_text.h"

#include "base/display_text.h"
#include "base/system/file_io.h"
#include <QLocale>

namespace tracksmith::forms {

QString ToQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString InLanguage(const Text& text, Language language) {
    return ToQString(text.In(language));
}

QString PathToQString(const std::filesystem::path& path) {
    return ToQString(system::PathText(path));
}

std::filesystem::path PathFromQString(const QString& text) {
    return {text.toStdU16String()};
}

QString ShownPath(const std::filesystem::path& path) {
    return ToQString(DisplayPath(system::PathText(path)));
}

QString ShownFileName(const std::filesystem::path& path) {
    return ShownPath(path.filename());
}

QString MenuText(QString text) {
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

QString PlainMenuText(QString text) {
    text.remove(QLatin1Char('&'));
    text.remove(QChar(0x2026)); // the ellipsis of an entry that asks for more
    return text;
}

QString NumberText(std::int64_t number, Language language) {
    const QLocale locale(language == Language::German ? QLocale::German : QLocale::English);
    return locale.toString(static_cast<qlonglong>(number));
}

} // namespace tracksmith::forms
