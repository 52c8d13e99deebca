#include "base/forms/flat_header.h"

#include "base/forms/theme.h"
#include <QPainter>

namespace tracksmith::forms {

FlatHeader::FlatHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setHighlightSections(false);
    setSectionsClickable(false);
}

void FlatHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    painter->save();
    painter->fillRect(rect, palette().base());
    painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), Border(palette()));
    painter->setPen(DimText(palette()));
    const auto caption = model()->headerData(section, orientation(), Qt::DisplayRole).toString();
    const int alignment =
        model()->headerData(section, orientation(), Qt::TextAlignmentRole).toInt();
    const int margin = fontMetrics().averageCharWidth() / 2;
    painter->drawText(rect.adjusted(margin, 0, -margin, 0), alignment | Qt::TextSingleLine,
                      caption);
    painter->restore();
}

} // namespace tracksmith::forms
