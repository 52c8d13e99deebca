#pragma once

#include "base/forms/theme.h"
#include <QColor>
#include <QPalette>

#include "mixer/forms/strip_colours.h"

namespace tracksmith::forms {

/// What goes, what ends or comes, and what begins again at a seam, readable on `palette`.
inline QColor RedColour(const QPalette& palette) {
    return MuteColour(palette);
}
inline QColor AmberColour(const QPalette& palette) {
    return SoloColour(palette);
}
inline QColor GreenColour(const QPalette& palette) {
    return {IsDark(palette) ? 0x5FC48AU : 0x1E7A45U};
}

/// Small text about what is new.
inline QColor NewTextColour(const QPalette& palette) {
    return IsDark(palette) ? Accent(palette) : QColor(0x07655AU);
}

} // namespace tracksmith::forms
