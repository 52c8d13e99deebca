#pragma once

#include <QIcon>
#include <QPalette>

#include "app/health/finding.h"

namespace tracksmith::forms {

/// The colour of a severity, readable on `palette`.
QColor SeverityColour(health::Severity severity, const QPalette& palette);

/// The sign of a severity, told from the others by its shape: octagon, triangle, disc. As high as a
/// line of text.
QIcon SeverityIcon(health::Severity severity, const QPalette& palette);

} // namespace tracksmith::forms
