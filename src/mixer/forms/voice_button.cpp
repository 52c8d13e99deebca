#include "mixer/forms/voice_button.h"

#include "base/forms/theme.h"
#include <QPainter>

#include "mixer/forms/strip_colours.h"
#include "mixer/forms/voice_lines.h"

namespace tracksmith::forms {
namespace {

constexpr double kVoiceText = 0.8;
/// Per cent of the usual width, for names that do not fit.
constexpr int kNarrowLetters = 85;
constexpr int kMargin = 4;

} // namespace

VoiceButton::VoiceButton(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void VoiceButton::ShowVoice(const ShownVoice& voice, const QString& text) {
    voice_ = voice;
    setText(voice.name.isEmpty() ? text : voice.name);
    update();
}

QSize VoiceButton::sizeHint() const {
    const QFontMetrics small(ScaledFont(font(), kVoiceText));
    return {small.averageCharWidth() * 6 + 2 * kMargin, 2 * small.height() + kMargin};
}

void VoiceButton::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? QPen(Accent(palette()), 2) : QPen(Border(palette()), 1));
    painter.setBrush(palette().brush(isDown() ? QPalette::Button : QPalette::Base));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), CornerRadius() * 0.7,
                            CornerRadius() * 0.7);
    const QRect place = rect().adjusted(kMargin, kMargin / 2, -kMargin + 1, -kMargin / 2);
    QFont small = ScaledFont(font(), kVoiceText);
    auto lines = VoiceLines(text(), QFontMetricsF(small), place.width());
    if (lines.first.endsWith(u'…') || lines.second.endsWith(u'…')) {
        small.setStretch(kNarrowLetters);
        lines = VoiceLines(text(), QFontMetricsF(small), place.width());
    }
    painter.setFont(small);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignTop, lines.first);
    painter.drawText(place, Qt::AlignLeft | Qt::AlignBottom, lines.second);
    if (voice_.similar) {
        painter.setPen(SoloColour(palette()));
        painter.drawText(place, Qt::AlignRight | Qt::AlignBottom, QStringLiteral("≈"));
    }
}

} // namespace tracksmith::forms
