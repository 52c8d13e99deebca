#include "app/forms/dialogs.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/forms/labels.h"
#include "app/forms/list_panel.h"
#include "app/forms/qt_text.h"
#include "app/forms/texts.h"
#include "app/forms/theme.h"

namespace tracksmith::forms {
namespace {

/// A dialog with a column of widgets and a button that closes it.
QDialog* NewDialog(QWidget* window, const char* objectName, const QString& title) {
    auto* dialog = new QDialog(window);
    dialog->setObjectName(QLatin1String(objectName));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    auto* column = new QVBoxLayout(dialog);
    column->setContentsMargins(Gap() * 2, Gap() * 2, Gap() * 2, Gap() * 2);
    column->setSpacing(Gap());
    return dialog;
}

void AddCloseButton(QDialog& dialog, Language language) {
    auto* close = new QPushButton(InLanguage(texts::kClose, language));
    close->setObjectName(QStringLiteral("Btn_Close"));
    close->setDefault(true);
    QObject::connect(close, &QPushButton::clicked, &dialog, &QDialog::accept);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(close);
    static_cast<QVBoxLayout*>(dialog.layout())->addLayout(row);
}

void AddLine(QDialog& dialog, const char* objectName, const QString& text, double size = 1) {
    QLabel* label = NewLabel(objectName, &dialog);
    label->setText(text);
    label->setFont(ScaledFont(label->font(), size));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    dialog.layout()->addWidget(label);
}

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

} // namespace

void ShowChangesDialog(QWidget* window, const song::LoadReport& report, Language language) {
    QDialog* dialog = NewDialog(window, "Dlg_Changes", InLanguage(texts::kChangesTitle, language));
    if (report.Kinds() == 0) {
        AddLine(*dialog, "Lbl_NothingChanged", InLanguage(texts::kNothingChanged, language));
    } else {
        auto* list = new ListPanel("Table_Changes", texts::kChangesTitle,
                                   {{texts::kChange}, {texts::kCount, true}}, 0);
        list->Retranslate(language);
        list->SetRows(ChangeRows(report, language));
        dialog->layout()->addWidget(list);
        AddLine(*dialog, "Lbl_Advice", InLanguage(texts::kChangesAdvice, language));
        dialog->resize(dialog->fontMetrics().averageCharWidth() * 90,
                       dialog->fontMetrics().height() * 22);
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
    AddCloseButton(*dialog, language);
    dialog->open();
}

} // namespace tracksmith::forms
