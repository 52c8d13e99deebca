#pragma once

#include <QIcon>
#include <QPalette>

#include "app/diff/difference.h"

namespace tracksmith::forms {

/// The colour of a kind of differences, readable on `palette`.
QColor KindColour(diff::Kind kind, const QPalette& palette);

/// The sign of a kind, told from the others by its shape: square, diamond, disc, triangle up,
/// triangle down, bar. As high as a line of text.
QIcon KindIcon(diff::Kind kind, const QPalette& palette);

/// A chip with the number of a channel (0-15) in its colour.
QIcon ChannelChip(int channel, const QPalette& palette);

} // namespace tracksmith::forms
