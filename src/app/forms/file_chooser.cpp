#include "app/forms/file_chooser.h"

#include <QFileDialog>

#include "app/forms/qt_text.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

std::optional<std::filesystem::path> Run(QFileDialog& dialog) {
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return PathFromQString(dialog.selectedFiles().constFirst());
}

QString Filters(Language language) {
    return InLanguage(texts::kMidiFiles, language) +
           QStringLiteral(" (*.mid *.MID *.midi *.MIDI *.kar *.KAR *.smf *.SMF);;") +
           InLanguage(texts::kAllFiles, language) + QStringLiteral(" (*)");
}

} // namespace

std::optional<std::filesystem::path> FileChooser::ChooseOpen(QWidget* window, Language language,
                                                             const std::filesystem::path& folder) {
    QFileDialog dialog(window, InLanguage(texts::kOpenTitle, language), PathToQString(folder),
                       Filters(language));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Run(dialog);
}

std::optional<std::filesystem::path> FileChooser::ChooseSave(
    QWidget* window, Language language, const std::filesystem::path& proposal) {
    QFileDialog dialog(window, InLanguage(texts::kSaveTitle, language),
                       PathToQString(proposal.parent_path()), Filters(language));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setDefaultSuffix(QStringLiteral("mid"));
    dialog.selectFile(PathToQString(proposal.filename()));
    return Run(dialog);
}

std::optional<std::filesystem::path> FileChooser::ChooseSoundfont(
    QWidget* window, Language language, const std::filesystem::path& folder) {
    QFileDialog dialog(window, InLanguage(texts::kSoundfont, language), PathToQString(folder),
                       InLanguage(texts::kSoundfontFiles, language) +
                           QStringLiteral(" (*.sf2 *.SF2 *.sf3 *.SF3);;") +
                           InLanguage(texts::kAllFiles, language) + QStringLiteral(" (*)"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Run(dialog);
}

} // namespace tracksmith::forms
