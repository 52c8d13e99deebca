#pragma once

#include <QColor>
#include <QPalette>

namespace tracksmith::forms {

/// The colours of a strip's lamps, readable on `palette`.
QColor MuteColour(const QPalette& palette);
QColor SoloColour(const QPalette& palette);

/// Black or white, whichever can be read better on `ground`.
QColor TextOn(const QColor& ground);

/// `colour` mixed with `other`, of which it keeps `share` (0-1).
QColor Mixed(const QColor& colour, const QColor& other, double share);

} // namespace tracksmith::forms
