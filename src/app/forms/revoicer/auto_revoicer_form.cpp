#include "app/forms/revoicer/auto_revoicer_form.h"

#include <algorithm>
#include <span>
#include <utility>

#include "base/forms/dialog_frame.h"
#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include "base/system/file_io.h"
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/forms/revoicer/match_icon.h"
#include "app/forms/revoicer/texts.h"
#include "app/forms/transport/session_signals.h"

namespace tracksmith::forms {
namespace {

using instruments::VoiceNumbers;

constexpr std::size_t kMostSuggestions = 9;

enum Column {
    TickColumn,
    ChannelsColumn,
    FromColumn,
    FromNumbersColumn,
    ChangesColumn,
    ToColumn,
    ToNumbersColumn,
    MatchColumn,
    SourceColumn,
    Columns
};

// "104·1·25": the program as people count it.
QString NumbersText(VoiceNumbers numbers) {
    return QStringLiteral("%1·%2·%3").arg(numbers.msb).arg(numbers.lsb).arg(numbers.program + 1);
}

QString ChannelsText(const std::vector<std::size_t>& channels) {
    QStringList numbers;
    for (const std::size_t channel : channels) {
        numbers << QString::number(channel + 1);
    }
    return numbers.join(QStringLiteral(", "));
}

} // namespace

TAutoRevoicerForm::TAutoRevoicerForm(SessionSignals& session, app::RevoicerDesk desk,
                                     AutoRevoicerActions actions, Language language,
                                     QWidget* parent)
    : QDialog(parent),
      signals_(session),
      desk_(std::move(desk)),
      actions_(std::move(actions)),
      language_(language) {
    setObjectName(QStringLiteral("Dlg_AutoRevoicer"));
    setAttribute(Qt::WA_DeleteOnClose);
    AddColumn(*this);
    auto& column = static_cast<QVBoxLayout&>(*layout());
    BuildHeader(column);
    BuildTools(column);
    BuildGrid();
    column.addWidget(grid_, 1);
    BuildListening(column);
    BuildFooter(column);
    connect(&signals_, &SessionSignals::SongChanged, this, &TAutoRevoicerForm::LoadRevoiceData);
    connect(&signals_, &SessionSignals::RoutesChanged, this, &TAutoRevoicerForm::LoadRevoiceData);
    connect(&signals_, &SessionSignals::PlaceChanged, this, &TAutoRevoicerForm::UpdateTrial);
    connect(&signals_, &SessionSignals::PlayingChanged, this, [this] { ShowState(); });
    resize(fontMetrics().height() * 63, fontMetrics().height() * 34);
    LoadRevoiceData();
    grid_->setFocus();
}

TAutoRevoicerForm::~TAutoRevoicerForm() {
    EndTrial();
}

QString TAutoRevoicerForm::Say(const Text& text) const {
    return InLanguage(text, language_);
}

QPushButton* TAutoRevoicerForm::AddButton(QHBoxLayout& row, const char* name, const Text& text,
                                          void (TAutoRevoicerForm::*click)()) {
    auto* button = new QPushButton(Say(text));
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, click);
    row.addWidget(button);
    return button;
}

void TAutoRevoicerForm::BuildHeader(QVBoxLayout& column) {
    auto* row = new QHBoxLayout;
    auto* names = new QVBoxLayout;
    title_ = NewLabel("Lbl_RevoicerTitle", this);
    title_->setFont(ScaledFont(title_->font(), 1.4));
    QLabel* purpose = NewCaption("Lbl_RevoicerPurpose", this);
    purpose->setText(Say(revoicer_texts::kPurpose));
    names->addWidget(title_);
    names->addWidget(purpose);
    row->addLayout(names, 1);
    thisSong_ =
        AddButton(*row, "Btn_ThisSong", revoicer_texts::kThisSong, &TAutoRevoicerForm::ShowRows);
    wholeTable_ = AddButton(*row, "Btn_WholeTable", revoicer_texts::kWholeTable,
                            &TAutoRevoicerForm::ShowRows);
    for (QPushButton* choice : {thisSong_, wholeTable_}) {
        choice->setCheckable(true);
        choice->setAutoExclusive(true);
    }
    thisSong_->setChecked(true);
    column.addLayout(row);
}

