#include "app/forms/ports/ports_dialog.h"

#include "base/display_text.h"
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
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

#include "app/forms/ports/ask_panel.h"
#include "app/forms/ports/key_test.h"
#include "app/forms/ports/port_items.h"
#include "app/forms/settings/file_chooser.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"
#include "instruments/catalogue.h"

namespace tracksmith::forms {

PortsDialog::PortsDialog(SessionSignals& session, SoundSettings& sound, FileChooser& chooser,
                         const ConnectionTools& connection, Language language, QWidget* parent)
    : QDialog(parent),
      session_(session),
      sound_(sound),
      chooser_(chooser),
      language_(language),
      output_(new QComboBox),
      input_(new QComboBox),
      thru_(new QCheckBox(Say(texts::kThru))),
      soundfont_(NewLabel("L_SoundFont", this)),
      trouble_(NewLabel("L_SoundTrouble", this)) {
    setObjectName(QStringLiteral("Dlg_MidiPorts"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(Say(texts::kPortsTitle));
    AddColumn(*this);
    layout()->addWidget(BuildPorts());
    BuildAsking(connection);
    if (sound_.HasSynth()) {
        layout()->addWidget(BuildSynth());
    }
    AddCloseButton(*this, language);
    connect(&session, &SessionSignals::PortsChanged, this, &PortsDialog::ShowInputs);
    connect(&session, &SessionSignals::PortsChanged, this, &PortsDialog::ShowTrouble);
    ShowInputs();
    ShowTrouble();
}

QString PortsDialog::Say(const Text& text) const {
    return InLanguage(text, language_);
}

QWidget* PortsDialog::BuildPorts() {
    auto* group = new QGroupBox(QStringLiteral("MIDI"));
    auto* form = new QFormLayout(group);
    output_->setObjectName(QStringLiteral("CB_DialogOutput"));
    output_->setAccessibleName(Say(texts::kOutput));
    output_->setMinimumContentsLength(30);
    input_->setObjectName(QStringLiteral("CB_Input"));
    input_->setAccessibleName(Say(texts::kInput));
    thru_->setObjectName(QStringLiteral("CB_Thru"));
    thru_->setChecked(sound_.ReadThru());
    form->addRow(Say(texts::kOutput), output_);
    form->addRow(Say(texts::kInput), input_);
    form->addRow(QString(), thru_);
    connect(output_, &QComboBox::activated, this, [this] {
        asking_->Clear();
        session_.Controls().ChooseOutput(output_->currentData().toString().toStdString());
        keys_->Listen();
    });
    connect(input_, &QComboBox::activated, this, [this] {
        asking_->Clear();
        sound_.SetInput(input_->currentData().toString().toStdString());
        keys_->Listen();
    });
    connect(thru_, &QCheckBox::toggled, this, [this](bool on) { sound_.SetThru(on); });
    return group;
}

void PortsDialog::BuildAsking(const ConnectionTools& connection) {
    asking_ = new AskPanel(
        connection.asker,
        {[this] { return session_.Controls().Outputs().Output(); },
         [this] { return sound_.ReadInput(); },
         [this] {
             const std::string& name = session_.Session().Work().outputs.outputs.front().name;
             return instruments::FindInstrument(name) != nullptr ? name : std::string();
         }},
        language_);
    layout()->addWidget(asking_);
    keys_ = new KeyTest(connection.test,
                        {[this] { return session_.Controls().Outputs().Output(); },
                         [this] { return sound_.ReadInput(); }},
                        language_);
    asking_->AddBeside(keys_->NoteButton());
    layout()->addWidget(keys_);
    connect(&session_, &SessionSignals::PortsChanged, keys_, &KeyTest::Listen);
    connect(asking_, &AskPanel::InstrumentChosen, this, &PortsDialog::InstrumentChosen);
}

QWidget* PortsDialog::BuildSynth() {
    auto* group = new QGroupBox(Say(texts::kBuiltIn));
    auto* form = new QFormLayout(group);
    auto* choose = new QPushButton(Say(texts::kChooseSoundfont));
    choose->setObjectName(QStringLiteral("Btn_ChooseSoundFont"));
    auto* usual = new QPushButton(Say(texts::kUsualSoundfont));
    usual->setObjectName(QStringLiteral("Btn_UsualSoundFont"));
    auto* row = new QHBoxLayout;
    row->addWidget(soundfont_, 1);
    row->addWidget(choose);
    row->addWidget(usual);
    form->addRow(Say(texts::kSoundfont), row);
    auto* volume = new QSlider(Qt::Horizontal);
    volume->setObjectName(QStringLiteral("TB_SynthVolume"));
    volume->setAccessibleName(Say(texts::kVolume));
    volume->setRange(0, 100);
    volume->setPageStep(10);
    volume->setValue(sound_.ReadVolume());
    form->addRow(Say(texts::kVolume), volume);
    auto* voices = new QSpinBox;
    voices->setObjectName(QStringLiteral("E_Polyphony"));
    voices->setAccessibleName(Say(texts::kPolyphony));
    voices->setRange(16, 1'024);
    voices->setKeyboardTracking(false);
    voices->setValue(sound_.ReadSynthOptions().polyphony);
    form->addRow(Say(texts::kPolyphony), voices);
    form->addRow(trouble_);
    trouble_->setWordWrap(true);
    connect(choose, &QPushButton::clicked, this, &PortsDialog::ChooseSoundfont);
    connect(usual, &QPushButton::clicked, this, [this] {
        sound_.SetSoundfont({});
        ShowSoundfont();
    });
    connect(volume, &QSlider::valueChanged, this, [this, volume](int value) {
        sound_.HearVolume(value);
        if (!volume->isSliderDown()) {
            sound_.StoreVolume(value);
        }
    });
    connect(volume, &QSlider::sliderReleased, this,
            [this, volume] { sound_.StoreVolume(volume->value()); });
    connect(voices, &QSpinBox::valueChanged, this,
            [this](int value) { sound_.SetPolyphony(value); });
    ShowSoundfont();
    return group;
}

void PortsDialog::ShowInputs() {
    FillWithOutputs(*output_, session_.Controls().Player().OutputDevices(), language_);
    output_->setCurrentIndex(output_->findData(ToQString(session_.Controls().Outputs().Output())));
    input_->clear();
    input_->addItem(Say(texts::kNoInput), QString());
    for (const player::InputDevice& input : session_.Controls().Player().InputDevices()) {
        input_->addItem(ToQString(DisplayText(input.productName)), ToQString(input.productName));
    }
    input_->setCurrentIndex(std::max(0, input_->findData(ToQString(sound_.ReadInput()))));
}

void PortsDialog::ShowSoundfont() {
    const std::filesystem::path file = sound_.ReadSynthOptions().soundfont;
    soundfont_->setText(file.empty() ? Say(texts::kSoundfontUsual) : ShownFileName(file));
    soundfont_->setToolTip(file.empty() ? QString() : ShownPath(file));
    ShowTrouble();
}

void PortsDialog::ChooseSoundfont() {
    const std::filesystem::path last = sound_.ReadSynthOptions().soundfont.parent_path();
    if (const auto file = chooser_.ChooseOpen(this, language_, FileKind::Soundfont, last)) {
        sound_.SetSoundfont(*file);
        ShowSoundfont();
    }
}

void PortsDialog::ShowTrouble() {
    const QString text = ToQString(sound_.Trouble(language_));
    trouble_->setText(text);
    trouble_->setVisible(!text.isEmpty());
}

} // namespace tracksmith::forms
