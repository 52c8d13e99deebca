#include "app/forms/overview/overview_widget.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/forms/qt_text.h"
#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include "app/forms/overview/overview_accessible.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
OverviewWidget::OverviewWidget(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Overview"));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    InstallOverviewAccessibility();
}

void OverviewWidget::SetSong(song::NoteOverview notes, std::vector<OverviewMark> marks) {
    scene_.notes = std::move(notes);
    scene_.marks = std::move(marks);
    scene_.cursor = 0;
    scene_.playhead = 0;
    scene_.loopStart = scene_.loopEnd = 0;
    pressedColumn_ = -1;
    PaintAnew();
    TellCursor();
}

void OverviewWidget::SetFlags(std::vector<OverviewFlag> flags) {
    constexpr double kNear = 0.125; // columns
    scene_.flags.clear();
    double last = 0;
    for (OverviewFlag& flag : flags) {
        const double column = ColumnOfTick(scene_.notes, flag.tick);
        const bool covers = !scene_.flags.empty() && scene_.flags.back().colour == flag.colour &&
                            std::abs(column - last) < kNear;
        if (!covers) {
            last = column;
            scene_.flags.push_back(std::move(flag));
        }
    }
    PaintAnew();
}

void OverviewWidget::SetChannel(int channel) {
    scene_.channel = channel;
    PaintAnew();
    TellCursor();
}

void OverviewWidget::ShowPlace(std::int32_t tick) {
    const double place = ColumnOfTick(scene_.notes, tick);
    const auto last = static_cast<std::size_t>(std::max<std::int64_t>(ColumnCount() - 1, 0));
    const std::size_t column = std::min(static_cast<std::size_t>(place), last);
    const bool entered = column != scene_.cursor;
    const double width = Geometry().ColumnWidth();
    const bool moved = std::floor(place * width) != std::floor(scene_.playhead * width);
    if (!entered && !moved) {
        scene_.playhead = place;
        return;
    }
    MovePlace(column, place);
    if (entered) {
        TellCursor();
    }
}

// Paints only where the place was and is, since this comes thirty times a second.
void OverviewWidget::MovePlace(std::size_t column, double place) {
    const OverviewGeometry geometry = Geometry();
    update(OverviewPlaceRect(geometry, scene_));
    scene_.playhead = place;
    scene_.cursor = column;
    update(OverviewPlaceRect(geometry, scene_));
}

void OverviewWidget::PaintAnew() {
    layers_.Forget();
    update();
}

void OverviewWidget::ShowLoop(std::int32_t startTick, std::int32_t endTick, bool on) {
    scene_.loopStart = ColumnOfTick(scene_.notes, startTick);
    scene_.loopEnd = ColumnOfTick(scene_.notes, endTick);
    scene_.looping = on;
    PaintAnew();
}

void OverviewWidget::SetCursorColumn(std::int64_t column) {
    const std::int64_t last = std::max<std::int64_t>(ColumnCount() - 1, 0);
    const auto wanted = static_cast<std::size_t>(std::clamp<std::int64_t>(column, 0, last));
    MovePlace(wanted, static_cast<double>(wanted));
    TellCursor();
    emit PlaceChosen(CursorTick());
}

// A screen reader is told which measure the cursor has entered.
void OverviewWidget::TellCursor() {
    QAccessibleValueChangeEvent changed(this, static_cast<qlonglong>(CursorMeasure()));
    QAccessible::updateAccessibility(&changed);
}

std::int64_t OverviewWidget::ColumnCount() const {
    return static_cast<std::int64_t>(scene_.notes.Columns());
}

std::int32_t OverviewWidget::CursorTick() const {
    const auto& ticks = scene_.notes.columnTick;
    return scene_.cursor < ticks.size() ? ticks[scene_.cursor] : 0;
}

std::int64_t OverviewWidget::CursorMeasure() const {
    return CursorColumn() * scene_.notes.measuresPerColumn + 1;
}

std::int64_t OverviewWidget::CursorNotes() const {
    std::int64_t sum = 0;
    for (int channel = 0; channel < 16; ++channel) {
        const auto& counts = scene_.notes.notes[static_cast<std::size_t>(channel)];
        if (scene_.cursor < counts.size() && (scene_.channel < 0 || scene_.channel == channel)) {
            sum += counts[scene_.cursor];
        }
    }
    return sum;
}

