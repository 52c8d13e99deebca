#include "mixer/forms/strip_colours.h"

#include "base/forms/theme.h"

namespace tracksmith::forms {

QColor MuteColour(const QPalette& palette) {
    return {IsDark(palette) ? 0xE5534BU : 0xC2332BU};
}

QColor SoloColour(const QPalette& palette) {
    return {IsDark(palette) ? 0xE6B450U : 0x8A5A00U};
}

QColor TextOn(const QColor& ground) {
    // Weights of the eye, as for grey pictures.
    const int bright = (299 * ground.red() + 587 * ground.green() + 114 * ground.blue()) / 1000;
    return bright > 125 ? Qt::black : Qt::white;
}

QColor Mixed(const QColor& colour, const QColor& other, double share) {
    const auto mix = [share](int a, int b) { return qRound(a * share + b * (1 - share)); };
    return {mix(colour.red(), other.red()), mix(colour.green(), other.green()),
            mix(colour.blue(), other.blue())};
}

} // namespace tracksmith::forms
