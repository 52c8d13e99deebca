#include "editing/forms/range_overview.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/forms/theme.h"
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include "mixer/forms/strip_colours.h"
#include "song/forms/overview_painter.h"

namespace tracksmith::forms {
namespace {

/// How far beside an edge, in logical pixels, it can still be taken hold of.
constexpr double kReach = 8;

/// Half of an arrow head's width, and the width of an edge's handle.
constexpr double kHead = 5;
constexpr double kHandle = 8;

} // namespace

RangeOverview::RangeOverview(const char* objectName, QWidget* parent) : QWidget(parent) {
    setObjectName(QLatin1String(objectName));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    scene_.placed = false;
}

void RangeOverview::SetSong(song::NoteOverview notes, std::size_t columns) {
    scene_.notes = std::move(notes);
    SetScale(columns);
}

void RangeOverview::SetScale(std::size_t columns) {
    columns_ = std::max(columns, Columns());
    update();
}

void RangeOverview::ShowRange(const std::optional<RangeMark>& range) {
    range_ = range;
    update();
}

void RangeOverview::ShowLine(const std::optional<PlaceMark>& line) {
    line_ = line;
    update();
}

void RangeOverview::ShowPlace(std::int32_t tick) {
    const double place = ColumnOfTick(scene_.notes, tick);
    const double width = Geometry().ColumnWidth();
    if (!scene_.placed || std::floor(place * width) != std::floor(scene_.playhead * width)) {
        update();
    }
    scene_.placed = true;
    scene_.playhead = place;
    scene_.cursor = static_cast<std::size_t>(place);
}

void RangeOverview::SetRest(const QString& text) {
    rest_ = text;
    update();
}

void RangeOverview::SetDraggable(bool draggable) {
    draggable_ = draggable;
    setMouseTracking(draggable);
}

QSize RangeOverview::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 80, fontMetrics().height() * (draggable_ ? 7 : 5)};
}

QSize RangeOverview::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 40, fontMetrics().height() * (draggable_ ? 5 : 3)};
}

OverviewGeometry RangeOverview::Geometry() const {
    OverviewGeometry geometry =
        LayOutOverview(size(), fontMetrics().height(), scene_.notes, OverviewRulers::Measures);
    geometry.columns = std::max(columns_, geometry.columns);
    return geometry;
}

double RangeOverview::X(std::int32_t tick) const {
    return Geometry().X(ColumnOfTick(scene_.notes, tick));
}

// The beginning of a measure, the nearest one.
std::int32_t RangeOverview::TickAt(double x) const {
    const OverviewGeometry geometry = Geometry();
    const double column = std::round((x - geometry.cells.left()) / geometry.ColumnWidth());
    const auto& ticks = scene_.notes.columnTick;
    const double last = static_cast<double>(ticks.size()) - 1;
    return ticks.empty() ? 0 : ticks[static_cast<std::size_t>(std::clamp(column, 0.0, last))];
}

RangeOverview::Grip RangeOverview::GripAt(double x) const {
    if (!draggable_) {
        return Grip::None;
    }
    if (range_) {
        const double start = std::abs(x - X(range_->startTick));
        const double end = std::abs(x - X(range_->endTick));
        if (std::min(start, end) <= kReach) {
            return start < end ? Grip::Start : Grip::End;
        }
    }
    return Grip::Fresh;
}

void RangeOverview::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    grip_ = GripAt(event->position().x());
    dragged_ = false;
    fixedTick_ = grip_ == Grip::Start ? range_->endTick
                 : grip_ == Grip::End ? range_->startTick
                                      : TickAt(event->position().x());
}

void RangeOverview::mouseMoveEvent(QMouseEvent* event) {
    const double x = event->position().x();
    if ((event->buttons() & Qt::LeftButton) != 0 && grip_ != Grip::None) {
        Drag(TickAt(x));
        return;
    }
    const Grip grip = GripAt(x);
    setCursor(grip == Grip::Start || grip == Grip::End ? Qt::SizeHorCursor : Qt::ArrowCursor);
}

void RangeOverview::Drag(std::int32_t tick) {
    if (tick == fixedTick_) {
        return; // an empty stretch
    }
    dragged_ = true;
    const auto [start, end] = std::minmax(tick, fixedTick_);
    if (!range_ || range_->startTick != start || range_->endTick != end) {
        emit RangeDragged(start, end);
    }
}

