#pragma once

#include <filesystem>
#include <optional>

#include "base/text.h"
#include <QWidget>

namespace tracksmith::forms {

/// What a file is for: its filter and the dialog's title follow from it.
enum class FileKind { Song, Soundfont, Voices, RevoicerTable };

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
};

} // namespace tracksmith::forms
