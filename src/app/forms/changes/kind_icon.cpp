#include "app/forms/changes/kind_icon.h"

#include <array>

#include "base/forms/theme.h"
#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QPolygonF>

namespace tracksmith::forms {
namespace {

using diff::Kind;

QPixmap NewImage(const QSize& size) {
    const double scale = qApp->devicePixelRatio();
    QPixmap image(size * scale);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    return image;
}

int Side() {
    return QFontMetrics(QApplication::font()).height();
}

// In a square of `s`, with a margin around.
void DrawKind(QPainter& painter, Kind kind, double s) {
    const double m = s * 0.16;
    const double half = s / 2;
    switch (kind) {
        case Kind::Voice:
            painter.drawRoundedRect(QRectF(m, m, s - 2 * m, s - 2 * m), m, m);
            break;
        case Kind::Controller:
            painter.drawPolygon(QPolygonF({{half, 0}, {s, half}, {half, s}, {0, half}}));
            break;
        case Kind::Note:
            painter.drawEllipse(QRectF(m, m, s - 2 * m, s - 2 * m));
            break;
        case Kind::Message:
            painter.drawPolygon(QPolygonF({{half, m}, {s - m / 2, s - m}, {m / 2, s - m}}));
            break;
        case Kind::Tempo:
            painter.drawPolygon(QPolygonF({{m / 2, m}, {s - m / 2, m}, {half, s - m}}));
            break;
        default:
            painter.drawRect(QRectF(0, half - m, s, 2 * m));
    }
}

} // namespace

QColor KindColour(Kind kind, const QPalette& palette) {
    struct Pair {
        QRgb dark;
        QRgb light;
    };
    constexpr std::array<Pair, diff::kKinds> kColours{{{0xFF3FB5A8, 0xFF07655A},
                                                       {0xFF7DB7EA, 0xFF1F5F99},
                                                       {0xFFE6B450, 0xFF8A5A00},
                                                       {0xFFC79BEA, 0xFF6B3FA0},
                                                       {0xFF6CC58A, 0xFF1D7A43},
                                                       {0xFFA8ABB3, 0xFF5A5D66}}};
    const Pair& pair = kColours.at(static_cast<std::size_t>(kind));
    return {IsDark(palette) ? pair.dark : pair.light};
}

QIcon KindIcon(Kind kind, const QPalette& palette) {
    QPixmap image = NewImage({Side(), Side()});
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(KindColour(kind, palette));
    DrawKind(painter, kind, Side());
    return {image};
}

QIcon ChannelChip(int channel, const QPalette& palette) {
    const QSize size(Side() * 3 / 2, Side());
    QPixmap image = NewImage(size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ground = ChannelColour(channel, palette);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(QPointF(), size), Side() / 5.0, Side() / 5.0);
    painter.setPen(IsLight(ground) ? Qt::black : Qt::white);
    painter.drawText(QRectF(QPointF(), size), Qt::AlignCenter, QString::number(channel + 1));
    return {image};
}

} // namespace tracksmith::forms
