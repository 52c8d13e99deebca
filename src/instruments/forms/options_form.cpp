#include "instruments/forms/options_form.h"

#include <algorithm>

#include "base/forms/dialog_frame.h"
#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include "instruments/forms/audio_routing_dialog.h"
#include "instruments/forms/texts.h"

namespace tracksmith::forms {

using instruments::Capability;
using instruments::SysexSwitch;

TOptionsForm::TOptionsForm(instruments::InstrumentSettings& settings,
                           std::vector<InstrumentOutput> outputs,
                           const InstrumentList::Remark& remark, Language language, QWidget* parent)
    : QDialog(parent),
      settings_(settings),
      outputs_(std::move(outputs)),
      language_(language),
      output_(new QComboBox),
      list_(new InstrumentList("CB_Instrument", remark, language)),
      track_(new QSpinBox),
      rolandMap_(new QComboBox),
      limexTe200_(new QCheckBox(Say(instrument_texts::kLimexTe200))),
      audioRouting_(new QPushButton(Say(instrument_texts::kAudioRouting))),
      trouble_(NewLabel("L_OptionsTrouble", this)) {
    setObjectName(QStringLiteral("OptionsForm"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(Say(instrument_texts::kOptionsTitle));
    AddColumn(*this);
    auto* halves = new QHBoxLayout;
    halves->setSpacing(Gap() * 2);
    halves->addWidget(BuildInstruments(), 1);
    halves->addWidget(BuildSettings(), 1);
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->addLayout(halves, 1);
    column->addWidget(trouble_);
    trouble_->setText(Say(instrument_texts::kSettingNotStored));
    trouble_->hide();
    AddCloseButton(*this, language);
    ShowOutput();
    connect(output_, &QComboBox::activated, this, &TOptionsForm::ShowOutput);
    connect(list_, &InstrumentList::InstrumentChanged, this, &TOptionsForm::CB_InstrumentChange);
}

QString TOptionsForm::Say(const Text& text) const {
    return InLanguage(text, language_);
}

QWidget* TOptionsForm::BuildInstruments() {
    auto* half = new QWidget;
    auto* column = new QVBoxLayout(half);
    column->setContentsMargins(0, 0, 0, 0);
    output_->setObjectName(QStringLiteral("CB_InstrumentOutput"));
    for (const InstrumentOutput& output : outputs_) {
        output_->addItem(output.label);
    }
    auto* caption = new QLabel(Say(instrument_texts::kForOutput));
    caption->setTextFormat(Qt::PlainText);
    caption->setBuddy(output_);
    output_->setAccessibleName(Say(instrument_texts::kForOutput).remove(u'&'));
    column->addWidget(caption);
    column->addWidget(output_);
    column->addWidget(list_, 1);
    return half;
}

QWidget* TOptionsForm::BuildSettings() {
    auto* half = new QWidget;
    auto* column = new QVBoxLayout(half);
    column->setContentsMargins(0, 0, 0, 0);
    auto* forAll = new QGroupBox(Say(instrument_texts::kPreparing));
    auto* forAllColumn = new QVBoxLayout(forAll);
    AddSwitches(*forAllColumn, true);
    AddSysexTrack(*forAllColumn);
    column->addWidget(forAll);
    auto* forThis = new QGroupBox(Say(instrument_texts::kOnlyThisInstrument));
    auto* forThisColumn = new QVBoxLayout(forThis);
    AddSwitches(*forThisColumn, false);
    AddRolandMap(*forThisColumn);
    AddLimexTe200(*forThisColumn);
    AddAudioRouting(*forThisColumn);
    column->addWidget(forThis);
    column->addStretch();
    return half;
}

void TOptionsForm::AddSwitches(QLayout& column, bool forAll) {
    for (const SysexSwitch& choice : instruments::SysexSwitches()) {
        if (choice.capability.has_value() == forAll) {
            continue;
        }
        auto* box = new QCheckBox(Say(choice.label));
        box->setObjectName(QStringLiteral("CB_") + QLatin1String(choice.setting));
        box->setToolTip(Say(choice.hint));
        connect(box, &QCheckBox::toggled, this, [this, &choice](bool on) {
            Stored(settings_.WriteSwitch(choice, instrument_, on));
        });
        switches_.emplace_back(box, &choice);
        column.addWidget(box);
    }
}

void TOptionsForm::AddSysexTrack(QLayout& column) {
    track_->setObjectName(QStringLiteral("E_SysexTrack"));
    track_->setAccessibleName(Say(instrument_texts::kSysexTrack).remove(u'&'));
    track_->setRange(1, instruments::kMostSysexTrack + 1);
    track_->setKeyboardTracking(false);
    auto* place = new QWidget;
    auto* form = new QFormLayout(place);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(Say(instrument_texts::kSysexTrack), track_);
    column.addWidget(place);
    connect(track_, &QSpinBox::valueChanged, this,
            [this](int track) { Stored(settings_.WriteSysexTrack(track - 1)); });
}

void TOptionsForm::AddRolandMap(QLayout& column) {
    rolandMap_->setObjectName(QStringLiteral("CB_RolandSCDefaultMap"));
    rolandMap_->setAccessibleName(Say(instrument_texts::kRolandMap).remove(u'&'));
    auto* place = new QWidget;
    auto* form = new QFormLayout(place);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(Say(instrument_texts::kRolandMap), rolandMap_);
    column.addWidget(place);
    connect(rolandMap_, &QComboBox::activated, this,
            [this](int index) { Stored(settings_.WriteRolandScMap(instrument_, index + 1)); });
}

void TOptionsForm::AddLimexTe200(QLayout& column) {
    limexTe200_->setObjectName(QStringLiteral("CB_LimexTE200"));
    column.addWidget(limexTe200_);
    connect(limexTe200_, &QCheckBox::toggled, this,
            [this](bool on) { Stored(settings_.WriteLimexTe200(instrument_, on)); });
}

void TOptionsForm::AddAudioRouting(QLayout& column) {
    audioRouting_->setObjectName(QStringLiteral("Btn_AudioRouting"));
    audioRouting_->setAutoDefault(false);
    column.addWidget(audioRouting_);
    connect(audioRouting_, &QPushButton::clicked, this, &TOptionsForm::EditAudioRouting);
}

const InstrumentOutput& TOptionsForm::ChosenOutput() const {
    return outputs_.at(static_cast<std::size_t>(std::max(0, output_->currentIndex())));
}

void TOptionsForm::ShowOutput() {
    instrument_ = settings_.ReadInstrumentOf(ChosenOutput().productName);
    list_->SetInstrument(instrument_);
    ShowSettings();
}

void TOptionsForm::CB_InstrumentChange() {
    const instruments::Instrument* chosen = list_->Instrument();
    if (chosen == nullptr || chosen->name == instrument_) {
        return;
    }
    instrument_ = chosen->name;
    const std::string output = ChosenOutput().productName;
    const bool onDisk = settings_.WriteInstrumentOf(output, instrument_);
    trouble_->setVisible(!onDisk);
    ShowSettings();
    emit InstrumentStored(ToQString(output));
}

void TOptionsForm::ShowSettings() {
    for (const auto& [box, choice] : switches_) {
        const QSignalBlocker silent(box);
        box->setChecked(settings_.ReadSwitch(*choice, instrument_));
        if (choice->capability) {
            ShowAvailable(*box, *choice->capability, choice->hint);
        }
    }
    const QSignalBlocker silentTrack(track_);
    track_->setValue(settings_.ReadSysexTrack() + 1);
    const QSignalBlocker silentLimex(limexTe200_);
    limexTe200_->setChecked(settings_.ReadLimexTe200(instrument_));
    ShowAvailable(*limexTe200_, Capability::LimexTe200, instrument_texts::kLimexTe200Hint);
    ShowAudioRouting();
    ShowAvailable(*rolandMap_, Capability::RolandScMap, instrument_texts::kRolandMapHint);
    ShowRolandMaps();
}

void TOptionsForm::ShowAvailable(QWidget& control, Capability capability, const Text& hint) {
    const bool available = instruments::HasCapability(instrument_, capability);
    const QString text = Say(available ? hint : instruments::WhyUnavailable(capability));
    control.setEnabled(available);
    control.setToolTip(text);
    control.setAccessibleDescription(text);
}

// Some instruments have the grid, but no message for it is known.
void TOptionsForm::ShowAudioRouting() {
    const bool motif = instruments::HasCapability(instrument_, Capability::MotifRoutingAndDsps);
    ShowAvailable(*audioRouting_,
                  motif ? Capability::MotifRoutingAndDsps : Capability::Integra7Routing,
                  instrument_texts::kAudioRoutingTitle);
    if (motif && instruments::AudioOutputs(instrument_).empty()) {
        audioRouting_->setEnabled(false);
        audioRouting_->setToolTip(Say(instrument_texts::kNoAudioRouting));
        audioRouting_->setAccessibleDescription(Say(instrument_texts::kNoAudioRouting));
    }
}

void TOptionsForm::ShowRolandMaps() {
    rolandMap_->clear();
    for (const std::string_view map : instruments::RolandScMaps(instrument_)) {
        rolandMap_->addItem(ToQString(map));
    }
    rolandMap_->setCurrentIndex(settings_.ReadRolandScMap(instrument_) - 1);
}

void TOptionsForm::EditAudioRouting() {
    auto* dialog = new AudioRoutingDialog(settings_, instrument_, language_, this);
    connect(dialog, &AudioRoutingDialog::SettingStored, this, &TOptionsForm::Stored);
    dialog->open();
}

void TOptionsForm::Stored(bool onDisk) {
    trouble_->setVisible(!onDisk);
    emit SettingStored();
}

} // namespace tracksmith::forms
