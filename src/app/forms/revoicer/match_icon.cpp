#include "app/forms/revoicer/match_icon.h"

#include <algorithm>
#include <cmath>

#include "base/forms/theme.h"
#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QPixmap>

namespace tracksmith::forms {
namespace {

constexpr int kBars = 5;

QPixmap Paint(int bars, const QColor& filled, const QColor& rest) {
    const QSize size = MatchIconSize();
    const double scale = qApp->devicePixelRatio();
    QPixmap image(size * scale);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const double step = static_cast<double>(size.width()) / kBars;
    for (int bar = 0; bar < kBars; ++bar) {
        const double height = size.height() * (0.35 + 0.65 * bar / (kBars - 1));
        painter.fillRect(QRectF(bar * step, size.height() - height, step * 0.7, height),
                         bar < bars ? filled : rest);
    }
    return image;
}

} // namespace

int MatchBars(double nearness) {
    return std::clamp(static_cast<int>(std::ceil(nearness * kBars)), 1, kBars);
}

QSize MatchIconSize() {
    const int height = QFontMetrics(QApplication::font()).ascent();
    return {height * 2, height};
}

QIcon MatchIcon(int bars, const QPalette& palette) {
    QIcon icon(Paint(bars, Accent(palette), Border(palette)));
    const QColor chosen = palette.color(QPalette::HighlightedText); // on the accent
    QColor faint = chosen;
    faint.setAlphaF(0.3F);
    icon.addPixmap(Paint(bars, chosen, faint), QIcon::Selected);
    return icon;
}

} // namespace tracksmith::forms
