#pragma once

#include "base/text.h"

class QWidget;

namespace tracksmith::forms {

/// The heading of the guide's section about `widget`: that of the nearest area or window around it
/// that has one, by object name or class. The section about the main window for all others.
const Text& GuideSectionOf(const QWidget* widget);

} // namespace tracksmith::forms
