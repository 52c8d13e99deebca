#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "base/text.h"
#include <QString>

namespace tracksmith::forms {

/// UTF-8 text as Qt's string.
QString ToQString(std::string_view utf8);

/// The wording of `text` for `language`.
QString InLanguage(const Text& text, Language language);

/// A file's path as text for a dialog, a setting or a label.
QString PathToQString(const std::filesystem::path& path);

/// The path that a dialog, a setting or a dropped file names.
std::filesystem::path PathFromQString(const QString& text);

/// A file's path for display: control characters replaced, never cut.
QString ShownPath(const std::filesystem::path& path);

/// The last component of a file's path for display.
QString ShownFileName(const std::filesystem::path& path);

/// `text` for a menu: an ampersand stays one instead of marking a key.
QString MenuText(QString text);

/// The text of a menu entry without its marks: for names and hints.
QString PlainMenuText(QString text);

/// A number with the language's thousands separators.
QString NumberText(std::int64_t number, Language language);

} // namespace tracksmith::forms
