#include "app/forms/changes/changes_form.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/forms/dialog_frame.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeView>
#include <QVBoxLayout>

#include "app/diff/difference_words.h"
#include "app/forms/changes/changes_watch.h"
#include "app/forms/changes/kind_icon.h"
#include "app/forms/changes/listening_row.h"
#include "app/forms/changes/texts.h"
#include "app/forms/overview/overview_widget.h"
#include "app/forms/transport/session_signals.h"
#include "song/note_overview.h"

namespace tracksmith::forms {

using diff::Difference;

ChangesForm::ChangesForm(SessionSignals& session, ChangesWatch& watch, ChangesActions actions,
                         Language language, QWidget* parent)
    : QDialog(parent),
      session_(session),
      watch_(watch),
      actions_(std::move(actions)),
      language_(language),
      model_(new ChangesModel({language, actions_.voiceName, actions_.doneBy}, this)) {
    setObjectName(QStringLiteral("Dlg_WhatChanged"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(Say(changes_texts::kTitle));
    AddColumn(*this);
    auto& column = static_cast<QVBoxLayout&>(*layout());
    BuildHeader(column);
    BuildOverview(column);
    BuildListening(column);
    BuildTree();
    column.addWidget(tree_, 1);
    BuildFooter(column);
    Connect();
    resize(fontMetrics().height() * 60, fontMetrics().height() * 39);
    ShowSong();
    Refresh();
    tree_->setFocus();
}

// What ends here is told to nobody who goes with it.
ChangesForm::~ChangesForm() {
    disconnect(&session_, nullptr, this, nullptr);
    disconnect(&watch_, nullptr, this, nullptr);
    End();
}

// The song is heard as it is, in the loop that it had.
void ChangesForm::End() {
    listening_->End();
    loopHere_->setChecked(false);
}

QString ChangesForm::Say(const Text& text) const {
    return InLanguage(text, language_);
}

void ChangesForm::Switch() {
    listening_->Switch();
}

void ChangesForm::ShowSong() {
    const session::Workspace& work = session_.Session().Work();
    song_->setText(work.file.source.empty()
                       ? Say(changes_texts::kAgainstNew)
                       : Say(changes_texts::kAgainst).arg(ShownFileName(work.file.source)));
    overview_->SetSong(song::MakeNoteOverview(work.song), {});
    ShowFlags();
    ShowPlace();
}

void ChangesForm::ShowPlace() {
    overview_->ShowPlace(session_.Controls().Tick());
}

void ChangesForm::Refresh() {
    const auto& result = watch_.Result();
    const auto counts = SumsOf(result ? result->differences : diff::Differences());
    for (std::size_t i = 0; i < kinds_.size(); ++i) {
        const auto kind = static_cast<diff::Kind>(i);
        kinds_[i]->setText(ToQString(diff::KindWord(kind, language_)) + QStringLiteral("  ") +
                           NumberText(counts.at(i), language_));
        kinds_[i]->setIcon(KindIcon(kind, palette()));
    }
    listening_->SetBefore(result ? result->before : nullptr);
    ShowChannels();
    ShowRows();
}

// Those that something has changed on.
void ChangesForm::ShowChannels() {
    const QVariant chosen = channel_->currentData();
    const QSignalBlocker quiet(channel_);
    channel_->clear();
    channel_->addItem(Say(changes_texts::kAllChannels), -1);
    int last = -1;
    if (watch_.Result()) {
        for (const Difference& row : watch_.Result()->differences.rows) {
            if (std::exchange(last, row.channel) != row.channel) {
                channel_->addItem(ToQString(diff::ChannelWords(row.channel, language_)),
                                  int{row.channel});
            }
        }
    }
    channel_->setCurrentIndex(std::max(0, channel_->findData(chosen)));
}

ChangesFilter ChangesForm::Filter() const {
    ChangesFilter filter;
    for (std::size_t i = 0; i < kinds_.size(); ++i) {
        filter.kinds.at(i) = kinds_[i]->isChecked();
    }
    filter.channel = channel_->currentData().toInt();
    return filter;
}

// The row that stood at the chosen place is chosen again after a new comparison.
void ChangesForm::ShowRows() {
    const QModelIndex current = tree_->currentIndex();
    const auto group = std::max(0, current.parent().row());
    const auto row = std::max(0, current.row());
    model_->Show(watch_.Result(), Filter(), palette());
    for (int each = 0; each < model_->rowCount(); ++each) {
        tree_->setFirstColumnSpanned(each, {}, true);
    }
    tree_->expandAll();
    const QModelIndex channel = model_->index(std::min(group, model_->rowCount() - 1), 0);
    tree_->setCurrentIndex(model_->index(std::min(row, model_->rowCount(channel) - 1), 0, channel));
    ShowFlags();
    ShowSummary();
    ShowButtons();
    Fit();
}

// Later kinds lie above earlier ones.
void ChangesForm::ShowFlags() {
    std::vector<const Difference*> rows = model_->Shown();
    std::ranges::stable_sort(rows, {}, &Difference::kind);
    std::vector<OverviewFlag> flags;
    std::optional<diff::Kind> kind;
    QIcon sign;
    for (const Difference* row : rows) {
        if (kind != row->kind) {
            kind = row->kind;
            sign = KindIcon(row->kind, palette());
        }
        for (const std::int32_t tick : row->ticks) {
            flags.push_back({tick, sign, KindColour(row->kind, palette())});
        }
    }
    overview_->SetFlags(std::move(flags));
}

void ChangesForm::ShowSummary() {
    const auto& result = watch_.Result();
    if (!result) {
        summary_->setText(Say(changes_texts::kComparing));
    } else if (!result->error.empty()) {
        summary_->setText(Say(changes_texts::kNotCompared).arg(ToQString(result->error)));
    } else if (result->differences.Same()) {
        summary_->setText(Say(changes_texts::kSame));
    } else {
        std::int64_t count = 0;
        for (const Difference& row : result->differences.rows) {
            count += ChangesOf(row);
        }
        const QString changes =
            count == 1 ? Say(changes_texts::kOneChange)
                       : Say(changes_texts::kSomeChanges).arg(NumberText(count, language_));
        const session::Workspace& work = session_.Session().Work();
        const bool stays =
            !work.file.source.empty() && (session_.Session().Modified() || !work.loaded.saved);
        summary_->setText(Say(stays ? changes_texts::kStays : changes_texts::kStop).arg(changes));
    }
}

void ChangesForm::ShowButtons() {
    const auto& result = watch_.Result();
    const bool ready = result && result->error.empty();
    saveText_->setEnabled(ready);
    saveJson_->setEnabled(ready);
    goThere_->setEnabled(Chosen() != nullptr);
    loopHere_->setEnabled(Chosen() != nullptr || loopHere_->isChecked());
}

void ChangesForm::Fit() {
    const int unit = fontMetrics().height();
    tree_->header()->resizeSection(ChangesModel::KindColumn, unit * 10);
    tree_->header()->resizeSection(ChangesModel::PositionColumn, unit * 7);
    const int rest = std::max(tree_->viewport()->width() - unit * 17, unit * 16);
    tree_->header()->resizeSection(ChangesModel::WasColumn, rest * 2 / 5);
    tree_->header()->resizeSection(ChangesModel::IsColumn, rest * 2 / 5);
}

const Difference* ChangesForm::Chosen() const {
    return model_->At(tree_->currentIndex());
}

// Enter and Space belong to the rows while the tree has the keyboard.
bool ChangesForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == tree_ && event->type() == QEvent::Resize) {
        Fit();
    }
    if (watched == tree_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            GoThere();
            return true;
        }
        if (key == Qt::Key_Space) {
            listening_->PlayStop();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tracksmith::forms
