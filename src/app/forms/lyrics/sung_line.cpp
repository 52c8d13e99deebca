#include "app/forms/lyrics/sung_line.h"

#include <algorithm>

#include "base/forms/theme.h"
#include <QApplication>

namespace tracksmith::forms {

SungLine::SungLine(const QString& text, int sung, const QFont& font, double width, Rows rows)
    : sung_(std::min(sung, static_cast<int>(text.size()))), layout_(text, font) {
    QTextOption option;
    option.setWrapMode(rows == Rows::One ? QTextOption::NoWrap
                                         : QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout_.setTextOption(option);
    layout_.beginLayout();
    double top = 0;
    for (QTextLine row = layout_.createLine(); row.isValid(); row = layout_.createLine()) {
        row.setLineWidth(width);
        const double indent = rows == Rows::One ? 0 : (width - row.naturalTextWidth()) / 2;
        row.setPosition({std::max(indent, 0.0), top});
        top += row.height();
    }
    layout_.endLayout();
}

double SungLine::Width() const {
    double width = 0;
    for (int row = 0; row < layout_.lineCount(); ++row) {
        width = std::max(width, layout_.lineAt(row).naturalTextWidth());
    }
    return width;
}

double SungLine::SungWidth() const {
    return layout_.lineCount() == 0 ? 0 : layout_.lineAt(0).cursorToX(sung_);
}

void SungLine::Paint(QPainter& painter, const QPointF& at, const QColor& rest) const {
    QTextLayout::FormatRange range;
    range.start = 0;
    range.length = sung_;
    range.format.setForeground(Accent(QApplication::palette()));
    painter.setPen(rest);
    layout_.draw(&painter, at, sung_ > 0 ? QList{range} : QList<QTextLayout::FormatRange>());
}

} // namespace tracksmith::forms
