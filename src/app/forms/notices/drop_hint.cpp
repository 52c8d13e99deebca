#include "app/forms/notices/drop_hint.h"

#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QPainter>

#include "app/forms/texts.h"

namespace tracksmith::forms {

DropHint::DropHint(QWidget& window) : QWidget(&window), window_(window) {
    setObjectName(QStringLiteral("DropHint"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void DropHint::ShowFile(const QString& fileName, std::size_t more, Language language) {
    line_ = texts::DropOpens(fileName, more, language);
    setAccessibleName(line_);
    setGeometry(window_.rect());
    raise();
    show();
}

void DropHint::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor veil = palette().color(QPalette::Window);
    veil.setAlphaF(0.7F);
    painter.fillRect(rect(), veil);
    const double line = Gap() / 2.0;
    painter.setPen(QPen(Accent(palette()), line));
    painter.drawRoundedRect(QRectF(rect()).adjusted(line, line, -line, -line), CornerRadius(),
                            CornerRadius());
    painter.setFont(ScaledFont(font(), 1.5));
    painter.setPen(palette().color(QPalette::WindowText));
    const int room = width() - 4 * Gap();
    painter.drawText(rect(), Qt::AlignCenter,
                     painter.fontMetrics().elidedText(line_, Qt::ElideMiddle, room));
}

} // namespace tracksmith::forms
