#include "mixer/forms/lamp_button.h"

#include "base/forms/theme.h"
#include <QMouseEvent>
#include <QPainter>

#include "mixer/forms/strip_colours.h"

namespace tracksmith::forms {

LampButton::LampButton(Kind kind, QWidget* parent) : QAbstractButton(parent), kind_(kind) {
    setText(kind == Kind::Mute ? QStringLiteral("M") : QStringLiteral("S"));
    setCheckable(true);
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    // The mixer decides what becomes of it.
    connect(this, &QAbstractButton::clicked, this, [this](bool on) {
        setChecked(!on);
        emit LampPressed(false);
    });
}

void LampButton::ShowLamp(bool on, bool underlined) {
    if (on != isChecked() || underlined != underlined_) {
        setChecked(on);
        underlined_ = underlined;
        update();
    }
}

QSize LampButton::sizeHint() const {
    const int height = fontMetrics().height();
    return {height * 5 / 4, height * 3 / 2};
}

void LampButton::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && isEnabled()) {
        emit LampPressed(event->modifiers().testFlag(Qt::ControlModifier));
    }
}

void LampButton::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor lit = kind_ == Kind::Mute ? MuteColour(palette()) : SoloColour(palette());
    const QRectF frame = QRectF(rect()).adjusted(1, 1, -1, -1);
    const QColor ground = isChecked() ? lit : palette().color(QPalette::Base);
    painter.setPen(hasFocus() ? QPen(Accent(palette()), 2) : QPen(Border(palette()), 1));
    painter.setBrush(ground);
    painter.drawRoundedRect(frame, CornerRadius() * 0.7, CornerRadius() * 0.7);
    if (underlined_ && !isChecked()) {
        painter.fillRect(QRectF(frame.left() + 2, frame.bottom() - 2, frame.width() - 4, 2), lit);
    }
    QFont bold = ScaledFont(font(), 0.9);
    bold.setBold(isChecked());
    painter.setFont(bold);
    painter.setPen(isChecked()
                       ? TextOn(lit)
                       : palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                         QPalette::ButtonText));
    painter.drawText(frame, Qt::AlignCenter, text());
}

} // namespace tracksmith::forms
