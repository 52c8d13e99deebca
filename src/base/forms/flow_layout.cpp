#include "base/forms/flow_layout.h"

#include <algorithm>

#include <QWidget>

namespace tracksmith::forms {
namespace {

int HeightOf(const QList<QLayoutItem*>& row) {
    int height = 0;
    for (const QLayoutItem* item : row) {
        height = std::max(height, item->sizeHint().height());
    }
    return height;
}

} // namespace

FlowLayout::~FlowLayout() {
    qDeleteAll(items_);
}

QLayoutItem* FlowLayout::takeAt(int index) {
    return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr;
}

// The one that stretches can also be as narrow as it allows.
int FlowLayout::WidthOf(const QLayoutItem& item) const {
    const bool stretches = stretching_ != nullptr && item.widget() == stretching_;
    return stretches ? item.minimumSize().width() : item.sizeHint().width();
}

int FlowLayout::WidthOf(const Row& row) const {
    int width = 0;
    for (const QLayoutItem* item : row) {
        width += (width > 0 ? spacing() : 0) + WidthOf(*item);
    }
    return width;
}

QList<FlowLayout::Row> FlowLayout::Rows(int width) const {
    QList<Row> rows;
    for (QLayoutItem* item : items_) {
        if (item->isEmpty()) {
            continue; // hidden
        }
        if (rows.isEmpty() || WidthOf(rows.last() + Row{item}) > width) {
            rows.append(Row());
        }
        rows.last().append(item);
    }
    return rows;
}

int FlowLayout::LongestOf(const QList<Row>& rows) const {
    int longest = 0;
    for (const Row& row : rows) {
        longest = std::max(longest, WidthOf(row));
    }
    return longest;
}

// As many rows as there must be, but with the longest of them as short as possible.
QList<FlowLayout::Row> FlowLayout::EvenRows(int width) const {
    QList<Row> rows = Rows(width);
    for (;;) {
        const int longest = LongestOf(rows);
        const QList<Row> shorter = Rows(longest - 1);
        if (shorter.size() > rows.size() || LongestOf(shorter) >= longest) {
            return rows;
        }
        rows = shorter;
    }
}

int FlowLayout::Arrange(const QRect& rect, bool place) const {
    const QRect inside = rect.marginsRemoved(contentsMargins());
    int top = inside.top();
    for (const Row& row : EvenRows(inside.width())) {
        const int height = HeightOf(row);
        if (place) {
            Place(row, {inside.left(), top, inside.width(), height});
        }
        top += height + spacing();
    }
    return top - spacing() - rect.top() + contentsMargins().bottom();
}

void FlowLayout::Place(const Row& row, const QRect& rect) const {
    const auto found = std::ranges::find_if(
        row, [this](const QLayoutItem* item) { return item->widget() == stretching_; });
    const QLayoutItem* last = keepsWidths_ ? nullptr : row.last();
    const QLayoutItem* wide = found != row.end() ? *found : last;
    const int spare = std::max(0, rect.width() - WidthOf(row));
    int left = rect.left();
    for (QLayoutItem* item : row) {
        const int width = std::min(WidthOf(*item) + (item == wide ? spare : 0), rect.width());
        item->setGeometry({left, rect.top(), width, rect.height()});
        left += width + spacing();
    }
}

QSize FlowLayout::sizeHint() const {
    const QMargins margins = contentsMargins();
    return QSize(WidthOf(items_), HeightOf(items_)).grownBy(margins);
}

QSize FlowLayout::minimumSize() const {
    QSize least;
    for (const QLayoutItem* item : items_) {
        least = least.expandedTo(item->minimumSize());
    }
    return least.grownBy(contentsMargins());
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    Arrange(rect, true);
}

} // namespace tracksmith::forms
