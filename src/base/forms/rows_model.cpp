#include "base/forms/rows_model.h"

#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QApplication>
#include <QFont>

namespace tracksmith::forms {
namespace {

QVariant Alignment(const RowsColumn& column) {
    return static_cast<int>(Qt::AlignVCenter | (column.number ? Qt::AlignRight : Qt::AlignLeft));
}

QVariant DimmedFont() {
    QFont font = QApplication::font();
    font.setItalic(true);
    return font;
}

} // namespace

RowsModel::RowsModel(std::vector<RowsColumn> columns, QObject* parent)
    : QAbstractTableModel(parent), columns_(std::move(columns)) {}

void RowsModel::SetRows(std::vector<Row> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

void RowsModel::Retranslate(Language language) {
    language_ = language;
    emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

int RowsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RowsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant RowsModel::data(const QModelIndex& index, int role) const {
    const Row& row = RowAt(index.row());
    switch (role) {
        case Qt::DisplayRole:
            return row.cells.value(index.column());
        case Qt::TextAlignmentRole:
            return Alignment(columns_[static_cast<std::size_t>(index.column())]);
        case Qt::DecorationRole:
            return row.swatchChannel >= 0 && index.column() == row.swatchColumn
                       ? QVariant(ChannelColour(row.swatchChannel, QApplication::palette()))
                       : QVariant();
        case Qt::ForegroundRole:
            return row.dimmed ? QVariant(DimText(QApplication::palette())) : QVariant();
        case Qt::FontRole:
            return row.dimmed ? DimmedFont() : QVariant();
        default:
            return {};
    }
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    const RowsColumn& column = columns_[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) {
        return InLanguage(column.header, language_);
    }
    return role == Qt::TextAlignmentRole ? Alignment(column) : QVariant();
}

} // namespace tracksmith::forms