void RangeOverview::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && grip_ == Grip::Fresh && !dragged_) {
        emit PlaceChosen(fixedTick_);
    }
    grip_ = Grip::None;
}

void RangeOverview::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    const QFont usual = painter.font();
    PaintOverview(painter, Geometry(), scene_, palette());
    painter.setFont(usual);
    PaintRest(painter);
    PaintLine(painter);
    PaintRange(painter);
}

void RangeOverview::PaintRange(QPainter& painter) const {
    if (!range_) {
        return;
    }
    const OverviewGeometry geometry = Geometry();
    const double left = std::floor(X(range_->startTick));
    const double right = std::max(left + 2, std::ceil(X(range_->endTick)));
    const QRectF area(left, geometry.cells.top(), right - left, geometry.cells.height());
    QColor ground = range_->colour;
    ground.setAlphaF(0.16F);
    painter.fillRect(area, ground);
    if (range_->hatched) {
        ground.setAlphaF(0.7F);
        painter.fillRect(area, QBrush(ground, Qt::BDiagPattern));
    }
    painter.setPen(QPen(range_->colour, 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(area);
    PaintLabel(painter, left, right);
    if (draggable_) {
        const double height = std::min(area.height() / 2, kHandle * 3);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(range_->colour);
        for (const double x : {left, right}) {
            painter.drawRoundedRect(
                QRectF(x - kHandle / 2, area.center().y() - height / 2, kHandle, height), 3, 3);
        }
    }
}

// Over the ruler; wider than a short stretch where its text needs it.
void RangeOverview::PaintLabel(QPainter& painter, double left, double right) const {
    const OverviewGeometry geometry = Geometry();
    const double needed = painter.fontMetrics().horizontalAdvance(range_->label) + 8;
    QRectF label(left, geometry.measureRuler.top(), right - left, geometry.measureRuler.height());
    if (label.width() < needed) {
        label.setLeft(label.center().x() - needed / 2);
        label.setWidth(needed);
        label.moveLeft(std::clamp(label.left(), geometry.cells.left(),
                                  std::max(geometry.cells.left(), width() - needed)));
    }
    painter.fillRect(label, range_->colour);
    painter.setPen(TextOn(range_->colour));
    painter.drawText(label, Qt::AlignCenter | Qt::TextDontClip, range_->label);
}

void RangeOverview::PaintLine(QPainter& painter) const {
    if (!line_) {
        return;
    }
    const OverviewGeometry geometry = Geometry();
    const double x = std::floor(X(line_->tick));
    const double top = geometry.measureRuler.top();
    painter.fillRect(QRectF(x - 1, top, 2, geometry.cells.bottom() - top), line_->colour);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(line_->colour);
    painter.drawPolygon(QPolygonF{{x - kHead, top}, {x + kHead, top}, {x, top + kHead * 1.6}});
    if (line_->arrow && range_) {
        const QPointF from((X(range_->startTick) + X(range_->endTick)) / 2,
                           geometry.cells.center().y());
        const QPointF to(x, geometry.cells.center().y());
        QPainterPath arc(from);
        arc.quadTo({(from.x() + to.x()) / 2, geometry.cells.top() - geometry.cells.height() / 3},
                   to);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(line_->colour, 1.5, Qt::DashLine));
        painter.drawPath(arc);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void RangeOverview::PaintRest(QPainter& painter) const {
    const OverviewGeometry geometry = Geometry();
    const double left = std::ceil(geometry.X(static_cast<double>(Columns())));
    if (rest_.isEmpty() || left >= geometry.cells.right() - 1) {
        return;
    }
    painter.fillRect(QRectF(left, geometry.measureRuler.top(), geometry.cells.right() - left,
                            geometry.cells.bottom() - geometry.measureRuler.top()),
                     palette().color(QPalette::Window));
    painter.setPen(DimText(palette()));
    const QRectF text(left, geometry.cells.top(), geometry.cells.right() - left,
                      geometry.cells.height());
    if (painter.fontMetrics().horizontalAdvance(rest_) + 4 < text.width()) {
        painter.drawText(text, Qt::AlignCenter, rest_);
    }
}

} // namespace tracksmith::forms
