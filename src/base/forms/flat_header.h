#pragma once

#include <QHeaderView>

namespace tracksmith::forms {

/// The header of a table inside a panel: captions without bevels, a thin line below them.
class FlatHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit FlatHeader(QWidget* parent = nullptr);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
};

} // namespace tracksmith::forms
