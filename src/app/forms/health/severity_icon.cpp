#include "app/forms/health/severity_icon.h"

#include <array>
#include <cmath>
#include <numbers>

#include "base/forms/theme.h"
#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QPolygonF>

namespace tracksmith::forms {
namespace {

using health::Severity;

QPolygonF Octagon(QPointF centre, double radius) {
    QPolygonF shape;
    for (int corner = 0; corner < 8; ++corner) {
        const double angle = (corner + 0.5) * std::numbers::pi / 4;
        shape << centre + QPointF(std::cos(angle), std::sin(angle)) * radius;
    }
    return shape;
}

void DrawShape(QPainter& painter, Severity severity, double size) {
    const QPointF centre(size / 2, size / 2);
    if (severity == Severity::Error) {
        painter.drawPolygon(Octagon(centre, size / 2));
    } else if (severity == Severity::Warning) {
        painter.drawPolygon(QPolygonF({{size / 2, 0}, {size, size * 0.92}, {0, size * 0.92}}));
    } else {
        painter.drawEllipse(centre, size / 2, size / 2);
    }
}

} // namespace

QColor SeverityColour(Severity severity, const QPalette& palette) {
    struct Pair {
        QRgb dark;
        QRgb light;
    };
    constexpr std::array<Pair, 3> kColours{
        {{0xFFF0827B, 0xFFB3261E}, {0xFFE6B450, 0xFF8A5A00}, {0xFF7DB7EA, 0xFF1F5F99}}};
    const Pair& pair = kColours.at(static_cast<std::size_t>(severity));
    return {IsDark(palette) ? pair.dark : pair.light};
}

QIcon SeverityIcon(Severity severity, const QPalette& palette) {
    constexpr std::array<const char*, 3> kSigns{"×", "!", "i"};
    const int size = QFontMetrics(QApplication::font()).height();
    const double scale = qApp->devicePixelRatio();
    QPixmap image(QSize(size, size) * scale);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(SeverityColour(severity, palette));
    DrawShape(painter, severity, size);
    QFont font = ScaledFont(QApplication::font(), 0.8);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(palette.color(QPalette::Base));
    const double down = severity == Severity::Warning ? size * 0.12 : 0;
    painter.drawText(QRectF(0, down, size, size), Qt::AlignCenter,
                     QString::fromUtf8(kSigns.at(static_cast<std::size_t>(severity))));
    return {image};
}

} // namespace tracksmith::forms
