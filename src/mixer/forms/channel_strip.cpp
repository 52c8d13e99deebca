#include "mixer/forms/channel_strip.h"

#include <algorithm>
#include <array>
#include <bitset>

#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "mixer/forms/bar_slider.h"
#include "mixer/forms/lamp_button.h"
#include "mixer/forms/level_meter.h"
#include "mixer/forms/strip_colours.h"
#include "mixer/forms/texts.h"
#include "mixer/forms/transpose_box.h"
#include "mixer/forms/voice_button.h"
#include "mixer/forms/volume_fader.h"
#include "song/shared_byte.h"

namespace tracksmith::forms {
namespace {

using mixer::Control;

constexpr int kMargin = 4;
/// Height of the strip of colour at the top.
constexpr int kColourBand = 3;

bool IsOnPage(Control control, StripPage page) {
    return control == Control::Volume || (control <= Control::Chorus) == (page == StripPage::Mix);
}

// "TB_Volume03" and the like, by which the controls are found.
QString PartName(const char* part, int channel) {
    return QLatin1String(part) + QStringLiteral("%1").arg(channel, 2, 10, QLatin1Char('0'));
}

constexpr auto kControlNames = std::to_array<const char*>(
    {"TB_Volume", "TB_Panorama", "TB_Expression", "TB_Reverb", "TB_Chorus", "TB_Controller71",
     "TB_Controller72", "TB_Controller73", "TB_Controller74", "TB_Controller94"});

QString ControlPartName(Control control, int channel) {
    const char* name = kControlNames.at(mixer::IndexOf(control));
    return control > Control::Chorus
               ? QLatin1String(name) + QLatin1Char('_') +
                     QStringLiteral("%1").arg(channel, 2, 10, QLatin1Char('0'))
               : PartName(name, channel);
}

} // namespace

ChannelNumber::ChannelNumber(int channel, QWidget* parent) : QAbstractButton(parent) {
    setText(QString::number(channel + 1));
    setCheckable(true);
    setFocusPolicy(Qt::ClickFocus);
}

QSize ChannelNumber::sizeHint() const {
    QFont bold = font();
    bold.setBold(true);
    return {QFontMetrics(bold).horizontalAdvance(QStringLiteral("16")) + 4,
            fontMetrics().height() + 2};
}

void ChannelNumber::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    if (isChecked()) {
        painter.fillRect(rect(), Accent(palette()));
    }
    painter.setPen(isChecked()
                       ? palette().color(QPalette::HighlightedText)
                       : palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                         QPalette::ButtonText));
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (hasFocus()) {
        painter.setPen(QPen(Accent(palette()), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

ChannelStrip::ChannelStrip(mixer::Mixer& mixer, int channel, QWidget* parent)
    : QWidget(parent),
      mixer_(mixer),
      channel_(channel),
      number_(new ChannelNumber(channel, this)),
      transpose_(new TransposeBox(this)),
      voiceButton_(new VoiceButton(this)),
      volume_(new VolumeFader(channel, this)),
      meter_(new LevelMeter(this)),
      mute_(new LampButton(LampButton::Kind::Mute, this)),
      solo_(new LampButton(LampButton::Kind::Solo, this)) {
    setObjectName(PartName("Strip_Channel", channel));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    number_->setObjectName(PartName("Btn_Channel", channel));
    transpose_->setObjectName(PartName("Transpose", channel));
    voiceButton_->setObjectName(PartName("Btn_Voice", channel));
    meter_->setObjectName(PartName("Meter", channel));
    mute_->setObjectName(PartName("Btn_Mute", channel));
    solo_->setObjectName(PartName("Btn_Solo", channel));
    Build();
    for (QWidget* part : Parts()) {
        part->installEventFilter(this);
    }
}

void ChannelStrip::Build() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kColourBand + 2, kMargin, kMargin + 1);
    column->setSpacing(2);
    auto* head = new QHBoxLayout;
    head->setSpacing(2);
    head->addWidget(number_);
    head->addWidget(transpose_, 1);
    column->addLayout(head);
    column->addWidget(voiceButton_);
    column->addSpacing(2);
    auto* level = new QHBoxLayout;
    level->setSpacing(2);
    level->addWidget(volume_, 1);
    level->addWidget(meter_);
    column->addLayout(level, 1);
    BuildControls(*column);
    auto* lamps = new QHBoxLayout;
    lamps->setSpacing(kMargin);
    lamps->addWidget(mute_);
    lamps->addWidget(solo_);
    column->addSpacing(2);
    column->addLayout(lamps);
    connect(number_, &QAbstractButton::clicked, this,
            [this](bool on) { emit NumberPressed(channel_, on); });
    connect(voiceButton_, &QAbstractButton::clicked, this, [this] { emit VoicePressed(channel_); });
    connect(mute_, &LampButton::LampPressed, this, &ChannelStrip::PressMute);
    connect(solo_, &LampButton::LampPressed, this, &ChannelStrip::PressSolo);
    connect(transpose_, &ControlSlider::Moved, this, &ChannelStrip::Transpose);
    connect(transpose_, &ControlSlider::ResetWanted, this, [this] { Transpose(0); });
}

void ChannelStrip::Transpose(int semitones) {
    if (!mixer_.TransposeChannel(Index(), semitones)) {
        emit Refused();
    }
    emit Changed();
}

void ChannelStrip::BuildControls(QVBoxLayout& column) {
    for (const Control control : mixer::kAllControls) {
        ControlSlider* slider = volume_;
        if (control != Control::Volume) {
            slider = new BarSlider(channel_, control, this);
            column.addWidget(slider);
        }
        slider->setObjectName(ControlPartName(control, channel_));
        controls_[mixer::IndexOf(control)] = slider;
        Connect(*slider, control);
    }
    connect(volume_, &VolumeFader::ChangesPressed, this,
            [this](const QPoint& at) { emit MenuWanted(channel_, Control::Volume, at); });
    SetPage(StripPage::Mix);
}

void ChannelStrip::Connect(ControlSlider& slider, Control control) {
    connect(&slider, &ControlSlider::Moved, this, [this, control](int value) {
        mixer_.Move(Index(), control, value);
        emit Changed();
    });
    connect(&slider, &ControlSlider::ResetWanted, this, [this, control] {
        mixer_.ResetControl(Index(), control);
        emit Changed();
    });
    connect(&slider, &ControlSlider::MenuWanted, this,
            [this, control](const QPoint& at) { emit MenuWanted(channel_, control, at); });
    connect(&slider, &ControlSlider::HollowMoved, this,
            [this, control] { emit HollowMoved(channel_, control); });
}

std::vector<QWidget*> ChannelStrip::Parts() const {
    std::vector<QWidget*> parts{number_, transpose_, voiceButton_};
    parts.insert(parts.end(), controls_.begin(), controls_.end());
    parts.insert(parts.end(), {mute_, solo_});
    return parts;
}

void ChannelStrip::SetPage(StripPage page) {
    for (const Control control : mixer::kAllControls) {
        controls_[mixer::IndexOf(control)]->setVisible(IsOnPage(control, page));
    }
}

void ChannelStrip::SetCurrent(bool current) {
    current_ = current;
    for (QWidget* part : Parts()) {
        part->setFocusPolicy(current ? Qt::StrongFocus : Qt::ClickFocus);
    }
    update();
}

void ChannelStrip::SetBroughtOut(bool on) {
    number_->setChecked(on);
}

void ChannelStrip::ShowSong() {
    const bool used = Used();
    for (QWidget* part : Parts()) {
        part->setEnabled(used);
    }
    transpose_->ShowDrums(mixer_.PlaysDrums(Index()));
    transpose_->setEnabled(used && !mixer_.PlaysDrums(Index()));
    meter_->setEnabled(used);
    ShowState();
    ShowChanges();
    ShowNames();
    update();
}

void ChannelStrip::ShowState() {
    for (const Control control : mixer::kAllControls) {
        const mixer::ControlState state = mixer_.State(Index(), control);
        controls_[mixer::IndexOf(control)]->SetShown(state.value, state.Hollow(), state.inEffect);
    }
    silenced_ = !mixer_.Audible(Index());
    mute_->ShowLamp(mixer_.Muted(Index()), silenced_ && Used());
    solo_->ShowLamp(mixer_.Solo(Index()), false);
    transpose_->SetShown(mixer_.Transposing().channels[Index()], false, true);
}

// The values that other events of the song give the volume.
void ChannelStrip::ShowChanges() {
    const auto places = mixer_.Index().Places(Index(), Control::Volume);
    std::bitset<128> values;
    for (const mixer::ControllerPlace& place : places) {
        values.set(song::ReadShared(place.event->data2) & 0x7FU);
    }
    const bool several = places.size() > 1;
    if (several) {
        values.reset(mixer_.State(Index(), Control::Volume).value);
    }
    volume_->SetChanges(several ? values : std::bitset<128>(), several ? places.size() - 1 : 0);
}

void ChannelStrip::ShowLevel(std::optional<unsigned> level) {
    if (level) {
        meter_->ShowLevel(*level);
    } else {
        meter_->Clear();
    }
}

void ChannelStrip::ShowVoice(const ShownVoice& voice) {
    voice_ = voice;
    ShowNames();
}

void ChannelStrip::Retranslate(Language language) {
    language_ = language;
    for (ControlSlider* slider : controls_) {
        slider->SetLanguage(language);
    }
    transpose_->SetLanguage(language);
    ShowNames();
}

void ChannelStrip::NamePart(QWidget& part, const QString& name, const QString& hint) {
    const QString where = mixer_texts::ChannelWords(channel_, voice_.name, language_);
    part.setAccessibleName(name + QStringLiteral(", ") + where);
    part.setToolTip(hint.isEmpty() ? name : name + QStringLiteral("\n") + hint);
}

void ChannelStrip::ShowNames() {
    const auto say = [this](const Text& text) { return InLanguage(text, language_); };
    const QString nothing = say(Used() ? mixer_texts::kNoVoice : mixer_texts::kNotInUse);
    voiceButton_->ShowVoice(Used() ? voice_ : ShownVoice(), nothing);
    setAccessibleName(
        mixer_texts::ChannelWords(channel_, Used() ? voice_.name : nothing, language_));
    NamePart(*number_, say(mixer_texts::kBringOut), say(mixer_texts::kChannelHint));
    QStringList voice{voice_.Marked(), voice_.numbers, voice_.why, say(mixer_texts::kVoiceHint)};
    voice.removeAll(QString());
    NamePart(*voiceButton_, say(mixer_texts::kVoice), voice.join(QLatin1Char('\n')));
    if (voice_.similar) {
        voiceButton_->setAccessibleName(voiceButton_->accessibleName() +
                                        say(mixer_texts::kSimilar));
    }
    NamePart(*transpose_, say(mixer_texts::kTranspose), say(mixer_texts::kTransposeHint));
    NamePart(*mute_, say(mixer_texts::kMute), {});
    NamePart(*solo_, say(mixer_texts::kSolo), {});
    for (const Control control : mixer::kAllControls) {
        const std::size_t changes = mixer_.State(Index(), control).places;
        const QString hint = changes == 0 ? say(mixer_texts::kNotInSong)
                             : changes > 1
                                 ? mixer_texts::ChangesTimes(control, changes - 1, language_)
                                 : QString();
        NamePart(*controls_[mixer::IndexOf(control)], mixer_texts::ControlName(control, language_),
                 hint);
    }
}

void ChannelStrip::PressMute(bool ctrl) {
    mixer_.Btn_Mute00MouseDown(Index(), ctrl);
    emit Changed();
}

void ChannelStrip::PressSolo(bool ctrl) {
    mixer_.Btn_Solo00MouseDown(Index(), ctrl);
    emit Changed();
}

void ChannelStrip::FocusPlace(std::size_t place) {
    const auto parts = Parts();
    QWidget* wanted = place < parts.size() ? parts[place] : volume_;
    (wanted->isEnabled() && wanted->isVisible() ? wanted : volume_)->setFocus(Qt::OtherFocusReason);
}

std::size_t ChannelStrip::FocusedPlace() const {
    const auto parts = Parts();
    auto found = std::ranges::find_if(parts, [](const QWidget* part) { return part->hasFocus(); });
    if (found == parts.end()) {
        found = std::ranges::find(parts, static_cast<QWidget*>(volume_));
    }
    return static_cast<std::size_t>(found - parts.begin());
}

bool ChannelStrip::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        emit Entered(channel_);
    } else if (event->type() == QEvent::KeyPress) {
        // Buttons would take the arrow keys for themselves.
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Left || key == Qt::Key_Right) {
            emit NeighbourWanted(key == Qt::Key_Left ? -1 : 1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ChannelStrip::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (plain && event->key() == Qt::Key_M) {
        PressMute(false);
    } else if (plain && event->key() == Qt::Key_S) {
        PressSolo(false);
    } else if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        emit VoicePressed(channel_);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void ChannelStrip::mousePressEvent(QMouseEvent* event) {
    Q_UNUSED(event)
    if (Used()) {
        FocusPlace(FocusedPlace());
    }
}

void ChannelStrip::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool used = Used();
    painter.setOpacity(used ? 1 : 0.5);
    const QRectF frame = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.setPen(current_ && used ? QPen(Accent(palette()), 2) : QPen(Border(palette()), 1));
    painter.setBrush(palette().brush(QPalette::Button));
    painter.drawRoundedRect(frame, CornerRadius(), CornerRadius());
    painter.setClipRect(QRectF(0, 0, width(), kColourBand));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ChannelColour(channel_, palette()));
    painter.drawRoundedRect(frame, CornerRadius(), CornerRadius());
}

} // namespace tracksmith::forms
