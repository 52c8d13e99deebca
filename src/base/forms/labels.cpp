#include "base/forms/labels.h"

#include "base/forms/theme.h"
#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace tracksmith::forms {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::SetFullText(const QString& text) {
    setText(text);
    setAccessibleName(text);
    updateGeometry();
}

QSize ElidedLabel::minimumSizeHint() const {
    return QSize(fontMetrics().averageCharWidth() * 4, fontMetrics().height())
        .grownBy(contentsMargins());
}

QSize ElidedLabel::sizeHint() const {
    return QSize(fontMetrics().horizontalAdvance(text()) + fontMetrics().averageCharWidth(),
                 fontMetrics().height())
        .grownBy(contentsMargins());
}

void ElidedLabel::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
}

QLabel* NewLabel(const char* objectName, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(objectName));
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* NewCaption(const char* objectName, QWidget* parent) {
    auto* label = new ElidedLabel(parent);
    label->setObjectName(QLatin1String(objectName));
    // Not the label's own, which a parent that does not know of a new size of text may give it.
    label->setFont(ScaledFont(QApplication::font(), 0.85));
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

} // namespace tracksmith::forms
