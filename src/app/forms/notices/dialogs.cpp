#include "app/forms/notices/dialogs.h"

#include "base/forms/dialog_frame.h"
#include "base/forms/list_panel.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/components.h"
#include "app/forms/texts.h"
#include "app/kept_words.h"
#include "app/preparation_words.h"

namespace tracksmith::forms {
namespace {

std::vector<Row> ChangeRows(const song::LoadReport& report, Language language) {
    std::vector<Row> rows;
    for (std::size_t i = 0; i < song::kLoadChangeCount; ++i) {
        const auto change = static_cast<song::LoadChange>(i);
        if (report[change] != 0) {
            Row row;
            row.cells = {InLanguage(song::LoadChangeText(change), language),
                         NumberText(report[change], language)};
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

void AddMessages(QDialog& dialog, const session::Workspace& workspace, Language language) {
    const auto& preparation = workspace.preparation;
    AddLine(dialog, "Lbl_Prepared", ToQString(app::PreparationLine(preparation, language)));
    QStringList kept;
    for (const std::string& line : app::KeptLines(preparation, language)) {
        kept << ToQString(line);
    }
    if (!kept.isEmpty()) {
        AddLine(dialog, "Lbl_Kept", kept.join(u'\n'));
    }
    if (preparation.notes.empty()) {
        return;
    }
    std::vector<Row> rows;
    for (const app::PreparationRow& note :
         app::PreparationRows(preparation, workspace.song, language)) {
        Row row;
        row.cells = {ToQString(note.what), ToQString(note.words), QString::number(note.track),
                     ToQString(note.position), ToQString(note.bytes)};
        rows.push_back(std::move(row));
    }
    auto* list = new ListPanel("Table_Messages", texts::kMessages,
                               {{texts::kWhatHappened},
                                {texts::kMessage},
                                {texts::kTrack, true},
                                {texts::kPlace, true},
                                {texts::kBytes}},
                               4);
    list->Retranslate(language);
    list->SetRows(std::move(rows));
    dialog.layout()->addWidget(list);
}

void AddChanges(QDialog& dialog, const song::LoadReport& report, Language language) {
    auto* list = new ListPanel("Table_Changes", texts::kChangesTitle,
                               {{texts::kChange}, {texts::kCount, true}}, 0);
    list->Retranslate(language);
    list->SetRows(ChangeRows(report, language));
    dialog.layout()->addWidget(list);
}

} // namespace

void ShowChangesDialog(QWidget* window, const session::Workspace& workspace, Language language) {
    QDialog* dialog = NewDialog(window, "Dlg_Changes", InLanguage(texts::kChangesTitle, language));
    const bool loading = workspace.loadReport.Kinds() > 0;
    if (workspace.preparation.prepared) {
        AddMessages(*dialog, workspace, language);
    }
    if (loading) {
        AddChanges(*dialog, workspace.loadReport, language);
    }
    if (loading || !workspace.preparation.notes.empty()) {
        AddLine(*dialog, "Lbl_Advice", InLanguage(texts::kChangesAdvice, language));
        dialog->resize(dialog->fontMetrics().averageCharWidth() * 130,
                       dialog->fontMetrics().height() * 26);
    } else {
        AddLine(*dialog, "Lbl_NothingChanged", InLanguage(texts::kNothingChanged, language));
    }
    AddCloseButton(*dialog, language);
    dialog->open();
}

void ShowAboutDialog(QWidget* window, Language language) {
    QDialog* dialog =
        NewDialog(window, "Dlg_About", InLanguage(texts::kAbout, language).remove(u'&'));
    AddLine(*dialog, "Lbl_Program", InLanguage(texts::kProgram, language), 1.8);
    AddLine(*dialog, "Lbl_Version", texts::VersionLine(QCoreApplication::applicationVersion()));
    AddLine(*dialog, "Lbl_AboutText", InLanguage(texts::kAboutText, language));
    AddLine(*dialog, "Lbl_Components",
            ToQString(app::ComponentLines(app::Program::Windows, language)));
    AddCloseButton(*dialog, language);
    dialog->open();
}

} // namespace tracksmith::forms
