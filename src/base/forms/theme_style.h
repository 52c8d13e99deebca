#pragma once

#include <QProxyStyle>

namespace tracksmith::forms {

/// The Fusion style with outlines of check boxes and radio buttons that can be seen on a dark
/// ground.
class ThemeStyle : public QProxyStyle {
    Q_OBJECT

public:
    ThemeStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace tracksmith::forms
