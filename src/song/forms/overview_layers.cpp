#include "song/forms/overview_layers.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "song/forms/overview_painter.h"

namespace tracksmith::forms {
namespace {

QPixmap EmptyPicture(const QWidget& widget) {
    const double ratio = widget.devicePixelRatioF();
    QPixmap picture((QSizeF(widget.size()) * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    return picture;
}

} // namespace

void OverviewLayers::Paint(QPainter& painter, const QWidget& widget,
                           const OverviewGeometry& geometry, const OverviewScene& scene) {
    const QSize pixels = (QSizeF(widget.size()) * widget.devicePixelRatioF()).toSize();
    if (ground_.size() != pixels || focused_ != scene.focused) {
        Make(widget, geometry, scene);
    }
    painter.drawPixmap(0, 0, ground_);
    PaintOverviewCursor(painter, geometry, scene, widget.palette());
    painter.drawPixmap(0, 0, notes_);
    PaintOverviewPlayhead(painter, geometry, scene, widget.palette());
}

void OverviewLayers::Make(const QWidget& widget, const OverviewGeometry& geometry,
                          const OverviewScene& scene) {
    focused_ = scene.focused;
    ground_ = EmptyPicture(widget);
    notes_ = ground_;
    QPainter ground(&ground_);
    PaintOverviewGround(ground, widget.rect(), scene, widget.palette());
    QPainter notes(&notes_);
    notes.setFont(widget.font());
    PaintOverviewNotes(notes, geometry, scene, widget.palette());
}

QRect OverviewPlaceRect(const OverviewGeometry& geometry, const OverviewScene& scene) {
    constexpr int kSeam = 2; // pixels around, where edges are between two of them
    const double left = std::floor(
        std::min(geometry.X(static_cast<double>(scene.cursor)), geometry.X(scene.playhead)));
    const double right =
        std::max(geometry.X(static_cast<double>(scene.cursor) + 1), geometry.X(scene.playhead));
    const double top = geometry.measureRuler.top();
    return QRectF(left, top, right - left, geometry.cells.bottom() - top)
        .toAlignedRect()
        .adjusted(-kSeam, -kSeam, 2 * kSeam, kSeam);
}

} // namespace tracksmith::forms