void TAutoRevoicerForm::BuildTools(QVBoxLayout& column) {
    auto* row = new QHBoxLayout;
    suggest_ =
        AddButton(*row, "Btn_Suggest", revoicer_texts::kSuggest, &TAutoRevoicerForm::Suggest);
    AddButton(*row, "Btn_ImportTable", revoicer_texts::kImport, &TAutoRevoicerForm::AskImport);
    AddButton(*row, "Btn_ExportTable", revoicer_texts::kExport, &TAutoRevoicerForm::AskExport);
    delete_ =
        AddButton(*row, "Btn_Delete", revoicer_texts::kDelete, &TAutoRevoicerForm::Btn_DeleteClick);
    row->addStretch(1);
    addBanks_ =
        AddButton(*row, "Btn_AddBanks", revoicer_texts::kAddBanks, &TAutoRevoicerForm::AddBanks);
    column.addLayout(row);
}

void TAutoRevoicerForm::BuildGrid() {
    grid_ = new QTableWidget(0, Columns, this);
    grid_->setObjectName(QStringLiteral("ASG_Revoicer"));
    grid_->setAccessibleName(Say(revoicer_texts::kGrid));
    grid_->setHorizontalHeaderLabels(
        {QString(), Say(revoicer_texts::kChannels), Say(revoicer_texts::kFrom),
         Say(revoicer_texts::kNumbers), Say(revoicer_texts::kChanges), Say(revoicer_texts::kTo),
         Say(revoicer_texts::kNumbers), Say(revoicer_texts::kMatch), Say(revoicer_texts::kSource)});
    grid_->horizontalHeaderItem(MatchColumn)->setToolTip(Say(revoicer_texts::kMatchHint));
    grid_->setIconSize(MatchIconSize());
    grid_->verticalHeader()->hide();
    grid_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 2);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setShowGrid(false);
    grid_->setWordWrap(false);
    grid_->setAlternatingRowColors(true);
    grid_->setTabKeyNavigation(false);
    grid_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    grid_->horizontalHeader()->setSectionResizeMode(FromColumn, QHeaderView::Stretch);
    grid_->horizontalHeader()->setSectionResizeMode(ToColumn, QHeaderView::Stretch);
    grid_->horizontalHeader()->setHighlightSections(false);
    grid_->installEventFilter(this);
    connect(grid_, &QTableWidget::itemSelectionChanged, this, &TAutoRevoicerForm::ShowState);
    connect(grid_, &QTableWidget::cellDoubleClicked, this, &TAutoRevoicerForm::ShowSuggestions);
    connect(grid_, &QTableWidget::itemChanged, this, [this](const QTableWidgetItem* item) {
        if (item->column() == TickColumn) {
            TickChanged(item->row(), item->checkState() == Qt::Checked);
        }
    });
}

void TAutoRevoicerForm::BuildListening(QVBoxLayout& column) {
    auto* row = new QHBoxLayout;
    play_ = AddButton(*row, "Btn_RevoicerPlay", revoicer_texts::kPlay, &TAutoRevoicerForm::Play);
    old_ = AddButton(*row, "Btn_OldVoices", revoicer_texts::kOld, &TAutoRevoicerForm::ListenToOld);
    new_ = AddButton(*row, "Btn_NewVoices", revoicer_texts::kNew, &TAutoRevoicerForm::ListenToNew);
    for (QPushButton* choice : {old_, new_}) {
        choice->setCheckable(true);
    }
    QLabel* keys = NewCaption("Lbl_RevoicerKeys", this);
    keys->setText(Say(revoicer_texts::kWhilePlaying));
    row->addWidget(keys, 1);
    column.addLayout(row);
    auto* toggle = new QShortcut(QKeySequence(QStringLiteral("Ctrl+B")), this);
    connect(toggle, &QShortcut::activated, this, [this] { ListenTo(!newVoices_); });
}

