#include "song/forms/overview_painter.h"

#include <algorithm>
#include <cmath>

#include "base/forms/theme.h"
#include <QFontMetricsF>

namespace tracksmith::forms {
namespace {

/// Rows of channels that are not brought out, while one is.
constexpr double kBackground = 0.3;

/// Width in pixels of the loop's bracket and of the playhead.
constexpr double kBracket = 2;

/// Share of a line of text that a row must have for its channel's number.
constexpr double kReadable = 0.9;

/// Height in pixels of the tick at a change of tempo or time signature.
constexpr double kMarkHeight = 3;

class OverviewPainter {
public:
    OverviewPainter(QPainter& painter, const OverviewGeometry& geometry, const OverviewScene& scene,
                    const QPalette& palette)
        : p_(painter), g_(geometry), s_(scene), palette_(palette) {}

    void PaintCursorGround() const {
        QColor ground = Accent(palette_);
        ground.setAlphaF(0.22F);
        p_.fillRect(CursorRect(), ground);
    }

    void PaintLoop() const {
        if (s_.loopEnd <= s_.loopStart) {
            return;
        }
        const double left = std::floor(g_.X(s_.loopStart));
        const double right = std::ceil(g_.X(s_.loopEnd));
        QColor colour = s_.looping ? Accent(palette_) : DimText(palette_);
        const double top = g_.measureRuler.top();
        const double height = g_.cells.bottom() - top;
        for (const double x : {left, right - kBracket}) {
            p_.fillRect(QRectF(x, top, kBracket, height), colour);
        }
        p_.fillRect(QRectF(left, top, right - left, kBracket), colour);
        colour.setAlphaF(s_.looping ? 0.14F : 0.05F);
        p_.fillRect(QRectF(left, top, right - left, height), colour);
    }

    void PaintPlayhead() const {
        const double x = std::floor(g_.X(s_.playhead));
        p_.fillRect(
            QRectF(x, g_.measureRuler.top(), kBracket, g_.cells.bottom() - g_.measureRuler.top()),
            palette_.color(QPalette::BrightText));
    }

    void PaintMeasures() const {
        p_.setPen(DimText(palette_));
        const std::int64_t step = MeasureStep();
        for (std::int64_t column = 0; column < static_cast<std::int64_t>(g_.columns);
             column += step) {
            const double x = g_.X(static_cast<double>(column));
            const auto number = QString::number(column * s_.notes.measuresPerColumn + 1);
            p_.drawText(QRectF(x + 4, g_.measureRuler.top(), 0, g_.measureRuler.height()),
                        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, number);
        }
    }

    // Every change gets a tick; its text only where it does not run into the one before.
    void PaintMarks() const {
        double freeFrom = g_.markRuler.left();
        const double gap = p_.fontMetrics().averageCharWidth();
        for (const OverviewMark& mark : s_.marks) {
            const double x = g_.X(ColumnOfTick(s_.notes, mark.tick));
            p_.fillRect(QRectF(std::floor(x), g_.markRuler.bottom(), 2, kMarkHeight),
                        Accent(palette_));
            const double width = QFontMetricsF(p_.font()).horizontalAdvance(mark.text);
            if (x < freeFrom || x + gap + width > g_.markRuler.right()) {
                continue;
            }
            p_.setPen(palette_.color(QPalette::Text));
            p_.drawText(QRectF(x + 4, g_.markRuler.top(), 0, g_.markRuler.height()),
                        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, mark.text);
            freeFrom = x + width + 2 * gap;
        }
    }

    // One of each colour where several would lie on each other.
    void PaintFlags() const {
        const double side = g_.markRuler.height();
        double last = -side;
        QColor colour;
        for (const OverviewFlag& flag : s_.flags) {
            const double x = std::floor(g_.X(ColumnOfTick(s_.notes, flag.tick)));
            if (flag.colour == colour && std::abs(x - last) < side / 4) {
                continue;
            }
            last = x;
            colour = flag.colour;
            QColor line = flag.colour;
            line.setAlphaF(0.6F);
            p_.fillRect(
                QRectF(x, g_.markRuler.bottom(), 1, g_.cells.bottom() - g_.markRuler.bottom()),
                line);
            flag.sign.paint(&p_, QRectF(x - side / 2, g_.markRuler.top(), side, side).toRect());
        }
    }

