#include "app/forms/backups/restore_form.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/forms/dialog_frame.h"
#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include "base/system_reason.h"
#include <QCheckBox>
#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/forms/backups/texts.h"

namespace tracksmith::forms {
namespace {

enum Column { DateColumn, SongColumn, SizeColumn, FileColumn, Columns };

QPushButton* NewButton(const char* objectName, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false);
    return button;
}

} // namespace

QString BackupDate(const backups::Backup& backup, Language language) {
    const auto time =
        QDateTime::fromString(ToQString(backup.name.stamp), QStringLiteral("yyyyMMdd_HHmmss"));
    const QLocale locale(language == Language::German ? QLocale::German : QLocale::English);
    return time.isValid() ? locale.toString(time, QStringLiteral("ddd d MMM yyyy  HH:mm:ss"))
                          : ToQString(backup.name.stamp);
}

RestoreForm::RestoreForm(backups::BackupList list, std::filesystem::path own,
                         RestoreActions actions, Language language, QWidget* parent)
    : QDialog(parent),
      list_(std::move(list)),
      own_(std::move(own)),
      actions_(std::move(actions)),
      language_(language) {
    setObjectName(QStringLiteral("Dlg_Restore"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(Say(backup_texts::kTitle));
    AddColumn(*this);
    auto& column = static_cast<QVBoxLayout&>(*layout());
    QLabel* explanation = NewLabel("Lbl_RestoreExplanation", this);
    explanation->setWordWrap(true);
    explanation->setText(Say(backup_texts::kExplanation));
    column.addWidget(explanation);
    BuildTable();
    column.addWidget(table_, 1);
    BuildFooter(column);
    const bool hasOwn = std::ranges::any_of(list_.backups, [this](const backups::Backup& each) {
        return !own_.empty() && each.original == own_;
    });
    onlyThis_->setEnabled(hasOwn);
    onlyThis_->setChecked(hasOwn);
    connect(onlyThis_, &QCheckBox::toggled, this, &RestoreForm::ShowRows);
    resize(fontMetrics().height() * 48, fontMetrics().height() * 28);
    ShowRows();
    table_->setFocus();
}

QString RestoreForm::Say(const Text& text) const {
    return InLanguage(text, language_);
}

void RestoreForm::BuildTable() {
    table_ = new QTableWidget(0, Columns, this);
    table_->setObjectName(QStringLiteral("Table_Backups"));
    table_->setAccessibleName(Say(backup_texts::kBackups));
    table_->setHorizontalHeaderLabels({Say(backup_texts::kDate), Say(backup_texts::kSong),
                                       Say(backup_texts::kSize), Say(backup_texts::kFile)});
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 2);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setShowGrid(false);
    table_->setAlternatingRowColors(true);
    table_->setTabKeyNavigation(false);
    table_->setTextElideMode(Qt::ElideMiddle);
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setSectionResizeMode(FileColumn, QHeaderView::Stretch);
    table_->horizontalHeader()->setHighlightSections(false);
    connect(table_, &QTableWidget::cellDoubleClicked, this, &RestoreForm::RestoreChosen);
    connect(table_, &QTableWidget::itemSelectionChanged, this,
            [this] { restore_->setEnabled(table_->currentRow() >= 0); });
}

void RestoreForm::BuildFooter(QVBoxLayout& column) {
    onlyThis_ = new QCheckBox(Say(backup_texts::kOnlyThisSong));
    onlyThis_->setObjectName(QStringLiteral("Chk_OnlyThisSong"));
    state_ = NewCaption("Lbl_RestoreState", nullptr);
    restore_ = NewButton("Btn_Restore", Say(backup_texts::kRestore));
    restore_->setDefault(true);
    QPushButton* close = NewButton("Btn_Close", Say(backup_texts::kClose));
    auto* row = new QHBoxLayout;
    row->addWidget(onlyThis_);
    row->addWidget(state_, 1);
    row->addWidget(restore_);
    row->addWidget(close);
    column.addLayout(row);
    connect(restore_, &QPushButton::clicked, this, &RestoreForm::RestoreChosen);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
}

void RestoreForm::ShowRows() {
    shown_.clear();
    table_->setRowCount(0);
    for (std::size_t i = 0; i < list_.backups.size(); ++i) {
        if (!onlyThis_->isChecked() || list_.backups[i].original == own_) {
            shown_.push_back(i);
            AddRow(list_.backups[i]);
        }
    }
    if (!shown_.empty()) {
        table_->selectRow(0);
    }
    restore_->setEnabled(!shown_.empty());
    if (list_.error) {
        state_->setText(ToQString(SystemReason(list_.error, language_)));
    } else {
        state_->setText(list_.backups.empty() ? Say(backup_texts::kNone) : QString());
    }
}

void RestoreForm::AddRow(const backups::Backup& backup) {
    constexpr std::uintmax_t kKilobyte = 1024;
    const int row = table_->rowCount();
    table_->insertRow(row);
    const QString size = NumberText(
        static_cast<std::int64_t>((backup.bytes + kKilobyte - 1) / kKilobyte), language_);
    const std::array<QString, Columns> cells{
        BackupDate(backup, language_), ToQString(backup.name.song),
        Say(backup_texts::kKilobytes).arg(size),
        backup.original.empty() ? Say(backup_texts::kUnknown) : ShownPath(backup.original)};
    for (int column = 0; column < Columns; ++column) {
        auto* item = new QTableWidgetItem(cells.at(static_cast<std::size_t>(column)));
        if (column == SizeColumn) {
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        }
        table_->setItem(row, column, item);
    }
}

void RestoreForm::RestoreChosen() {
    const int row = table_->currentRow();
    if (row >= 0 && actions_.restore(list_.backups[shown_[static_cast<std::size_t>(row)]])) {
        accept();
    }
}

} // namespace tracksmith::forms
