#pragma once

#include <filesystem>
#include <optional>

#include "base/text.h"
#include <QString>
#include <QWidget>

namespace tracksmith::forms {

/// What a file is for: its filter and the dialog's title follow from it.
enum class FileKind { Song, Soundfont, Voices, RevoicerTable, ChangesText, ChangesJson };

/// Asks the user for a file. A seam: tests answer without a dialog.
class FileChooser {
public:
    virtual ~FileChooser() = default;

    /// A file to open, looked for in `folder` first; empty when the user gave up.
    virtual std::optional<std::filesystem::path> ChooseOpen(QWidget* window, Language language,
                                                            FileKind kind,
                                                            const std::filesystem::path& folder);

    /// A file to save to, with `proposal` filled in; empty when the user gave up. Does not ask
    /// whether an existing file may be overwritten.
    virtual std::optional<std::filesystem::path> ChooseSave(QWidget* window, Language language,
                                                            FileKind kind,
                                                            const std::filesystem::path& proposal);

    /// A folder, with `folder` shown first, in a dialog of this title; empty when the user gave up.
    virtual std::optional<std::filesystem::path> ChooseFolder(QWidget* window, const QString& title,
                                                              const std::filesystem::path& folder);
};

} // namespace tracksmith::forms