void TAutoRevoicerForm::BuildFooter(QVBoxLayout& column) {
    auto* row = new QHBoxLayout;
    counts_ = NewLabel("Lbl_RevoicerCounts", this);
    counts_->setWordWrap(true);
    row->addWidget(counts_, 1);
    AddButton(*row, "Btn_RevoiceFolder", revoicer_texts::kApplyToFolder,
              &TAutoRevoicerForm::ApplyToFolder);
    apply_ = AddButton(*row, "Btn_Revoice", revoicer_texts::kApply,
                       &TAutoRevoicerForm::Btn_RevoiceClick);
    AddButton(*row, "Btn_Close", revoicer_texts::kClose, &TAutoRevoicerForm::Btn_CloseClick);
    column.addLayout(row);
}

void TAutoRevoicerForm::LoadRevoiceData() {
    desk_.Refresh();
    const QString name = ToQString(desk_.InstrumentName());
    setWindowTitle(Say(revoicer_texts::kCaption) + name);
    title_->setText(windowTitle().trimmed());
    ShowRows();
    UpdateTrial();
}

void TAutoRevoicerForm::ShowRows() {
    const int current = std::max(0, grid_->currentRow());
    rows_ = thisSong_->isChecked() ? desk_.ThisSong() : desk_.WholeTable();
    thisSong_->setText(Say(revoicer_texts::kThisSong).arg(desk_.ThisSong().size()));
    wholeTable_->setText(Say(revoicer_texts::kWholeTable).arg(desk_.TableSize()));
    {
        const QSignalBlocker quiet(grid_);
        grid_->setRowCount(0);
        grid_->setRowCount(static_cast<int>(rows_.size()));
        for (int row = 0; row < grid_->rowCount(); ++row) {
            PutRow(row);
        }
    }
    if (!rows_.empty()) {
        grid_->selectRow(std::min(current, grid_->rowCount() - 1));
    }
    ShowState();
}

void TAutoRevoicerForm::PutRow(int row) {
    const Row& shown = rows_[static_cast<std::size_t>(row)];
    const bool replaced = shown.line.has_value();
    const auto put = [&](Column column, const QString& text) {
        auto* item = new QTableWidgetItem(text);
        grid_->setItem(row, column, item);
        if (!replaced || !shown.ticked) {
            item->setForeground(DimText(palette()));
        }
        return item;
    };
    QTableWidgetItem* tick = put(TickColumn, {});
    tick->setData(Qt::AccessibleTextRole, ToQString(shown.source.name));
    if (replaced) {
        tick->setFlags(tick->flags() | Qt::ItemIsUserCheckable);
        tick->setCheckState(shown.ticked ? Qt::Checked : Qt::Unchecked);
    }
    put(ChannelsColumn, ChannelsText(shown.source.channels));
    put(FromColumn, ToQString(shown.source.name));
    put(FromNumbersColumn, NumbersText(shown.source.numbers));
    put(ChangesColumn, NumberText(static_cast<std::int64_t>(shown.programChanges), language_))
        ->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    put(ToColumn, replaced ? ToQString(shown.targetName) : Say(revoicer_texts::kNotReplaced));
    put(ToNumbersColumn, replaced ? NumbersText(shown.target) : QString());
    put(SourceColumn, replaced
                          ? Say(revoicer_texts::kOrigins.at(static_cast<std::size_t>(shown.origin)))
                          : QString());
    QTableWidgetItem* match = put(MatchColumn, {});
    const auto nearness = replaced && desk_.CanSuggest()
                              ? desk_.NearnessOf(shown.source, shown.target)
                              : std::nullopt;
    if (nearness) {
        const int bars = MatchBars(*nearness);
        match->setIcon(MatchIcon(bars, palette()));
        match->setData(Qt::AccessibleTextRole, Say(revoicer_texts::kMatchOf).arg(bars));
        match->setToolTip(Say(revoicer_texts::kMatchOf).arg(bars));
    }
}

