#include "instruments/forms/instrument_chooser.h"

#include "base/forms/dialog_frame.h"
#include "base/forms/qt_text.h"
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "instruments/forms/texts.h"

namespace tracksmith::forms {

InstrumentChooser::InstrumentChooser(std::string_view current, const InstrumentList::Remark& remark,
                                     Language language, QWidget* parent)
    : QDialog(parent), list_(new InstrumentList("Tree_Instruments", remark, language)) {
    setObjectName(QStringLiteral("Dlg_Instrument"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(InLanguage(instrument_texts::kChooseInstrument, language));
    AddColumn(*this);
    layout()->addWidget(list_);
    auto* choose = new QPushButton(InLanguage(instrument_texts::kChoose, language));
    choose->setObjectName(QStringLiteral("Btn_OK"));
    choose->setDefault(true);
    auto* cancel = new QPushButton(InLanguage(instrument_texts::kCancel, language));
    cancel->setObjectName(QStringLiteral("Btn_Cancel"));
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(choose);
    row->addWidget(cancel);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    list_->SetInstrument(current);
    choose->setEnabled(list_->Instrument() != nullptr);
    connect(list_, &InstrumentList::InstrumentChanged, choose,
            [this, choose] { choose->setEnabled(list_->Instrument() != nullptr); });
    connect(list_, &InstrumentList::InstrumentAccepted, this, &InstrumentChooser::Accept);
    connect(choose, &QPushButton::clicked, this, &InstrumentChooser::Accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    list_->setFocus();
}

void InstrumentChooser::Accept() {
    const QString name = ToQString(list_->Instrument()->name);
    accept();
    emit Chosen(name);
}

} // namespace tracksmith::forms
