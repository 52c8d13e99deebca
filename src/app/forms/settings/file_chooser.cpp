#include "app/forms/settings/file_chooser.h"

#include <array>

#include "base/forms/qt_text.h"
#include <QFileDialog>

#include "app/forms/changes/texts.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

std::optional<std::filesystem::path> Run(QFileDialog& dialog) {
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return PathFromQString(dialog.selectedFiles().constFirst());
}

struct KindSpec {
    Text openTitle;
    Text saveTitle;
    Text files;
    const char* patterns;
    const char* suffix;
};

// In the order of FileKind.
constexpr auto kKinds = std::to_array<KindSpec>({
    {texts::kOpenTitle, texts::kSaveTitle, texts::kMidiFiles,
     " (*.mid *.MID *.midi *.MIDI *.kar *.KAR *.smf *.SMF);;", "mid"},
    {texts::kSoundfont, texts::kSoundfont, texts::kSoundfontFiles, " (*.sf2 *.SF2 *.sf3 *.SF3);;",
     "sf2"},
    {texts::kImportVoicesTitle, texts::kExportVoicesTitle, texts::kVoiceFiles,
     " (*.midnam *.MIDNAM *.ins *.INS *.tsv *.TSV);;", "tsv"},
    {texts::kOpenRevoicerTable, texts::kSaveRevoicerTable, texts::kTableFiles,
     " (*.tsv *.TSV *.txt *.TXT);;", "tsv"},
    {changes_texts::kSaveTextTitle, changes_texts::kSaveTextTitle, changes_texts::kTextFiles,
     " (*.txt *.TXT);;", "txt"},
    {changes_texts::kSaveJsonTitle, changes_texts::kSaveJsonTitle, changes_texts::kJsonFiles,
     " (*.json *.JSON);;", "json"},
});

const KindSpec& SpecOf(FileKind kind) {
    return kKinds.at(static_cast<std::size_t>(kind));
}

QString Filters(FileKind kind, Language language) {
    return InLanguage(SpecOf(kind).files, language) + QLatin1String(SpecOf(kind).patterns) +
           InLanguage(texts::kAllFiles, language) + QStringLiteral(" (*)");
}

} // namespace

std::optional<std::filesystem::path> FileChooser::ChooseOpen(QWidget* window, Language language,
                                                             FileKind kind,
                                                             const std::filesystem::path& folder) {
    QFileDialog dialog(window, InLanguage(SpecOf(kind).openTitle, language), PathToQString(folder),
                       Filters(kind, language));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Run(dialog);
}

std::optional<std::filesystem::path> FileChooser::ChooseSave(
    QWidget* window, Language language, FileKind kind, const std::filesystem::path& proposal) {
    QFileDialog dialog(window, InLanguage(SpecOf(kind).saveTitle, language),
                       PathToQString(proposal.parent_path()), Filters(kind, language));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setDefaultSuffix(QLatin1String(SpecOf(kind).suffix));
    dialog.selectFile(PathToQString(proposal.filename()));
    return Run(dialog);
}

std::optional<std::filesystem::path> FileChooser::ChooseFolder(
    QWidget* window, const QString& title, const std::filesystem::path& folder) {
    QFileDialog dialog(window, title, PathToQString(folder));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return Run(dialog);
}

} // namespace tracksmith::forms
