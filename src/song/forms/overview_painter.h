#pragma once

#include <QPainter>
#include <QPalette>

#include "song/forms/overview_scene.h"

namespace tracksmith::forms {

/// Paints the overview with the painter's font: ground, rulers, channel numbers, notes, cursor.
void PaintOverview(QPainter& painter, const OverviewGeometry& geometry, const OverviewScene& scene,
                   const QPalette& palette);

// The same in four layers, of which only the second and the last change while a song plays.

/// The empty ground with its frame, which fills `rect`.
void PaintOverviewGround(QPainter& painter, const QRectF& rect, const OverviewScene& scene,
                         const QPalette& palette);
/// The cursor's column, below what is in it.
void PaintOverviewCursor(QPainter& painter, const OverviewGeometry& geometry,
                         const OverviewScene& scene, const QPalette& palette);
/// Loop, rulers, flags, channel numbers and notes.
void PaintOverviewNotes(QPainter& painter, const OverviewGeometry& geometry,
                        const OverviewScene& scene, const QPalette& palette);
/// The playhead.
void PaintOverviewPlayhead(QPainter& painter, const OverviewGeometry& geometry,
                           const OverviewScene& scene, const QPalette& palette);

} // namespace tracksmith::forms
