#include "base/forms/theme.h"

#include <algorithm>
#include <array>

#include "base/forms/theme_style.h"
#include "base/forms/title_bars.h"
#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QStyle>
#include <QWidget>

namespace tracksmith::forms {
namespace {

struct Colours {
    QRgb window, panel, raised, border, text, dim, accent, onAccent;
};

constexpr Colours kDark{0xFF1B1E25, 0xFF14171C, 0xFF272B34, 0xFF3A404B,
                        0xFFE7E9ED, 0xFF9BA2AD, 0xFF3FB5A8, 0xFF0B1413};
constexpr Colours kLight{0xFFF0F1F3, 0xFFFFFFFF, 0xFFE6E8EC, 0xFFC6CBD3,
                         0xFF14171C, 0xFF5A616C, 0xFF0C7F72, 0xFFFFFFFF};

// Neighbouring channels have hues far enough apart to be told from each other.
constexpr std::array<int, 16> kHues{206, 264, 318, 0,   26,  42,  72,  112,
                                    146, 352, 174, 192, 226, 286, 336, 14};

int textPercent = kSmallestText;

void SetDisabled(QPalette& palette, const Colours& colours) {
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(colours.dim).darker(130));
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(colours.border));
}

QPalette MakePalette(const Colours& colours) {
    // Derives the bevels' shades, which are not named below.
    QPalette palette{QColor(colours.raised), QColor(colours.window)};
    const auto set = [&palette](QPalette::ColorRole role, QRgb colour) {
        palette.setColor(role, QColor(colour));
    };
    set(QPalette::WindowText, colours.text);
    set(QPalette::Base, colours.panel);
    set(QPalette::AlternateBase, colours.window);
    set(QPalette::Text, colours.text);
    set(QPalette::ButtonText, colours.text);
    set(QPalette::BrightText, colours.text);
    set(QPalette::PlaceholderText, colours.dim);
    set(QPalette::Highlight, colours.accent);
    set(QPalette::HighlightedText, colours.onAccent);
    set(QPalette::Link, colours.accent);
    set(QPalette::Mid, colours.border);
    set(QPalette::ToolTipBase, colours.raised);
    set(QPalette::ToolTipText, colours.text);
    SetDisabled(palette, colours);
    return palette;
}

} // namespace

QPalette ThemePalette(Theme theme) {
    if (theme == Theme::System) {
        return {}; // names no colour itself, so that the desktop's are in force
    }
    return MakePalette(theme == Theme::Dark ? kDark : kLight);
}

void ApplyTheme(Theme theme) {
    if (qobject_cast<ThemeStyle*>(QApplication::style()) == nullptr) {
        QApplication::setStyle(new ThemeStyle);
    }
    QApplication::setPalette(ThemePalette(theme));
    ShadeTitleBars();
}

void ApplyTextSize(int percent) {
    static const QFont desktops = QApplication::font();
    textPercent = std::clamp(percent, kSmallestText, kLargestText);
    QApplication::setFont(ScaledFont(desktops, TextScale()));
    // Qt tells the widgets only once the event loop runs.
    for (QWidget* widget : QApplication::allWidgets()) {
        QEvent change(QEvent::ApplicationFontChange);
        QApplication::sendEvent(widget, &change);
    }
}

double TextScale() {
    return textPercent / 100.0;
}

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

QColor ChannelColour(int channel, const QPalette& palette) {
    const int hue = kHues[static_cast<std::size_t>(channel & 0x0F)];
    return IsDark(palette) ? QColor::fromHsl(hue, 150, 145) : QColor::fromHsl(hue, 165, 100);
}

bool IsLight(const QColor& colour) {
    constexpr double kMiddle = 0.46;
    return 0.30 * colour.redF() + 0.59 * colour.greenF() + 0.11 * colour.blueF() > kMiddle;
}

QFont ScaledFont(QFont font, double factor) {
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * factor);
    } else {
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * factor)));
    }
    return font;
}

QFont DigitFont(double factor) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QFont general = QApplication::font();
    if (general.pointSizeF() > 0) {
        font.setPointSizeF(general.pointSizeF());
    } else {
        font.setPixelSize(general.pixelSize());
    }
    return ScaledFont(font, factor);
}

double CornerRadius() {
    return QFontMetrics(QApplication::font()).height() / 3.0;
}

int Gap() {
    return std::max(4, QFontMetrics(QApplication::font()).height() / 2);
}

} // namespace tracksmith::forms
