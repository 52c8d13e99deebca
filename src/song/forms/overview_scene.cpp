#include "song/forms/overview_scene.h"

#include <algorithm>

namespace tracksmith::forms {

std::size_t OverviewGeometry::ColumnAt(double x) const {
    const double column = (x - cells.left()) / ColumnWidth();
    return static_cast<std::size_t>(std::clamp(column, 0.0, static_cast<double>(columns - 1)));
}

int OverviewGeometry::ChannelAt(double y) const {
    if (y < cells.top() || y >= cells.bottom() || channels.empty()) {
        return -1;
    }
    const auto row = static_cast<std::size_t>((y - cells.top()) / RowHeight());
    return channels[std::min(row, channels.size() - 1)];
}

OverviewGeometry LayOutOverview(const QSizeF& size, double fontHeight,
                                const song::NoteOverview& notes, OverviewRulers rulers) {
    const double margin = fontHeight / 2;
    const double gutter = fontHeight * 2;
    const QRectF inside = QRectF({0, 0}, size).adjusted(margin, margin / 4, -margin, -margin / 2);
    OverviewGeometry geometry;
    geometry.columns = std::max<std::size_t>(notes.Columns(), 1);
    for (std::size_t channel = 0; channel < notes.total.size(); ++channel) {
        if (notes.total[channel] > 0) {
            geometry.channels.push_back(static_cast<int>(channel));
        }
    }
    const int lines = rulers == OverviewRulers::Measures ? 1 : 2;
    geometry.cells = inside.adjusted(gutter, (lines + 0.2) * fontHeight, 0, 0);
    geometry.measureRuler = {geometry.cells.left(), inside.top(), geometry.cells.width(),
                             fontHeight};
    geometry.markRuler = geometry.measureRuler.translated(0, (lines - 1) * fontHeight);
    geometry.gutter = {inside.left(), geometry.cells.top(), gutter, geometry.cells.height()};
    return geometry;
}

double ColumnOfTick(const song::NoteOverview& notes, std::int32_t tick) {
    const auto& ticks = notes.columnTick;
    const std::size_t columns = notes.Columns();
    if (columns == 0 || ticks.size() <= columns || tick <= ticks.front()) {
        return 0;
    }
    const auto end = ticks.begin() + static_cast<std::ptrdiff_t>(columns);
    const auto next = std::upper_bound(ticks.begin(), end, tick);
    const auto column = static_cast<std::size_t>(next - ticks.begin()) - 1;
    const double length = std::max(1.0, static_cast<double>(ticks[column + 1]) - ticks[column]);
    const double within = (static_cast<double>(tick) - ticks[column]) / length;
    return static_cast<double>(column) + std::min(within, 1.0);
}

} // namespace tracksmith::forms
