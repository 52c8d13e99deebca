#pragma once

#include <cstdint>
#include <vector>

#include "base/text.h"
#include <QAbstractTableModel>
#include <QStringList>

namespace tracksmith::forms {

/// A column of a read-only table.
struct RowsColumn {
    Text header;
    /// Numbers stand at the right edge.
    bool number = false;
};

/// A row of a read-only table.
struct Row {
    QStringList cells;
    /// Channel (0-15) whose colour stands in front of `swatchColumn`, -1 for none.
    int swatchChannel = -1;
    int swatchColumn = 0;
    /// Shown dimmed and slanted: takes no part.
    bool dimmed = false;
    /// The row's place in the song in ticks, -1 when it has none.
    std::int32_t tick = -1;
};

/// A read-only table of texts for an item view.
class RowsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    RowsModel(std::vector<RowsColumn> columns, QObject* parent);

    void SetRows(std::vector<Row> rows);
    const Row& RowAt(int row) const { return rows_[static_cast<std::size_t>(row)]; }
    void Retranslate(Language language);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<RowsColumn> columns_;
    std::vector<Row> rows_;
    Language language_ = Language::English;
};

} // namespace tracksmith::forms
