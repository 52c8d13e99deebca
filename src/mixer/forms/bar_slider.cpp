#include "mixer/forms/bar_slider.h"

#include <algorithm>

#include "base/forms/theme.h"
#include <QPainter>

#include "mixer/forms/strip_colours.h"
#include "mixer/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr double kBarText = 0.8;
constexpr int kMiddle = 64;

} // namespace

BarSlider::BarSlider(int channel, mixer::Control control, QWidget* parent)
    : ControlSlider(parent), channel_(channel), control_(control) {
    setOrientation(Qt::Horizontal);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

int BarSlider::LineHeight() const {
    return QFontMetrics(ScaledFont(font(), kBarText)).height();
}

QSize BarSlider::sizeHint() const {
    return {fontMetrics().height() * 3, LineHeight() + std::max(5, LineHeight() / 2)};
}

QSize BarSlider::minimumSizeHint() const {
    const QFontMetrics small(ScaledFont(font(), kBarText));
    return {small.horizontalAdvance(QStringLiteral("Exp 127")) + 2, sizeHint().height()};
}

QString BarSlider::TextOf(int value) const {
    return mixer_texts::ValueText(control_, value, InForce());
}

std::optional<int> BarSlider::ValueOf(const QString& text) const {
    return mixer_texts::TypedValue(control_, text, InForce());
}

QRect BarSlider::TextPlace() const {
    return {width() / 2, 0, width() - width() / 2, LineHeight()};
}

QRect BarSlider::BarPlace() const {
    const int bar = std::max(3, LineHeight() / 4);
    return {1, LineHeight() + 1, width() - 2, bar};
}

// Only on the bar; on the text a drag begins where the control stands.
std::optional<int> BarSlider::ValueAt(const QPoint& at) const {
    const QRect bar = BarPlace();
    if (at.y() < bar.top() - 2) {
        return std::nullopt;
    }
    return std::clamp((at.x() - bar.left()) * 127 / std::max(bar.width() - 1, 1), 0, 127);
}

void BarSlider::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setFont(ScaledFont(font(), kBarText));
    const QColor text =
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText);
    painter.setPen(Mixed(text, palette().color(QPalette::Button), 0.75));
    const QRect line(1, 0, width() - 2, LineHeight());
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     mixer_texts::ShortName(control_, InForce()));
    painter.setPen(Hollow() ? DimText(palette()) : text);
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, ShownText());
    PaintBar(painter);
}

void BarSlider::PaintBar(QPainter& painter) const {
    const QRect bar = BarPlace();
    if (Hollow()) {
        painter.setPen(QPen(DimText(palette()), 1, Qt::DashLine));
        painter.drawRect(bar.adjusted(0, 0, -1, -1));
    } else {
        painter.fillRect(bar, palette().color(QPalette::Base));
        const int from = mixer::IsBipolar(control_) ? bar.width() * kMiddle / 127 : 0;
        const int to = bar.width() * value() / 127;
        painter.fillRect(bar.left() + std::min(from, to), bar.top(), std::abs(to - from),
                         bar.height(), ChannelColour(channel_, palette()));
        if (mixer::IsBipolar(control_)) {
            painter.fillRect(bar.left() + to - 1, bar.top() - 1, 2, bar.height() + 2,
                             palette().color(QPalette::Text));
        }
    }
    if (hasFocus()) {
        painter.setPen(QPen(Accent(palette()), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

} // namespace tracksmith::forms
