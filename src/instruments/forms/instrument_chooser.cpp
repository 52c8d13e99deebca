#include "instruments/forms/instrument_chooser.h"

#include <algorithm>

#include "base/forms/dialog_frame.h"
#include "base/forms/qt_text.h"
#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "instruments/forms/texts.h"

namespace tracksmith::forms {

InstrumentChooser::InstrumentChooser(instruments::InstrumentSettings& settings,
                                     std::vector<InstrumentOutput> outputs,
                                     const InstrumentList::Remark& remark, Language language,
                                     QWidget* parent)
    : QDialog(parent),
      settings_(settings),
      outputs_(std::move(outputs)),
      output_(new QComboBox),
      list_(new InstrumentList("Tree_Instruments", remark, language)),
      choose_(new QPushButton(InLanguage(instrument_texts::kChoose, language))) {
    setObjectName(QStringLiteral("Dlg_Instrument"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(InLanguage(instrument_texts::kChooseInstrument, language));
    AddColumn(*this);
    AddOutputs(language);
    layout()->addWidget(list_);
    AddButtons(language);
    connect(list_, &InstrumentList::InstrumentChanged, this,
            [this] { choose_->setEnabled(list_->Instrument() != nullptr); });
    connect(list_, &InstrumentList::InstrumentAccepted, this, &InstrumentChooser::TakeChoice);
    FitToScreen();
    ShowOutput();
    list_->setFocus();
}

// As many instruments at once as a screen has room for, within reason.
void InstrumentChooser::FitToScreen() {
    constexpr int kLines = 48;
    const int room = screen()->availableGeometry().height() * 9 / 10;
    resize(sizeHint().width(), std::min(fontMetrics().height() * kLines, room));
}

// With one output there is nothing to choose among.
void InstrumentChooser::AddOutputs(Language language) {
    output_->setObjectName(QStringLiteral("CB_ChooserOutput"));
    output_->setAccessibleName(InLanguage(instrument_texts::kForOutput, language).remove(u'&'));
    for (const InstrumentOutput& output : outputs_) {
        output_->addItem(output.label);
    }
    layout()->addWidget(output_);
    output_->setVisible(outputs_.size() > 1);
    connect(output_, &QComboBox::activated, this, &InstrumentChooser::ShowOutput);
}

void InstrumentChooser::AddButtons(Language language) {
    choose_->setObjectName(QStringLiteral("Btn_OK"));
    choose_->setDefault(true);
    auto* cancel = new QPushButton(InLanguage(instrument_texts::kCancel, language));
    cancel->setObjectName(QStringLiteral("Btn_Cancel"));
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(choose_);
    row->addWidget(cancel);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    connect(choose_, &QPushButton::clicked, this, &InstrumentChooser::TakeChoice);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void InstrumentChooser::ShowOutput() {
    list_->SetInstrument(settings_.ReadInstrumentOf(
        outputs_.at(static_cast<std::size_t>(std::max(0, output_->currentIndex()))).productName));
    choose_->setEnabled(list_->Instrument() != nullptr);
}

void InstrumentChooser::TakeChoice() {
    const std::string name(list_->Instrument()->name);
    const std::string output =
        outputs_.at(static_cast<std::size_t>(std::max(0, output_->currentIndex()))).productName;
    accept();
    emit Stored(ToQString(output), settings_.WriteInstrumentOf(output, name));
}

} // namespace tracksmith::forms
