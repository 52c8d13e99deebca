#include "app/forms/health/health_form.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>
#include <vector>

#include "base/forms/dialog_frame.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/forms/health/health_columns.h"
#include "app/forms/health/health_watch.h"
#include "app/forms/health/severity_icon.h"
#include "app/forms/health/texts.h"
#include "app/forms/overview/overview_widget.h"
#include "app/forms/transport/session_signals.h"
#include "song/note_overview.h"
#include "song/song_position.h"

namespace tracksmith::forms {
namespace {

using health::Finding;
using health::Rule;
using health::Severity;

} // namespace

HealthForm::HealthForm(SessionSignals& session, HealthActions actions, const QString& fileName,
                       QString instrument, Language language, QWidget* parent)
    : QDialog(parent),
      session_(session),
      actions_(std::move(actions)),
      instrument_(std::move(instrument)),
      language_(language) {
    setObjectName(QStringLiteral("Dlg_Health"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(Say(health_texts::kTitle));
    AddColumn(*this);
    auto& column = static_cast<QVBoxLayout&>(*layout());
    BuildHeader(column, fileName);
    BuildOverview(column);
    BuildTable();
    auto* middle = new QHBoxLayout;
    middle->setSpacing(Gap());
    middle->addWidget(table_, 21);
    middle->addWidget(BuildDetailArea(), 10);
    column.addLayout(middle, 1);
    BuildFooter(column);
    connect(&actions_.watch, &HealthWatch::Changed, this, &HealthForm::Refresh);
    connect(&session_, &SessionSignals::SongChanged, this, &HealthForm::ShowSong);
    connect(&session_, &SessionSignals::PlaceChanged, this, &HealthForm::WatchListening);
    connect(&session_, &SessionSignals::PlayingChanged, this, &HealthForm::WatchListening);
    connect(&session_, &SessionSignals::FileStateChanged, this, &HealthForm::ShowButtons);
    connect(this, &QDialog::finished, this, [this] {
        if (listenEnd_) {
            session_.Controls().Stop();
        }
    });
    resize(fontMetrics().height() * 60, fontMetrics().height() * 37);
    ShowSong();
    ShowListening();
    Refresh();
    table_->setFocus();
}

QString HealthForm::Say(const Text& text) const {
    return InLanguage(text, language_);
}

void HealthForm::Refresh() {
    report_ = actions_.watch.Report();
    const std::array<const Text*, 3> words{&health_texts::kErrors, &health_texts::kWarnings,
                                           &health_texts::kHints};
    for (std::size_t i = 0; i < filters_.size(); ++i) {
        filters_[i]->setText(Say(*words.at(i)).arg(report_.counts.at(i)));
        filters_[i]->setIcon(SeverityIcon(static_cast<Severity>(i), palette()));
    }
    ShowChannels();
    ShowRows();
    ShowButtons();
}

void HealthForm::ShowSong() {
    const song::Song& song = session_.Session().Song();
    overview_->SetSong(song::MakeNoteOverview(song), {});
    WatchListening();
}

// Those that something was found on.
void HealthForm::ShowChannels() {
    std::set<int> channels;
    for (const Finding& finding : report_.findings) {
        channels.insert(finding.channel);
    }
    channels.erase(health::kAllChannels);
    const QVariant chosen = channel_->currentData();
    const QSignalBlocker quiet(channel_);
    channel_->clear();
    channel_->addItem(Say(health_texts::kAllChannels), int{health::kAllChannels});
    for (const int channel : channels) {
        channel_->addItem(Say(health_texts::kOneChannel).arg(channel + 1), channel);
    }
    channel_->setCurrentIndex(std::max(0, channel_->findData(chosen)));
}

bool HealthForm::IsShown(const Finding& finding) const {
    const int channel = channel_->currentData().toInt();
    return filters_[static_cast<std::size_t>(finding.severity)]->isChecked() &&
           (channel == health::kAllChannels || channel == finding.channel);
}

// The worst ones on top.
void HealthForm::ShowFlags() {
    std::vector<OverviewFlag> flags;
    const std::vector<std::size_t> worstLast(shown_.rbegin(), shown_.rend());
    for (const std::size_t index : worstLast) {
        const Finding& finding = report_.findings[index];
        const QIcon sign = SeverityIcon(finding.severity, palette());
        for (const std::int32_t tick : finding.ticks) {
            flags.push_back({tick, sign, SeverityColour(finding.severity, palette())});
        }
    }
    overview_->SetFlags(std::move(flags));
}

void HealthForm::ShowRows() {
    const int row = std::max(0, table_->currentRow());
    shown_.clear();
    table_->setRowCount(0);
    for (std::size_t i = 0; i < report_.findings.size(); ++i) {
        if (IsShown(report_.findings[i])) {
            shown_.push_back(i);
            AddRow(i);
        }
    }
    if (!shown_.empty()) {
        table_->selectRow(std::min(row, table_->rowCount() - 1));
    }
    ShowFlags();
    ShowDetail();
}

void HealthForm::AddRow(std::size_t index) {
    const Finding& finding = report_.findings[index];
    const int row = table_->rowCount();
    table_->insertRow(row);
    const bool all = finding.channel == health::kAllChannels;
    const auto put = [&](HealthColumn column, const QString& text) {
        auto* item = new QTableWidgetItem(text);
        table_->setItem(row, column, item);
        return item;
    };
    put(SeverityColumn, InLanguage(health::SeverityText(finding.severity), language_))
        ->setIcon(SeverityIcon(finding.severity, palette()));
    put(FindingColumn, ToQString(health::Title(finding, instrument_.toStdString(), language_)));
    auto* channel =
        put(ChannelColumn, all ? Say(health_texts::kAll) : QString::number(finding.channel + 1));
    channel->setTextAlignment(Qt::AlignCenter);
    if (!all) {
        const QColor ground = ChannelColour(finding.channel, palette());
        channel->setBackground(ground);
        channel->setForeground(IsLight(ground) ? Qt::black : Qt::white);
    }
    put(PositionColumn,
        finding.ticks.empty()
            ? QStringLiteral("–")
            : ToQString(song::SongPositionToMTC(session_.Session().Song(), finding.ticks.front())));
    put(CountColumn, NumberText(finding.count, language_))
        ->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (!finding.repairable && finding.rule != Rule::LengthenedNotes) {
        put(RepairColumn, Say(health_texts::kNoRepair))->setForeground(DimText(palette()));
        return;
    }
    const QString words = finding.rule == Rule::LengthenedNotes
                              ? Say(health_texts::kTakeBack).remove(u'&')
                              : InLanguage(health::RepairText(finding.rule), language_);
    auto* button = new QPushButton(words);
    button->setAutoDefault(false);
    button->setObjectName(QStringLiteral("Btn_Repair%1").arg(row));
    button->setAccessibleName(words + QStringLiteral(": ") +
                              table_->item(row, FindingColumn)->text() + QStringLiteral(", ") +
                              channel->text());
    button->setFocusPolicy(Qt::NoFocus);
    // The row is gone when this returns.
    connect(
        button, &QPushButton::clicked, this, [this, index] { RepairFinding(index); },
        Qt::QueuedConnection);
    table_->setCellWidget(row, RepairColumn, button);
}

void HealthForm::RepairFinding(std::size_t index) {
    if (index >= report_.findings.size()) {
        return;
    }
    const Finding finding = report_.findings[index];
    if (finding.rule == Rule::LengthenedNotes) {
        actions_.takeBackLengthening();
    } else if (finding.repairable) {
        actions_.repair(finding);
    }
}

void HealthForm::RepairAll() {
    actions_.repairAll();
}

void HealthForm::ShowButtons() {
    const session::TakeBack& last = session_.Session().LastChange();
    takeBack_->setEnabled(last.Available() && !last.Taken());
    std::int64_t places = 0;
    bool unbalanced = false;
    for (const Finding& finding : report_.findings) {
        places += finding.repairable ? finding.count : 0;
        unbalanced = unbalanced || finding.rule == Rule::NoteWithoutEnd ||
                     finding.rule == Rule::NoteWithoutBeginning;
    }
    noteReport_->setEnabled(unbalanced);
    const std::size_t repairs = report_.Repairable();
    repairAll_->setEnabled(repairs > 0);
    repairAll_->setText(Say(health_texts::kRepairAll).arg(repairs));
    safe_->setText(repairs == 0 ? QString() : Say(health_texts::kSafe).arg(repairs).arg(places));
}

// Where there is little room the finding itself counts most; the detail has the rest.
void HealthForm::ShowColumns() {
    constexpr int kEnough = 30; // of the font's heights
    const bool narrow = table_->width() < fontMetrics().height() * kEnough;
    table_->setColumnHidden(CountColumn, narrow);
    table_->setColumnHidden(RepairColumn, narrow);
    safe_->setVisible(!narrow); // else it would be cut to nothing
}

// Enter and R belong to the row while the table has the keyboard.
bool HealthForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == table_ && event->type() == QEvent::Resize && safe_ != nullptr) {
        ShowColumns();
        FitDetail();
    }
    if (watched == table_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            GoThere();
            return true;
        }
        if (key == Qt::Key_R) {
            repair_->click();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tracksmith::forms
