#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "base/text.h"
#include <QAbstractItemModel>
#include <QIcon>
#include <QPalette>

#include "app/diff/difference_words.h"
#include "app/forms/changes/background_comparison.h"

namespace tracksmith::forms {

/// Of a row: for a stretch that was cut or put in 1, else how often.
std::int64_t ChangesOf(const diff::Difference& row);

/// The sums of that by kind.
std::array<std::int64_t, diff::kKinds> SumsOf(const diff::Differences& differences);

/// Which differences are shown.
struct ChangesFilter {
    std::array<bool, diff::kKinds> kinds{true, true, true, true, true, true};
    /// 0-15, diff::kWholeSong for what concerns all, or -1 for everything.
    int channel = -1;

    bool Shows(const diff::Difference& row) const {
        return kinds.at(static_cast<std::size_t>(row.kind)) &&
               (channel < 0 || channel == row.channel);
    }
};

/// The differences as a tree: channels, and below each its differences. Words are made when they
/// are painted, so that many rows cost nothing.
class ChangesModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { KindColumn, PositionColumn, WasColumn, IsColumn, DoneByColumn, Columns };

    explicit ChangesModel(diff::Wording wording, QObject* parent = nullptr)
        : QAbstractItemModel(parent), language_(wording.language), wording_(std::move(wording)) {}

    /// Null shows nothing. `palette` gives the colours.
    void Show(std::shared_ptr<const ComparedSongs> songs, const ChangesFilter& filter,
              const QPalette& palette);

    /// The difference of a row; null for a channel.
    const diff::Difference* At(const QModelIndex& index) const;
    /// The row of that difference, which must be shown.
    QModelIndex IndexOf(const diff::Difference& row) const;
    /// All that is shown, in order.
    std::vector<const diff::Difference*> Shown() const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& /*parent*/ = {}) const override { return Columns; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Group {
        std::uint8_t channel = 0;
        std::vector<const diff::Difference*> rows;
    };

    QVariant GroupData(const Group& group, int role) const;
    QString Words(const diff::Difference& row, int column) const;

    Language language_;
    diff::Wording wording_;
    std::shared_ptr<const ComparedSongs> songs_;
    QPalette palette_;
    std::array<QIcon, diff::kKinds> icons_;
    std::vector<Group> groups_;
};

} // namespace tracksmith::forms
