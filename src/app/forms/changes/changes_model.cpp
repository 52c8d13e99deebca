#include "app/forms/changes/changes_model.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QApplication>
#include <QFont>
#include <QFontMetrics>

#include "app/diff/difference_words.h"
#include "app/forms/changes/kind_icon.h"
#include "app/forms/changes/texts.h"

namespace tracksmith::forms {
namespace {

// Of a channel; a difference has the number of its channel's row from 1.
constexpr quintptr kGroup = 0;

} // namespace

std::int64_t ChangesOf(const diff::Difference& row) {
    return row.change >= diff::Change::Cut ? 1 : row.count;
}

std::array<std::int64_t, diff::kKinds> SumsOf(const diff::Differences& differences) {
    std::array<std::int64_t, diff::kKinds> sums{};
    for (const diff::Difference& row : differences.rows) {
        sums.at(static_cast<std::size_t>(row.kind)) += ChangesOf(row);
    }
    return sums;
}

void ChangesModel::Show(std::shared_ptr<const ComparedSongs> songs, const ChangesFilter& filter,
                        const QPalette& palette) {
    beginResetModel();
    songs_ = std::move(songs);
    palette_ = palette;
    for (std::size_t kind = 0; kind < icons_.size(); ++kind) {
        icons_.at(kind) = KindIcon(static_cast<diff::Kind>(kind), palette);
    }
    groups_.clear();
    if (songs_) {
        for (const diff::Difference& row : songs_->differences.rows) {
            if (!filter.Shows(row)) {
                continue;
            }
            if (groups_.empty() || groups_.back().channel != row.channel) {
                groups_.push_back({row.channel, {}});
            }
            groups_.back().rows.push_back(&row);
        }
    }
    endResetModel();
}

const diff::Difference* ChangesModel::At(const QModelIndex& index) const {
    return !index.isValid() || index.internalId() == kGroup
               ? nullptr
               : groups_[index.internalId() - 1].rows[static_cast<std::size_t>(index.row())];
}

QModelIndex ChangesModel::IndexOf(const diff::Difference& row) const {
    for (std::size_t i = 0; i < groups_.size(); ++i) {
        const auto& rows = groups_[i].rows;
        if (const auto found = std::ranges::find(rows, &row); found != rows.end()) {
            return createIndex(static_cast<int>(found - rows.begin()), 0, quintptr{i + 1});
        }
    }
    return {};
}

std::vector<const diff::Difference*> ChangesModel::Shown() const {
    std::vector<const diff::Difference*> shown;
    for (const Group& group : groups_) {
        shown.insert(shown.end(), group.rows.begin(), group.rows.end());
    }
    return shown;
}

QModelIndex ChangesModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    return createIndex(row, column,
                       parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : kGroup);
}

QModelIndex ChangesModel::parent(const QModelIndex& child) const {
    return !child.isValid() || child.internalId() == kGroup
               ? QModelIndex()
               : createIndex(static_cast<int>(child.internalId() - 1), 0, kGroup);
}

int ChangesModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) {
        return static_cast<int>(groups_.size());
    }
    return parent.internalId() == kGroup && parent.column() == 0
               ? static_cast<int>(groups_[static_cast<std::size_t>(parent.row())].rows.size())
               : 0;
}

QVariant ChangesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    if (role == Qt::SizeHintRole) {
        return QSize(0, QFontMetrics(QApplication::font()).height() * 3 / 2);
    }
    const diff::Difference* row = At(index);
    if (row == nullptr) {
        return index.column() == 0 ? GroupData(groups_[static_cast<std::size_t>(index.row())], role)
                                   : QVariant();
    }
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:
            return Words(*row, index.column());
        case Qt::AccessibleTextRole:
            return index.column() == KindColumn
                       ? ToQString(diff::ChannelWords(row->channel, language_)) +
                             QStringLiteral(", ") + Words(*row, KindColumn)
                       : Words(*row, index.column());
        case Qt::DecorationRole:
            return index.column() == KindColumn
                       ? QVariant(icons_.at(static_cast<std::size_t>(row->kind)))
                       : QVariant();
        case Qt::ForegroundRole:
            return index.column() == WasColumn || index.column() == DoneByColumn
                       ? QVariant(DimText(palette_))
                       : QVariant();
        default:
            return {};
    }
}

QVariant ChangesModel::GroupData(const Group& group, int role) const {
    if (role == Qt::DecorationRole) {
        return group.channel == diff::kWholeSong ? QVariant()
                                                 : QVariant(ChannelChip(group.channel, palette_));
    }
    if (role == Qt::BackgroundRole) {
        return palette_.brush(QPalette::Button);
    }
    if (role == Qt::FontRole) {
        QFont font = QApplication::font();
        font.setBold(true);
        return font;
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    std::int64_t count = 0;
    for (const diff::Difference* row : group.rows) {
        count += ChangesOf(*row);
    }
    const QString changes =
        count == 1
            ? InLanguage(changes_texts::kOneChange, language_)
            : InLanguage(changes_texts::kSomeChanges, language_).arg(NumberText(count, language_));
    return ToQString(diff::ChannelWords(group.channel, language_)) + QStringLiteral("  –  ") +
           changes;
}

QString ChangesModel::Words(const diff::Difference& row, int column) const {
    const diff::DifferenceWords words =
        diff::WordsOf(row, songs_->beforeMap, songs_->afterMap, wording_);
    const std::array<const std::string*, Columns> cells{&words.kind, &words.position, &words.before,
                                                        &words.after, &words.doneBy};
    return ToQString(*cells.at(static_cast<std::size_t>(column)));
}

QVariant ChangesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    static constexpr std::array<const Text*, Columns> kTitles{
        &changes_texts::kKind, &changes_texts::kPosition, &changes_texts::kWas, &changes_texts::kIs,
        &changes_texts::kDoneBy};
    return InLanguage(*kTitles.at(static_cast<std::size_t>(section)), language_);
}

} // namespace tracksmith::forms
