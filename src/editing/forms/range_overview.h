#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <QColor>
#include <QWidget>

#include "song/forms/overview_scene.h"
#include "song/note_overview.h"

namespace tracksmith::forms {

/// A stretch of the song that is brought out in an overview; ticks.
struct RangeMark {
    std::int32_t startTick = 0;
    std::int32_t endTick = 0;
    QColor colour;
    /// What is going to be cut out.
    bool hatched = false;
    QString label;
};

/// A place that is brought out by a line; in ticks.
struct PlaceMark {
    std::int32_t tick = 0;
    QColor colour;
    /// With an arrow from the end of the stretch.
    bool arrow = false;
};

/// An overview of the notes with a stretch whose edges can be dragged.
class RangeOverview : public QWidget {
    Q_OBJECT

public:
    RangeOverview(const char* objectName, QWidget* parent);

    /// Shows a song, `columns` wide: songs of different lengths to one scale.
    void SetSong(song::NoteOverview notes, std::size_t columns);
    std::size_t Columns() const { return scene_.notes.Columns(); }
    void SetScale(std::size_t columns);

    void ShowRange(const std::optional<RangeMark>& range);
    void ShowLine(const std::optional<PlaceMark>& line);
    /// The place of the music.
    void ShowPlace(std::int32_t tick);
    /// What stands behind the song where that is shorter than the scale.
    void SetRest(const QString& text);
    /// The edges of the stretch can be dragged, a click goes to a place.
    void SetDraggable(bool draggable);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// An edge has been dragged to the beginning of another measure.
    void RangeDragged(std::int32_t startTick, std::int32_t endTick);
    void PlaceChosen(std::int32_t tick);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    enum class Grip { None, Start, End, Fresh };

    OverviewGeometry Geometry() const;
    double X(std::int32_t tick) const;
    std::int32_t TickAt(double x) const;
    Grip GripAt(double x) const;
    void Drag(std::int32_t tick);
    void PaintRange(QPainter& painter) const;
    void PaintLabel(QPainter& painter, double left, double right) const;
    void PaintLine(QPainter& painter) const;
    void PaintRest(QPainter& painter) const;

    OverviewScene scene_;
    std::size_t columns_ = 1;
    std::optional<RangeMark> range_;
    std::optional<PlaceMark> line_;
    QString rest_;
    bool draggable_ = false;
    Grip grip_ = Grip::None;
    bool dragged_ = false;
    /// The end of the stretch that stays while the other is dragged.
    std::int32_t fixedTick_ = 0;
};

} // namespace tracksmith::forms