void TAutoRevoicerForm::ShowState() {
    const instruments::Revoicing& plan = desk_.Plan();
    const Row* current = Current();
    delete_->setEnabled(current != nullptr && current->line);
    suggest_->setEnabled(!desk_.ThisSong().empty());
    addBanks_->setEnabled(plan.withoutBank + plan.sharingBank > 0 || plan.missingLsb);
    apply_->setEnabled(!plan.changes.empty() || plan.missingLsb);
    counts_->setText(CountsText());
    old_->setChecked(!newVoices_);
    new_->setChecked(newVoices_);
    play_->setEnabled(signals_.Session().HasSong());
    play_->setText(
        Say(signals_.Controls().Playing() ? revoicer_texts::kStop : revoicer_texts::kPlay));
}

QString TAutoRevoicerForm::CountsText() const {
    if (!signals_.Session().HasSong()) {
        return Say(revoicer_texts::kNoSong);
    }
    const instruments::Revoicing& plan = desk_.Plan();
    QStringList parts{
        Say(revoicer_texts::kCounts).arg(plan.changes.size()).arg(plan.programChanges)};
    if (plan.withoutBank > 0) {
        parts << Say(revoicer_texts::kWithoutBank).arg(plan.withoutBank);
    }
    if (plan.sharingBank > 0) {
        parts << Say(revoicer_texts::kSharingBank).arg(plan.sharingBank);
    }
    if (plan.missingLsb) {
        parts << Say(revoicer_texts::kStopsAt).arg(*plan.missingLsb + 1);
    }
    return parts.join(QStringLiteral("; "));
}

const TAutoRevoicerForm::Row* TAutoRevoicerForm::Current() const {
    const int row = grid_->currentRow();
    return row < 0 || static_cast<std::size_t>(row) >= rows_.size()
               ? nullptr
               : &rows_[static_cast<std::size_t>(row)];
}

void TAutoRevoicerForm::Suggest() {
    if (!desk_.CanSuggest()) {
        actions_.tell(Say(revoicer_texts::kNoVoices));
        return;
    }
    if (desk_.SuggestMissing() == 0) {
        actions_.tell(Say(revoicer_texts::kNothingSuggested));
        return;
    }
    TellIfNotStored(desk_.Save());
}

// The suggestions for the current row, with the keys 1 to 9.
void TAutoRevoicerForm::ShowSuggestions() {
    const Row* current = Current();
    if (current == nullptr) {
        return;
    }
    if (!desk_.CanSuggest()) {
        actions_.tell(Say(revoicer_texts::kNoVoices));
        return;
    }
    const app::VoiceInSong source = current->source;
    const auto suggestions = desk_.Suggestions(source, kMostSuggestions);
    if (suggestions.empty()) {
        actions_.tell(Say(revoicer_texts::kNoSuggestion));
        return;
    }
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("Menu_Suggestions"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const instruments::SuggestedVoice& each : suggestions) {
        QAction* action =
            menu->addAction(QStringLiteral("&%1  ").arg(menu->actions().size() + 1) +
                            MenuText(ToQString(each.voice->name)) + QStringLiteral("\t") +
                            ToQString(each.voice->category) + QStringLiteral("  ") +
                            NumbersText(each.voice->Numbers()));
        const int bars = MatchBars(each.nearness);
        action->setIcon(MatchIcon(bars, palette()));
        action->setToolTip(Say(revoicer_texts::kMatchOf).arg(bars));
        action->setCheckable(true);
        action->setChecked(current->line && current->target == each.voice->Numbers());
        connect(action, &QAction::triggered, this,
                [this, source, voice = each.voice] { TellIfNotStored(desk_.Put(source, *voice)); });
    }
    const QRect place = grid_->visualItemRect(grid_->item(grid_->currentRow(), ToColumn));
    menu->popup(grid_->viewport()->mapToGlobal(place.bottomLeft()));
    menu->setActiveAction(menu->actions().constFirst());
}

