#pragma once

#include "base/text.h"
#include <QWidget>

#include "song/forms/overview_layers.h"
#include "song/forms/overview_scene.h"

namespace tracksmith::forms {

/// Notes per channel and measure of the whole song with a ruler. A cursor marks one column (a
/// measure, or several in a very long song); keys and the mouse move it.
class OverviewWidget : public QWidget {
    Q_OBJECT

public:
    explicit OverviewWidget(QWidget* parent = nullptr);

    /// Shows another song; the cursor goes to its start.
    void SetSong(song::NoteOverview notes, std::vector<OverviewMark> marks);

    /// Shows signs at places of the song, in place of those before.
    void SetFlags(std::vector<OverviewFlag> flags);

    /// Brings out one channel (0-15); -1 for none.
    void SetChannel(int channel);

    /// Shows the place of the music; the cursor goes to its column.
    void ShowPlace(std::int32_t tick);

    /// Shows the loop between two ticks; none when they are equal.
    void ShowLoop(std::int32_t startTick, std::int32_t endTick, bool on);

    /// Moves the cursor as the user does; beyond the song it stops at the first or last column.
    void SetCursorColumn(std::int64_t column);

    std::int64_t CursorColumn() const { return static_cast<std::int64_t>(scene_.cursor); }
    std::int64_t ColumnCount() const;
    std::int64_t MeasuresPerColumn() const { return scene_.notes.measuresPerColumn; }
    /// Start of the cursor's column in ticks.
    std::int32_t CursorTick() const;
    /// First measure of the cursor's column, from 1.
    std::int64_t CursorMeasure() const;
    /// Notes in the cursor's column: of the channel brought out, else of all.
    std::int64_t CursorNotes() const;
    /// The cursor's measure and notes in words.
    QString CursorText() const;

    OverviewGeometry Geometry() const;
    void Retranslate(Language language);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The user went to a place.
    void PlaceChosen(std::int32_t tick);
    /// The user drew a loop over whole columns.
    void LoopChosen(std::int32_t startTick, std::int32_t endTick);

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QString ColumnText(std::size_t column) const;
    QString HoverText(const QPointF& at) const;
    void MovePlace(std::size_t column, double place);
    void PaintAnew();
    void TellCursor();
    std::int64_t ColumnAt(const QMouseEvent& event) const;

    OverviewScene scene_;
    OverviewLayers layers_;
    /// Column in which the mouse was pressed, and whether it has left it since.
    std::int64_t pressedColumn_ = -1;
    bool dragging_ = false;
    Language language_ = Language::English;
};

} // namespace tracksmith::forms
