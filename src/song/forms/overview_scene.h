#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QColor>
#include <QIcon>
#include <QPalette>
#include <QRectF>
#include <QString>

#include "song/note_overview.h"

namespace tracksmith::forms {

/// A change of tempo or time signature in the overview's ruler.
struct OverviewMark {
    /// Place in ticks.
    std::int32_t tick = 0;
    QString text;
};

/// A sign at a place of the song that wants to be noticed.
struct OverviewFlag {
    /// Place in ticks.
    std::int32_t tick = 0;
    QIcon sign;
    QColor colour;
};

/// Where things stand in the overview, in logical pixels.
struct OverviewGeometry {
    /// Upper line: measure numbers; lower line: tempo and time signature.
    QRectF measureRuler;
    QRectF markRuler;
    /// Channel numbers.
    QRectF gutter;
    /// The cells: columns from left to right, channels in use from top to bottom.
    QRectF cells;
    std::size_t columns = 1;
    /// The channels (0-15) that have a row, in order.
    std::vector<int> channels;

    double ColumnWidth() const { return cells.width() / static_cast<double>(columns); }
    double RowHeight() const {
        return cells.height() / static_cast<double>(channels.empty() ? 1 : channels.size());
    }
    double X(double column) const { return cells.left() + column * ColumnWidth(); }
    /// Top of a row, counted from 0.
    double Y(std::size_t row) const { return cells.top() + static_cast<double>(row) * RowHeight(); }
    /// The column at `x`, the nearest one when `x` is outside.
    std::size_t ColumnAt(double x) const;
    /// The channel (0-15) at `y`, -1 outside the cells.
    int ChannelAt(double y) const;
};

/// All that the overview shows.
struct OverviewScene {
    song::NoteOverview notes;
    std::vector<OverviewMark> marks;
    /// Later ones are painted over earlier ones.
    std::vector<OverviewFlag> flags;
    /// Cursor and playhead are shown.
    bool placed = true;
    /// Column of the cursor.
    std::size_t cursor = 0;
    /// Channel brought out (0-15), -1 for none.
    int channel = -1;
    bool focused = false;
    /// Place of the music, in columns with fraction.
    double playhead = 0;
    /// Loop ends in columns with fraction; the end not after the start means none.
    double loopStart = 0;
    double loopEnd = 0;
    bool looping = false;
};

/// The lines above the notes.
enum class OverviewRulers { Measures, MeasuresAndMarks };

/// The geometry for a widget of `size` with a font of height `fontHeight`: a row for each channel
/// that has notes.
OverviewGeometry LayOutOverview(const QSizeF& size, double fontHeight,
                                const song::NoteOverview& notes,
                                OverviewRulers rulers = OverviewRulers::MeasuresAndMarks);

/// The column in which `tick` lies, with the fraction of the column before it.
double ColumnOfTick(const song::NoteOverview& notes, std::int32_t tick);

} // namespace tracksmith::forms