void TAutoRevoicerForm::ToggleTick() {
    const Row* current = Current();
    if (current != nullptr && current->line) {
        TickChanged(grid_->currentRow(), !current->ticked);
    }
}

void TAutoRevoicerForm::TickChanged(int row, bool on) {
    const Row& changed = rows_[static_cast<std::size_t>(row)];
    if (changed.line && changed.ticked != on) {
        TellIfNotStored(desk_.Tick(*changed.line, on));
    }
}

void TAutoRevoicerForm::Btn_DeleteClick() {
    const Row* current = Current();
    if (current != nullptr && current->line) {
        TellIfNotStored(desk_.Delete(*current->line));
    }
}

void TAutoRevoicerForm::TellIfNotStored(bool stored) {
    ShowRows();
    UpdateTrial();
    if (!stored) {
        actions_.tell(Say(revoicer_texts::kNotStored));
    }
}

void TAutoRevoicerForm::AskImport() {
    if (const auto file = actions_.chooseOpen(this)) {
        ImportFile(*file);
    }
}

void TAutoRevoicerForm::ImportFile(const std::filesystem::path& file) {
    const auto bytes = system::ReadRegularFile(file);
    if (!bytes) {
        actions_.tell(Say(revoicer_texts::kCannotRead));
        return;
    }
    bool stored = false;
    const std::string text(bytes->begin(), bytes->end());
    if (const auto badLine = desk_.Import(text, stored)) {
        actions_.tell(Say(revoicer_texts::kBadLine).arg(*badLine));
        return;
    }
    wholeTable_->setChecked(true);
    TellIfNotStored(stored);
}

void TAutoRevoicerForm::AskExport() {
    const auto name = std::filesystem::path(desk_.InstrumentName() + ".tsv");
    if (const auto file = actions_.chooseSave(this, name)) {
        ExportFile(*file);
    }
}

void TAutoRevoicerForm::ExportFile(const std::filesystem::path& file) {
    const std::string text = desk_.ExportText();
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    if (system::WriteFileAtomically(file, bytes).outcome != system::WriteOutcome::Written) {
        actions_.tell(Say(revoicer_texts::kCannotWrite));
    }
}

void TAutoRevoicerForm::AddBanks() {
    actions_.addBanks(desk_);
}

void TAutoRevoicerForm::Btn_RevoiceClick() {
    ListenTo(false); // from now on the song itself has the new voices
    actions_.apply(desk_);
}

void TAutoRevoicerForm::ListenTo(bool newVoices) {
    newVoices_ = newVoices;
    if (!UpdateTrial()) {
        actions_.tell(Say(revoicer_texts::kPortBusy));
    }
    ShowState();
}

// Each channel tries what it will play at this place of the song.
bool TAutoRevoicerForm::UpdateTrial() {
    bool done = true;
    const std::int32_t tick = signals_.Controls().Tick();
    for (std::size_t channel = 0; channel < tried_.size(); ++channel) {
        const auto voice = newVoices_ ? desk_.NewVoiceAt(channel, tick) : std::nullopt;
        if (voice == tried_[channel]) {
            continue;
        }
        if (actions_.tryVoice(channel, voice)) {
            tried_[channel] = voice;
        } else {
            done = false; // again at the next place
        }
    }
    return done;
}

void TAutoRevoicerForm::EndTrial() {
    for (std::size_t channel = 0; channel < tried_.size(); ++channel) {
        if (tried_[channel]) {
            actions_.tryVoice(channel, std::nullopt);
        }
    }
}

// Enter, Space and Delete belong to the row while the table has the keyboard.
bool TAutoRevoicerForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched != grid_ || event->type() != QEvent::KeyPress) {
        return QDialog::eventFilter(watched, event);
    }
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            ShowSuggestions();
            return true;
        case Qt::Key_Space:
            ToggleTick();
            return true;
        case Qt::Key_Delete:
            Btn_DeleteClick();
            return true;
        default:
            return QDialog::eventFilter(watched, event);
    }
}

} // namespace tracksmith::forms
