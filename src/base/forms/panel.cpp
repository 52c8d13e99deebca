#include "base/forms/panel.h"

#include "base/forms/theme.h"
#include <QApplication>
#include <QPainter>
#include <QScrollArea>

namespace tracksmith::forms {

Panel::Panel(QPalette::ColorRole ground, QWidget* parent) : QFrame(parent), ground_(ground) {
    connect(qApp, &QApplication::focusChanged, this, [this] { update(); });
}

void Panel::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    const QWidget* focused = QApplication::focusWidget();
    const bool focusInside = focused != nullptr && isAncestorOf(focused);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(focusInside ? Accent(palette()) : Border(palette()));
    painter.setBrush(palette().brush(ground_));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), CornerRadius(),
                            CornerRadius());
}

QScrollArea* NewScrollArea(QWidget* content) {
    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    // Moving the focus scrolls; the area itself is no place to stop at.
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(content);
    return area;
}

} // namespace tracksmith::forms
