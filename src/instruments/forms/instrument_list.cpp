#include "instruments/forms/instrument_list.h"

#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include "instruments/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr int kIdRole = Qt::UserRole;

bool IsInstrument(const QTreeWidgetItem& item) {
    return item.parent() != nullptr;
}

const instruments::Instrument* InstrumentOf(const QTreeWidgetItem* item) {
    return item == nullptr || !IsInstrument(*item)
               ? nullptr
               : instruments::FindInstrument(
                     static_cast<instruments::InstrumentId>(item->data(0, kIdRole).toInt()));
}

bool ContainsAll(const QString& name, const QStringList& words) {
    return std::ranges::all_of(
        words, [&](const QString& word) { return name.contains(word, Qt::CaseInsensitive); });
}

} // namespace

InstrumentList::InstrumentList(const char* treeName, const Remark& remark, Language language,
                               QWidget* parent)
    : QWidget(parent), search_(new QLineEdit), tree_(new QTreeWidget) {
    search_->setObjectName(QStringLiteral("E_SearchInstrument"));
    search_->setPlaceholderText(InLanguage(instrument_texts::kSearchInstrument, language));
    search_->setAccessibleName(InLanguage(instrument_texts::kSearchInstrument, language));
    search_->setClearButtonEnabled(true);
    search_->installEventFilter(this);
    tree_->setObjectName(QLatin1String(treeName));
    tree_->setAccessibleName(InLanguage(instrument_texts::kInstrument, language));
    tree_->setColumnCount(2);
    tree_->header()->hide();
    tree_->setUniformRowHeights(true);
    tree_->setRootIsDecorated(false);
    tree_->setMinimumSize(tree_->fontMetrics().averageCharWidth() * 52,
                          tree_->fontMetrics().height() * 16);
    AddInstruments(remark);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Gap());
    column->addWidget(search_);
    column->addWidget(tree_, 1);
    setFocusProxy(search_);
    connect(search_, &QLineEdit::textChanged, this, &InstrumentList::Search);
    connect(tree_, &QTreeWidget::currentItemChanged, this, &InstrumentList::InstrumentChanged);
    connect(tree_, &QTreeWidget::itemActivated, this, [this] {
        if (Instrument() != nullptr) {
            emit InstrumentAccepted();
        }
    });
}

void InstrumentList::AddInstruments(const Remark& remark) {
    QTreeWidgetItem* maker = nullptr;
    for (const instruments::Instrument& instrument : instruments::Catalogue()) {
        const QString makerName = ToQString(instruments::MakerOf(instrument));
        if (maker == nullptr || maker->text(0) != makerName) {
            maker = new QTreeWidgetItem(tree_, {makerName});
            maker->setFlags(Qt::ItemIsEnabled);
            maker->setForeground(0, DimText(palette()));
        }
        auto* item = new QTreeWidgetItem(maker, {ToQString(instrument.name), remark(instrument)});
        item->setData(0, kIdRole, instrument.id);
        item->setForeground(1, DimText(palette()));
        item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    }
    tree_->expandAll();
    tree_->header()->setStretchLastSection(false);
    tree_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    tree_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
}

void InstrumentList::SetInstrument(std::string_view name) {
    const QSignalBlocker silent(tree_);
    tree_->setCurrentItem(nullptr);
    for (QTreeWidgetItemIterator place(tree_); *place != nullptr; ++place) {
        const instruments::Instrument* instrument = InstrumentOf(*place);
        if (instrument != nullptr && instrument->name == name) {
            tree_->setCurrentItem(*place);
            tree_->scrollToItem(*place, QAbstractItemView::PositionAtCenter);
            return;
        }
    }
}

const instruments::Instrument* InstrumentList::Instrument() const {
    return InstrumentOf(tree_->currentItem());
}

// A chosen instrument that is no longer found gives way to the first that is.
void InstrumentList::Search(const QString& text) {
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QTreeWidgetItem* first = nullptr;
    for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* maker = tree_->topLevelItem(i);
        bool any = false;
        for (int j = 0; j < maker->childCount(); ++j) {
            QTreeWidgetItem* item = maker->child(j);
            const bool found = ContainsAll(item->text(0), words);
            item->setHidden(!found);
            first = first == nullptr && found ? item : first;
            any = any || found;
        }
        maker->setHidden(!any);
    }
    const QTreeWidgetItem* chosen = tree_->currentItem();
    if (!words.isEmpty() && (chosen == nullptr || chosen->isHidden())) {
        Choose(first);
    } else if (chosen != nullptr) {
        tree_->scrollToItem(chosen);
    }
}

void InstrumentList::Choose(QTreeWidgetItem* item) {
    tree_->setCurrentItem(item);
    if (item != nullptr) {
        tree_->scrollToItem(item);
    }
}

// To the next instrument that is shown; makers are stepped over.
void InstrumentList::MoveBy(int rows) {
    QTreeWidgetItem* item = tree_->currentItem();
    do {
        item = item == nullptr ? tree_->topLevelItem(0)
               : rows > 0      ? tree_->itemBelow(item)
                               : tree_->itemAbove(item);
    } while (item != nullptr && (!IsInstrument(*item) || item->isHidden()));
    if (item != nullptr) {
        Choose(item);
    }
}

bool InstrumentList::eventFilter(QObject* watched, QEvent* event) {
    if (watched != search_ || event->type() != QEvent::KeyPress) {
        return false;
    }
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Up:
            MoveBy(-1);
            return true;
        case Qt::Key_Down:
            MoveBy(1);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (Instrument() != nullptr) {
                emit InstrumentAccepted();
            }
            return true;
        default:
            return false;
    }
}

} // namespace tracksmith::forms
