#include "base/forms/dialog_frame.h"

#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tracksmith::forms {

QDialog* NewDialog(QWidget* window, const char* objectName, const QString& title) {
    auto* dialog = new QDialog(window);
    dialog->setObjectName(QLatin1String(objectName));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    AddColumn(*dialog);
    return dialog;
}

void AddColumn(QWidget& page) {
    auto* column = new QVBoxLayout(&page);
    column->setContentsMargins(Gap() * 2, Gap() * 2, Gap() * 2, Gap() * 2);
    column->setSpacing(Gap());
}

QPushButton* NewButton(const char* objectName, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false);
    return button;
}

void AddCloseButton(QDialog& dialog, Language language) {
    static constexpr Text kClose{De{"&Schließen"}, En{"&Close"}};
    auto* close = new QPushButton(InLanguage(kClose, language));
    close->setObjectName(QStringLiteral("Btn_Close"));
    close->setDefault(true);
    QObject::connect(close, &QPushButton::clicked, &dialog, &QDialog::accept);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(close);
    static_cast<QVBoxLayout*>(dialog.layout())->addLayout(row);
}

void AddLine(QDialog& dialog, const char* objectName, const QString& text, double size) {
    QLabel* label = NewLabel(objectName, &dialog);
    label->setText(text);
    label->setFont(ScaledFont(label->font(), size));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    dialog.layout()->addWidget(label);
}

} // namespace tracksmith::forms
