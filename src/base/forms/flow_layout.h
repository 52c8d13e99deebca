#pragma once

#include <QLayout>

namespace tracksmith::forms {

/// Widgets from left to right in as few rows as they fit into, the rows about equally long and each
/// as high as its highest widget. The widget that stretches takes what is left of its row, in other
/// rows the last one does unless widths are kept.
class FlowLayout : public QLayout {
    Q_OBJECT

public:
    explicit FlowLayout(QWidget* parent) : QLayout(parent) {}
    ~FlowLayout() override;

    /// A widget of the layout that takes the width left over.
    void SetStretching(const QWidget* widget) { stretching_ = widget; }

    /// Rows without a widget that stretches end where their widgets do.
    void KeepWidths() { keepsWidths_ = true; }

    void addItem(QLayoutItem* item) override { items_.append(item); }
    int count() const override { return static_cast<int>(items_.size()); }
    QLayoutItem* itemAt(int index) const override { return items_.value(index); }
    QLayoutItem* takeAt(int index) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return Arrange({0, 0, width, 0}, false); }
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    using Row = QList<QLayoutItem*>;

    int WidthOf(const QLayoutItem& item) const;
    int WidthOf(const Row& row) const;
    int LongestOf(const QList<Row>& rows) const;
    QList<Row> Rows(int width) const;
    QList<Row> EvenRows(int width) const;
    int Arrange(const QRect& rect, bool place) const;
    void Place(const Row& row, const QRect& rect) const;

    QList<QLayoutItem*> items_;
    const QWidget* stretching_ = nullptr;
    bool keepsWidths_ = false;
};

} // namespace tracksmith::forms
