#include "base/forms/theme_style.h"

#include "base/forms/theme.h"
#include <QPainter>
#include <QStyleOption>

namespace tracksmith::forms {

namespace {

// Fusion tells a pressed choice from others by its shade only, which is hard to see on dark ground.
void MarkChosenButton(const QStyleOption& option, QPainter& painter) {
    QColor accent = Accent(option.palette);
    accent.setAlphaF(option.state.testFlag(QStyle::State_Enabled) ? 1 : 0.4F);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(accent, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(1, 1, -1, -1), 2, 2);
    painter.restore();
}

} // namespace

ThemeStyle::ThemeStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_PanelButtonCommand && option->state.testFlag(State_On)) {
        MarkChosenButton(*option, *painter);
        return;
    }
    const bool round = element == PE_IndicatorRadioButton;
    if (!round && element != PE_IndicatorCheckBox) {
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool focus = option->state.testFlag(State_HasFocus);
    QColor outline = focus ? Accent(option->palette) : DimText(option->palette);
    outline.setAlphaF(option->state.testFlag(State_Enabled) ? 1 : 0.4F);
    painter->setPen(outline);
    painter->setBrush(Qt::NoBrush);
    const QRectF frame = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    const double radius = round ? frame.width() / 2 : 2;
    painter->drawRoundedRect(frame, radius, radius);
    painter->restore();
}

} // namespace tracksmith::forms
