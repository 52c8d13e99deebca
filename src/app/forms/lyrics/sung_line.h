#pragma once

#include <QPainter>
#include <QTextLayout>

namespace tracksmith::forms {

/// A line of words whose sung part is coloured, laid out in as many rows as it needs.
class SungLine {
public:
    /// How the rows are laid out.
    enum class Rows {
        One,     ///< all in one, however long
        Centred, ///< rows end between words at the width, each centred in it
    };

    /// The first `sung` characters of `text` are painted in the accent colour.
    SungLine(const QString& text, int sung, const QFont& font, double width, Rows rows);

    int RowCount() const { return layout_.lineCount(); }
    double Height() const { return layout_.boundingRect().height(); }
    /// Width of the widest row.
    double Width() const;
    /// Where the sung part of the first row ends.
    double SungWidth() const;

    /// Paints it with its upper left corner at `at`, what is not sung in `rest`.
    void Paint(QPainter& painter, const QPointF& at, const QColor& rest) const;

private:
    int sung_;
    QTextLayout layout_;
};

} // namespace tracksmith::forms
