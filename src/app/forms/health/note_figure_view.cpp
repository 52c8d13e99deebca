#include "app/forms/health/note_figure_view.h"

#include <algorithm>

#include "base/forms/theme.h"
#include <QPainter>

#include "app/forms/health/severity_icon.h"

namespace tracksmith::forms {

NoteFigureView::NoteFigureView(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void NoteFigureView::Show(const health::NoteFigure& figure, bool after, int channel) {
    constexpr int kLeastRows = 6;
    notes_ = after ? figure.after : figure.now;
    from_ = figure.from;
    to_ = std::max(figure.to, figure.from + 1);
    channel_ = channel;
    low_ = 127;
    high_ = 0;
    for (const health::FigureNote& note : figure.now) {
        low_ = std::min(low_, int{note.key});
        high_ = std::max(high_, int{note.key});
    }
    const int missing = std::max(0, kLeastRows - (high_ - low_ + 1));
    low_ -= missing / 2;
    high_ += missing - missing / 2;
    update();
}

QSize NoteFigureView::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 18, fontMetrics().height() * 5};
}

QRectF NoteFigureView::BarOf(const health::FigureNote& note, const QRectF& room) const {
    constexpr double kNarrowest = 3;
    const double row = room.height() / (high_ - low_ + 1);
    const auto x = [&](double tick) {
        return room.left() + room.width() * std::clamp((tick - from_) / (to_ - from_), 0.0, 1.0);
    };
    const double left = x(note.begin);
    const double right = std::max(x(note.end), left + kNarrowest);
    return {left, room.top() + (high_ - note.key) * row + row * 0.1, right - left, row * 0.8};
}

void NoteFigureView::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(Border(palette()));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(frame, CornerRadius(), CornerRadius());
    const QRectF room = frame.adjusted(4, 4, -4, -4);
    painter.setClipRect(room);
    const QColor colour = ChannelColour(channel_, palette());
    for (const health::FigureNote& note : notes_) {
        painter.setPen(note.changed ? QPen(SeverityColour(health::Severity::Warning, palette()), 2)
                                    : QPen(Qt::NoPen));
        painter.setBrush(colour);
        painter.drawRect(BarOf(note, room));
    }
}

} // namespace tracksmith::forms
