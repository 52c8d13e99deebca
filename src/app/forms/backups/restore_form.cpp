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
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/diff/difference_words.h"
#include "app/forms/backups/texts.h"
#include "app/forms/changes/changes_model.h"
#include "app/forms/changes/texts.h"
#include "app/forms/transport/session_signals.h"

namespace tracksmith::forms {
namespace {

enum Column { DateColumn, SongColumn, SizeColumn, FileColumn, Columns };

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
      language_(language),
      session_(&actions_.session) {
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
    BuildChosen(column);
    BuildFooter(column);
    const bool hasOwn = std::ranges::any_of(list_.backups, [this](const backups::Backup& each) {
        return !own_.empty() && each.original == own_;
    });
    onlyThis_->setEnabled(hasOwn);
    onlyThis_->setChecked(hasOwn);
    connect(onlyThis_, &QCheckBox::toggled, this, &RestoreForm::ShowRows);
    connect(&actions_.comparison, &BackgroundComparison::Done, this, &RestoreForm::TakeComparison);
    connect(&actions_.session, &SessionSignals::HeardSongChanged, this,
            &RestoreForm::ShowListening);
    connect(&actions_.session, &SessionSignals::PlayingChanged, this, &RestoreForm::ShowListening);
    connect(this, &QDialog::finished, this, &RestoreForm::EndListening);
    resize(fontMetrics().height() * 48, fontMetrics().height() * 28);
    ShowRows();
    table_->setFocus();
}

RestoreForm::~RestoreForm() {
    if (session_ != nullptr) {
        disconnect(session_, nullptr, this, nullptr);
        EndListening();
    }
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
    connect(table_, &QTableWidget::itemSelectionChanged, this, &RestoreForm::ShowChosen);
}

void RestoreForm::BuildChosen(QVBoxLayout& column) {
    differs_ = NewCaption("Lbl_Differs", nullptr);
    listen_ = NewButton("Btn_ListenToBackup", {});
    listen_->setToolTip(Say(backup_texts::kListenHint));
    auto* row = new QHBoxLayout;
    row->addWidget(differs_, 1);
    row->addWidget(listen_);
    column.addLayout(row);
    connect(listen_, &QPushButton::clicked, this, &RestoreForm::Listen);
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
    const QSignalBlocker quiet(table_);
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
    ShowChosen();
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

const backups::Backup* RestoreForm::Chosen() const {
    const int row = table_->currentRow();
    return row < 0 || static_cast<std::size_t>(row) >= shown_.size()
               ? nullptr
               : &list_.backups[shown_[static_cast<std::size_t>(row)]];
}

void RestoreForm::RestoreChosen() {
    EndListening();
    if (Chosen() != nullptr && actions_.restore(*Chosen())) {
        accept();
    }
}

void RestoreForm::ShowChosen() {
    const backups::Backup* chosen = Chosen();
    restore_->setEnabled(chosen != nullptr);
    EndListening();
    actions_.comparison.Drop();
    differs_->clear();
    heard_.reset();
    ShowListening();
    if (chosen == nullptr) {
        return;
    }
    if (auto files = actions_.files(*chosen)) {
        differs_->setText(Say(changes_texts::kComparing));
        actions_.comparison.Start(*std::move(files), language_);
    } else {
        differs_->setText(Say(backup_texts::kUnreadable));
    }
}

void RestoreForm::TakeComparison(const std::shared_ptr<const ComparedSongs>& compared) {
    if (!compared->error.empty()) {
        differs_->setText(Say(changes_texts::kNotCompared).arg(ToQString(compared->error)));
        return;
    }
    const auto sums = SumsOf(compared->differences);
    QStringList parts;
    for (std::size_t i = 0; i < sums.size(); ++i) {
        if (sums.at(i) > 0) {
            parts << ToQString(diff::KindWord(static_cast<diff::Kind>(i), language_)) + u' ' +
                         NumberText(sums.at(i), language_);
        }
    }
    const bool open = actions_.session.Session().HasSong();
    differs_->setText(Say(open ? backup_texts::kDiffers : backup_texts::kDiffersFromFile)
                          .arg(parts.isEmpty() ? Say(backup_texts::kNoDifference)
                                               : parts.join(QStringLiteral(" · "))));
    heard_ = compared->before;
    ShowListening();
}

void RestoreForm::Listen() {
    session::Transport& controls = actions_.session.Controls();
    const bool ends = controls.Heard() != nullptr;
    if (ends || (controls.Hear(heard_) && !controls.Playing() && !controls.Play())) {
        EndListening();
    }
}

// The open song is heard again, and rests.
void RestoreForm::EndListening() {
    session::Transport& controls = actions_.session.Controls();
    if (controls.Heard()) {
        controls.Stop();
        controls.Hear(nullptr);
    }
}

void RestoreForm::ShowListening() {
    const session::Session& session = actions_.session.Session();
    listen_->setEnabled(session.HasSong() && heard_ != nullptr);
    listen_->setText(
        Say(session.HearsOther() ? backup_texts::kStopListening : backup_texts::kListen));
}

} // namespace tracksmith::forms
