#include "mixer/forms/master_strip.h"

#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "mixer/forms/level_meter.h"
#include "mixer/forms/strip_colours.h"
#include "mixer/forms/texts.h"
#include "mixer/forms/transpose_box.h"
#include "mixer/forms/volume_fader.h"

namespace tracksmith::forms {
namespace {

constexpr double kMasterText = 0.8;

} // namespace

MasterStrip::MasterStrip(mixer::Mixer& mixer, QWidget* parent)
    : QWidget(parent),
      mixer_(mixer),
      title_(NewLabel("Lbl_Master", this)),
      transpose_(new TransposeBox(this)),
      linked_(NewButton("Btn_MasterLinked")),
      volume_(new VolumeFader(-1, this)),
      meter_(new LevelMeter(this)),
      resetAll_(NewButton("Btn_ResetAll")),
      unmute_(NewButton("Btn_Unmute")),
      soloed_(NewLabel("Lbl_Soloed", this)),
      soloOff_(NewButton("Btn_SoloOff")) {
    setObjectName(QStringLiteral("MasterStrip"));
    volume_->setObjectName(QStringLiteral("TB_MasterVol"));
    volume_->setFocusPolicy(Qt::StrongFocus);
    meter_->setObjectName(QStringLiteral("MeterMaster"));
    linked_->setCheckable(true);
    transpose_->setObjectName(QStringLiteral("TransposeSong"));
    transpose_->setFocusPolicy(Qt::StrongFocus);
    LayOut();
    Connect();
}

void MasterStrip::LayOut() {
    QFont bold = ScaledFont(font(), 0.95);
    bold.setBold(true);
    title_->setFont(bold);
    soloed_->setFont(ScaledFont(font(), kMasterText));
    soloed_->setAlignment(Qt::AlignHCenter);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 5, 4, 5);
    column->setSpacing(3);
    column->addWidget(title_);
    column->addWidget(transpose_);
    column->addWidget(linked_);
    auto* level = new QHBoxLayout;
    level->setSpacing(2);
    level->addWidget(volume_, 1);
    level->addWidget(meter_);
    column->addLayout(level, 1);
    for (QWidget* part : std::initializer_list<QWidget*>{resetAll_, unmute_, soloed_, soloOff_}) {
        column->addWidget(part);
    }
}

void MasterStrip::Connect() {
    connect(transpose_, &ControlSlider::Moved, this, &MasterStrip::Transpose);
    connect(transpose_, &ControlSlider::ResetWanted, this, [this] { Transpose(0); });
    connect(volume_, &ControlSlider::Moved, this, [this](int value) {
        mixer_.TB_MasterVolChange(value);
        emit Changed();
    });
    connect(volume_, &ControlSlider::ResetWanted, this,
            [this] { volume_->setValue(mixer::UsualValue(mixer::Control::Volume)); });
    connect(linked_, &QAbstractButton::clicked, this, [this](bool on) {
        mixer_.SetMasterLinked(on);
        emit Changed();
    });
    ConnectButton(resetAll_, [](mixer::Mixer& mixer) { mixer.ResetAll(); });
    ConnectButton(unmute_, [](mixer::Mixer& mixer) { mixer.ClearMutes(); });
    ConnectButton(soloOff_, [](mixer::Mixer& mixer) { mixer.ClearSolos(); });
}

void MasterStrip::ConnectButton(QPushButton* button, void (*action)(mixer::Mixer&)) {
    connect(button, &QAbstractButton::clicked, this, [this, action] {
        action(mixer_);
        emit Changed();
    });
}

void MasterStrip::Transpose(int semitones) {
    if (!mixer_.TransposeChange(semitones)) {
        emit Refused();
    }
    emit Changed();
}

QPushButton* MasterStrip::NewButton(const char* objectName) {
    auto* button = new QPushButton(this);
    button->setObjectName(QLatin1String(objectName));
    button->setFont(ScaledFont(font(), kMasterText));
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    button->setMinimumWidth(fontMetrics().height() * 4);
    return button;
}

void MasterStrip::ShowState() {
    volume_->SetShown(mixer_.Master(), false, true);
    linked_->setChecked(mixer_.MasterLinked());
    transpose_->SetShown(mixer_.Transposing().song, false, true);
    const std::size_t solos = mixer_.SoloCount();
    soloed_->setText(solos > 0 ? mixer_texts::Soloed(solos, language_) : QString());
    soloOff_->setEnabled(solos > 0);
    bool muted = false;
    for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
        muted = muted || mixer_.Muted(channel);
    }
    unmute_->setEnabled(muted);
}

void MasterStrip::ShowLevel(std::optional<unsigned> level) {
    if (level) {
        meter_->ShowLevel(*level);
    } else {
        meter_->Clear();
    }
}

void MasterStrip::Retranslate(Language language) {
    language_ = language;
    const auto name = [language](QPushButton& button, const Text& text, const Text& hint) {
        button.setText(InLanguage(text, language));
        button.setAccessibleName(InLanguage(text, language) + QStringLiteral(", ") +
                                 InLanguage(mixer_texts::kMaster, language));
        button.setToolTip(InLanguage(hint, language));
    };
    title_->setText(InLanguage(mixer_texts::kMaster, language));
    volume_->SetLanguage(language);
    volume_->setAccessibleName(InLanguage(mixer_texts::kMasterVolume, language));
    volume_->setToolTip(InLanguage(mixer_texts::kMasterVolume, language));
    transpose_->SetLanguage(language);
    transpose_->setAccessibleName(InLanguage(mixer_texts::kTransposeSong, language));
    transpose_->setToolTip(InLanguage(mixer_texts::kTransposeSong, language) +
                           QStringLiteral("\n") +
                           InLanguage(mixer_texts::kTransposeHint, language));
    name(*linked_, mixer_texts::kLink, mixer_texts::kLinkedHint);
    name(*resetAll_, mixer_texts::kResetAll, mixer_texts::kResetAllHint);
    name(*unmute_, mixer_texts::kUnmute, mixer_texts::kUnmuteHint);
    name(*soloOff_, mixer_texts::kSoloOff, mixer_texts::kSoloOff);
    ShowState();
}

void MasterStrip::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Border(palette()));
    painter.setBrush(palette().brush(QPalette::Button));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), CornerRadius(), CornerRadius());
}

} // namespace tracksmith::forms
