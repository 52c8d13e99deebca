#include "editing/forms/figure_lines.h"

#include <algorithm>

#include "base/forms/labels.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QResizeEvent>
#include <QVBoxLayout>

#include "editing/forms/range_colours.h"

namespace tracksmith::forms {

FigureLines::FigureLines(QWidget* parent)
    : Panel(QPalette::Button, parent),
      head_(new QHBoxLayout),
      title_(NewLabel("Lbl_FiguresTitle", this)),
      lines_(NewLabel("Lbl_Figures", this)) {
    QFont bold = title_->font();
    bold.setBold(true);
    title_->setFont(bold);
    lines_->setTextFormat(Qt::RichText);
    lines_->setWordWrap(true);
    lines_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    head_->addWidget(title_, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Gap() * 3 / 2, Gap(), Gap() * 3 / 2, Gap());
    column->addLayout(head_);
    column->addWidget(lines_, 1);
    setMinimumWidth(fontMetrics().averageCharWidth() * 36);
}

void FigureLines::Show(const QString& title, const std::vector<Line>& lines, const More& more) {
    title_->setText(title);
    text_.clear();
    QString rows;
    for (const Line& line : lines) {
        text_ += line.text + u'\n';
        rows += QStringLiteral(
                    "<tr><td style=\"color:%1\">\u25A0&nbsp;</td><td "
                    "style=\"padding-bottom:%2px\">%3</td></tr>")
                    .arg(line.colour.name())
                    .arg(Gap() / 2)
                    .arg(line.text.toHtmlEscaped());
    }
    lines_->setText(QStringLiteral("<table cellspacing=\"0\">") + rows +
                    QStringLiteral("</table>") + MoreText(more));
    lines_->setAccessibleName(text_);
    MakeRoom();
}

void FigureLines::resizeEvent(QResizeEvent* event) {
    Panel::resizeEvent(event);
    MakeRoom();
}

// For all lines at the width that they have.
void FigureLines::MakeRoom() {
    const QMargins margins = layout()->contentsMargins();
    const int wide = width() - margins.left() - margins.right();
    lines_->setMinimumHeight(wide > 0 ? std::max(lines_->heightForWidth(wide), 0) : 0);
}

// In the colour of captions, what becomes of it in that of what is new.
QString FigureLines::MoreText(const More& more) {
    if (more.text.isEmpty()) {
        return {};
    }
    text_ += more.caption.isEmpty() ? more.text : more.caption + QStringLiteral(": ") + more.text;
    QString words = more.text.toHtmlEscaped();
    if (!more.caption.isEmpty()) {
        words = more.caption.toHtmlEscaped() + QStringLiteral("<br>") + words;
    }
    QString rows =
        QStringLiteral("<p style=\"color:%1\">%2</p>").arg(DimText(palette()).name(), words);
    if (!more.after.isEmpty()) {
        text_ += QStringLiteral(" → ") + more.after;
        rows += QStringLiteral("<p style=\"color:%1\">→ <b>%2</b></p>")
                    .arg(NewTextColour(palette()).name(), more.after.toHtmlEscaped());
    }
    text_ += u'\n';
    return rows;
}

QString FigureLines::Text() const {
    return text_;
}

} // namespace tracksmith::forms
