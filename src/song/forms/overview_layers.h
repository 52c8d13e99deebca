#pragma once

#include <QPainter>
#include <QPixmap>
#include <QRect>
#include <QWidget>

#include "song/forms/overview_scene.h"

namespace tracksmith::forms {

/// Keeps what does not move in an overview as pictures, so that a playing song costs only the
/// cursor and the playhead. User-interface thread.
class OverviewLayers {
public:
    /// Something other than the place of the music has changed.
    void Forget() { ground_ = {}; }

    /// Paints `scene` onto `widget`, within the clip of `painter`.
    void Paint(QPainter& painter, const QWidget& widget, const OverviewGeometry& geometry,
               const OverviewScene& scene);

private:
    void Make(const QWidget& widget, const OverviewGeometry& geometry, const OverviewScene& scene);

    QPixmap ground_;
    QPixmap notes_;
    bool focused_ = false;
};

/// What has to be painted anew when the place of the music is in `scene` or leaves it.
QRect OverviewPlaceRect(const OverviewGeometry& geometry, const OverviewScene& scene);

} // namespace tracksmith::forms