QString OverviewWidget::ColumnText(std::size_t column) const {
    const std::int64_t width = scene_.notes.measuresPerColumn;
    const std::int64_t first = static_cast<std::int64_t>(column) * width + 1;
    const std::int64_t last = std::min(first + width - 1, scene_.notes.measures);
    return texts::MeasureName(first, std::max(first, last), language_);
}

QString OverviewWidget::CursorText() const {
    QString text = ColumnText(scene_.cursor);
    if (scene_.channel >= 0) {
        text += QStringLiteral(" · ") + texts::ChannelName(scene_.channel, language_);
    }
    return text + QStringLiteral(" · ") + texts::NoteCount(CursorNotes(), language_);
}

QString OverviewWidget::HoverText(const QPointF& at) const {
    const OverviewGeometry geometry = Geometry();
    const std::size_t column = geometry.ColumnAt(at.x());
    const int channel = geometry.ChannelAt(at.y());
    const bool counted = channel >= 0 && column < scene_.notes.Columns();
    if (!counted) {
        return ColumnText(column);
    }
    const std::int64_t notes = scene_.notes.notes[static_cast<std::size_t>(channel)][column];
    return QStringList{ColumnText(column), texts::ChannelName(channel, language_),
                       texts::NoteCount(notes, language_)}
        .join(QStringLiteral(" · "));
}

OverviewGeometry OverviewWidget::Geometry() const {
    return LayOutOverview(size(), fontMetrics().height(), scene_.notes);
}

void OverviewWidget::Retranslate(Language language) {
    language_ = language;
    setAccessibleName(InLanguage(texts::kOverview, language));
    setAccessibleDescription(InLanguage(texts::kOverviewHint, language));
}

QSize OverviewWidget::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 120, fontMetrics().height() * 7};
}

QSize OverviewWidget::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 40, fontMetrics().height() * 5};
}

bool OverviewWidget::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), HoverText(help->pos()), this);
        return true;
    }
    return QWidget::event(event);
}

void OverviewWidget::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    scene_.focused = hasFocus();
    QPainter painter(this);
    layers_.Paint(painter, *this, Geometry(), scene_);
}

void OverviewWidget::changeEvent(QEvent* event) {
    layers_.Forget(); // colours or font
    QWidget::changeEvent(event);
}

void OverviewWidget::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            return SetCursorColumn(CursorColumn() - 1);
        case Qt::Key_Right:
            return SetCursorColumn(CursorColumn() + 1);
        default:
            QWidget::keyPressEvent(event);
    }
}

std::int64_t OverviewWidget::ColumnAt(const QMouseEvent& event) const {
    return static_cast<std::int64_t>(Geometry().ColumnAt(event.position().x()));
}

void OverviewWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        pressedColumn_ = ColumnAt(*event);
        dragging_ = false;
    }
}

// A drag shows the loop that it would make, over whole columns.
void OverviewWidget::mouseMoveEvent(QMouseEvent* event) {
    const std::int64_t column = ColumnAt(*event);
    if ((event->buttons() & Qt::LeftButton) == 0 || pressedColumn_ < 0 ||
        (column == pressedColumn_ && !dragging_)) {
        return;
    }
    dragging_ = true;
    scene_.loopStart = static_cast<double>(std::min(column, pressedColumn_));
    scene_.loopEnd = static_cast<double>(std::max(column, pressedColumn_) + 1);
    scene_.looping = true;
    PaintAnew();
}

void OverviewWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || pressedColumn_ < 0) {
        return;
    }
    const std::int64_t column = ColumnAt(*event);
    if (dragging_) {
        const auto& ticks = scene_.notes.columnTick;
        emit LoopChosen(ticks[static_cast<std::size_t>(std::min(column, pressedColumn_))],
                        ticks[static_cast<std::size_t>(std::max(column, pressedColumn_) + 1)]);
    } else {
        SetCursorColumn(column);
    }
    pressedColumn_ = -1;
    dragging_ = false;
}

} // namespace tracksmith::forms
