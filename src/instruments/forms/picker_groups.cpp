#include "instruments/forms/picker_groups.h"

#include "base/forms/theme.h"
#include <QHeaderView>
#include <QSignalBlocker>

namespace tracksmith::forms {
namespace {

constexpr double kHeadingSize = 0.88;

} // namespace

PickerGroups::PickerGroups(const char* objectName, QWidget* parent) : QTreeWidget(parent) {
    setObjectName(QLatin1String(objectName));
    setColumnCount(2);
    setRootIsDecorated(false);
    setIndentation(0);
    setTabKeyNavigation(false);
    header()->hide();
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (const auto row = rows_.indexOf(item); row >= 0) {
            emit Chosen(static_cast<std::size_t>(row));
        }
    });
}

void PickerGroups::Clear() {
    const QSignalBlocker silent(this);
    rows_.clear();
    clear();
}

void PickerGroups::AddHeading(const QString& text) {
    auto* item = new QTreeWidgetItem({text});
    item->setFlags(Qt::NoItemFlags);
    item->setFont(0, ScaledFont(font(), kHeadingSize));
    item->setForeground(0, DimText(palette()));
    addTopLevelItem(item);
    item->setFirstColumnSpanned(true);
}

void PickerGroups::AddGroup(const QString& name, const QString& hits, bool dimmed) {
    auto* item = new QTreeWidgetItem({name, hits});
    item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    item->setToolTip(0, name);
    item->setForeground(1, DimText(palette()));
    if (dimmed) {
        item->setForeground(0, DimText(palette()));
    }
    item->setSizeHint(0, {0, fontMetrics().height() * 3 / 2});
    addTopLevelItem(item);
    rows_.append(item);
}

void PickerGroups::Choose(std::size_t row) {
    const QSignalBlocker silent(this);
    setCurrentItem(rows_.value(static_cast<qsizetype>(row)));
}

} // namespace tracksmith::forms