    // The number only where the row is high enough to read it.
    void PaintGutter(std::size_t index) const {
        const QRectF row(g_.gutter.left(), g_.Y(index), g_.gutter.width(), g_.RowHeight());
        const int channel = g_.channels[index];
        const double side = std::min(row.height(), row.width() / 4);
        p_.fillRect(QRectF(row.left(), std::round(row.top()), side,
                           std::max(1.0, std::round(row.height()) - 1)),
                    ChannelColour(channel, palette_));
        if (row.height() < kReadable * p_.fontMetrics().height()) {
            return;
        }
        p_.setPen(DimText(palette_));
        p_.drawText(row.adjusted(0, 0, -row.width() / 6, 0),
                    Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip,
                    QString::number(channel + 1));
    }

    void PaintRow(std::size_t row) const {
        const int channel = g_.channels[row];
        const auto& counts = s_.notes.notes[static_cast<std::size_t>(channel)];
        const double most = counts.empty() ? 0 : *std::max_element(counts.begin(), counts.end());
        QColor colour = ChannelColour(channel, palette_);
        // Cells narrower than a pixel share it: the fullest one is seen.
        for (std::size_t at = 0; at < counts.size();) {
            const double left = std::floor(g_.X(static_cast<double>(at)));
            std::uint32_t count = counts[at++];
            while (at < counts.size() && g_.X(static_cast<double>(at)) < left + 1) {
                count = std::max(count, counts[at++]);
            }
            if (count > 0) {
                colour.setAlphaF(Strength(channel, count / most));
                p_.fillRect(Cell(row, left, std::floor(g_.X(static_cast<double>(at)))), colour);
            }
        }
    }

private:
    // Measures between two numbers: 1, 2, 4, 8 ... columns, so that no two texts touch.
    std::int64_t MeasureStep() const {
        const auto last = QString::number(s_.notes.measures);
        const double needed = QFontMetricsF(p_.font()).horizontalAdvance(last) * 1.6 + 8;
        std::int64_t step = 1;
        while (static_cast<double>(step) * g_.ColumnWidth() < needed) {
            step *= 2;
        }
        return step;
    }

    float Strength(int channel, double share) const {
        const double own = 0.4 + 0.6 * std::sqrt(share);
        return static_cast<float>(s_.channel < 0 || s_.channel == channel ? own
                                                                          : own * kBackground);
    }

    QRectF Cell(std::size_t row, double left, double right) const {
        const double gap = right - left >= 4 ? 1 : 0;
        const double top = std::round(g_.Y(row));
        const double height = std::round(g_.Y(row + 1)) - top;
        return {left, top, std::max(1.0, right - left - gap), std::max(1.0, height - 1)};
    }

    QRectF CursorRect() const {
        const double left = std::floor(g_.X(static_cast<double>(s_.cursor)));
        return {left, g_.measureRuler.top(), std::max(2.0, g_.ColumnWidth()),
                g_.cells.bottom() - g_.measureRuler.top()};
    }

    QPainter& p_;
    const OverviewGeometry& g_;
    const OverviewScene& s_;
    const QPalette& palette_;
};

} // namespace

void PaintOverviewGround(QPainter& painter, const QRectF& rect, const OverviewScene& scene,
                         const QPalette& palette) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(scene.focused ? Accent(palette) : Border(palette));
    painter.setBrush(palette.base());
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), CornerRadius(), CornerRadius());
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void PaintOverviewCursor(QPainter& painter, const OverviewGeometry& geometry,
                         const OverviewScene& scene, const QPalette& palette) {
    if (scene.placed) {
        OverviewPainter(painter, geometry, scene, palette).PaintCursorGround();
    }
}

void PaintOverviewNotes(QPainter& painter, const OverviewGeometry& geometry,
                        const OverviewScene& scene, const QPalette& palette) {
    const OverviewPainter parts(painter, geometry, scene, palette);
    parts.PaintLoop();
    parts.PaintMeasures();
    parts.PaintMarks();
    parts.PaintFlags();
    painter.setFont(ScaledFont(painter.font(), 0.7));
    for (std::size_t row = 0; row < geometry.channels.size(); ++row) {
        parts.PaintGutter(row);
        parts.PaintRow(row);
    }
}

void PaintOverviewPlayhead(QPainter& painter, const OverviewGeometry& geometry,
                           const OverviewScene& scene, const QPalette& palette) {
    if (scene.placed) {
        OverviewPainter(painter, geometry, scene, palette).PaintPlayhead();
    }
}

void PaintOverview(QPainter& painter, const OverviewGeometry& geometry, const OverviewScene& scene,
                   const QPalette& palette) {
    PaintOverviewGround(painter, painter.viewport(), scene, palette);
    PaintOverviewCursor(painter, geometry, scene, palette);
    PaintOverviewNotes(painter, geometry, scene, palette);
    PaintOverviewPlayhead(painter, geometry, scene, palette);
}

} // namespace tracksmith::forms
