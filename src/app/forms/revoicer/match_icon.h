#pragma once

#include <QIcon>
#include <QPalette>
#include <QSize>

namespace tracksmith::forms {

/// How many of five bars stand for a nearness from 0 to 1; at least one.
int MatchBars(double nearness);

/// Five rising bars as high as a line of text, of which so many are filled.
QIcon MatchIcon(int bars, const QPalette& palette);

/// Size of these icons in logical pixels.
QSize MatchIconSize();

} // namespace tracksmith::forms
