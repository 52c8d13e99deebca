#pragma once

#include <QPainter>
#include <QPalette>

#include "app/forms/overview/overview_scene.h"

namespace tracksmith::forms {

/// Paints the overview with the painter's font: ground, rulers, channel numbers, notes, cursor.
void PaintOverview(QPainter& painter, const OverviewGeometry& geometry, const OverviewScene& scene,
                   const QPalette& palette);

} // namespace tracksmith::forms
