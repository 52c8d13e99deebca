#include "app/forms/ports/key_lamps.h"

#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QAccessible>
#include <QPainter>

#include "app/forms/ports/texts.h"
#include "song/note_names.h"

namespace tracksmith::forms {
namespace {

constexpr double kSmallText = 0.8;

} // namespace

KeyLamps::KeyLamps(Language language, QWidget* parent) : QWidget(parent), language_(language) {
    setObjectName(QStringLiteral("KeyLamps"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    Clear(false);
}

void KeyLamps::Say(const QString& text) {
    text_ = text;
    setAccessibleName(InLanguage(port_texts::kPlayKey, language_) + QStringLiteral(": ") + text);
    update();
}

void KeyLamps::ShowKey(const app::PlayedKey& key) {
    held_.at(key.channel).set(key.key, key.velocity > 0);
    if (key.velocity > 0) {
        Say(InLanguage(port_texts::kPlayedKey, language_)
                .arg(ToQString(song::NoteName(key.key)))
                .arg(key.channel + 1)
                .arg(key.velocity));
        QAccessibleEvent told(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&told);
    }
    update();
}

void KeyLamps::Clear(bool hasInput) {
    held_.fill({});
    Say(InLanguage(hasInput ? port_texts::kNoKeyYet : port_texts::kNoInputHere, language_));
}

QSize KeyLamps::sizeHint() const {
    const QFontMetrics small(ScaledFont(font(), kSmallText));
    return {small.horizontalAdvance(QStringLiteral("16")) * 20,
            fontMetrics().height() + small.height() * 2 + Gap()};
}

void KeyLamps::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect line(0, 0, width(), fontMetrics().height());
    const QString caption = InLanguage(port_texts::kPlayKey, language_);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, caption);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int room = width() - fontMetrics().horizontalAdvance(caption) - Gap() * 2;
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter,
                     fontMetrics().elidedText(text_, Qt::ElideRight, room));
    painter.setFont(ScaledFont(font(), kSmallText));
    const double step = static_cast<double>(width()) / static_cast<double>(held_.size());
    const double lamp = painter.fontMetrics().height() * 0.8;
    const double top = line.bottom() + Gap();
    for (std::size_t channel = 0; channel < held_.size(); ++channel) {
        const QPointF middle((static_cast<double>(channel) + 0.5) * step, top + lamp / 2);
        const bool lit = held_.at(channel).any();
        painter.setPen(QPen(lit ? palette().color(QPalette::Highlight)
                                : palette().color(QPalette::PlaceholderText)));
        painter.setBrush(lit ? palette().highlight() : QBrush(Qt::NoBrush));
        painter.drawEllipse(middle, lamp / 2, lamp / 2);
        painter.setPen(palette().color(lit ? QPalette::WindowText : QPalette::PlaceholderText));
        painter.drawText(QRectF(middle.x() - step / 2, top + lamp, step, lamp * 2),
                         Qt::AlignHCenter | Qt::AlignTop, QString::number(channel + 1));
    }
}

} // namespace tracksmith::forms
