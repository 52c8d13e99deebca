#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

namespace tracksmith::forms {

/// The looks that the user can choose.
enum class Theme { Dark, Light, System };

/// The palette of a theme, for QApplication::setPalette; System leaves all colours to the desktop.
QPalette ThemePalette(Theme theme);

/// Gives the whole program the Fusion style and the theme's palette. Windows repaint at once.
void ApplyTheme(Theme theme);

/// The sizes of text that the user can choose, in per cent of the desktop's.
inline constexpr int kSmallestText = 100;
inline constexpr int kLargestText = 250;

/// Gives the whole program text of `percent` of the desktop's size, clamped to the range above.
/// Windows that exist already must be laid out anew.
void ApplyTextSize(int percent);

/// The factor that ApplyTextSize has set.
double TextScale();

/// True when the palette has light text on a dark ground.
bool IsDark(const QPalette& palette);

/// The colour that stands for a channel (0-15) everywhere in the program, readable on `palette`.
QColor ChannelColour(int channel, const QPalette& palette);

/// Black is read better on `colour` than white (relative luminance of sRGB, roughly).
bool IsLight(const QColor& colour);

/// The one accent colour.
inline QColor Accent(const QPalette& palette) {
    return palette.color(QPalette::Highlight);
}

/// Thin lines around panels.
inline QColor Border(const QPalette& palette) {
    return palette.color(QPalette::Mid);
}

/// Text of captions and of what is not in use.
inline QColor DimText(const QPalette& palette) {
    return palette.color(QPalette::PlaceholderText);
}

/// `font` at `factor` times its size.
QFont ScaledFont(QFont font, double factor);

/// The program's fixed-width font at `factor` times the size of the general one, for displays whose
/// digits must not move.
QFont DigitFont(double factor);

/// Radius of a panel's corners in logical pixels, from the size of the font.
double CornerRadius();

/// The gap between panels in logical pixels, from the size of the font.
int Gap();

} // namespace tracksmith::forms
