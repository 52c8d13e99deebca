#include "app/forms/health/health_form.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>
#include <vector>

#include "base/forms/dialog_frame.h"
#include "base/forms/labels.h"
#include "base/forms/panel.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/forms/health/health_watch.h"
#include "app/forms/health/note_figure_view.h"
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

enum Column {
    SeverityColumn,
    FindingColumn,
    ChannelColumn,
    PositionColumn,
    CountColumn,
    RepairColumn,
    Columns
};

// Black is read better on it than white (relative luminance of sRGB, roughly).
bool IsLight(const QColor& colour) {
    constexpr double kMiddle = 0.46;
    return 0.30 * colour.redF() + 0.59 * colour.greenF() + 0.11 * colour.blueF() > kMiddle;
}

QPushButton* NewButton(const char* objectName, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false);
    return button;
}

QLabel* NewTextBlock(const char* objectName) {
    QLabel* label = NewLabel(objectName, nullptr);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

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
    const QSize wanted(fontMetrics().height() * 60, fontMetrics().height() * 37);
    resize(wanted.boundedTo(screen()->availableSize()));
    ShowSong();
    ShowListening();
    Refresh();
    table_->setFocus();
}

QString HealthForm::Say(const Text& text) const {
    return InLanguage(text, language_);
}

void HealthForm::BuildHeader(QVBoxLayout& column, const QString& fileName) {
    auto* row = new QHBoxLayout;
    auto* names = new QVBoxLayout;
    QLabel* title = NewLabel("Lbl_HealthTitle", this);
    title->setText(Say(health_texts::kTitle));
    title->setFont(ScaledFont(title->font(), 1.4));
    QLabel* file = NewCaption("Lbl_HealthFile", this);
    file->setText(instrument_.isEmpty()
                      ? fileName
                      : Say(health_texts::kCheckedAgainst).arg(fileName, instrument_));
    names->addWidget(title);
    names->addWidget(file);
    row->addLayout(names, 1);
    BuildFilters(*row);
    column.addLayout(row);
}

void HealthForm::BuildFilters(QHBoxLayout& row) {
    constexpr std::array<const char*, 3> kNames{"Btn_FilterErrors", "Btn_FilterWarnings",
                                                "Btn_FilterHints"};
    for (const char* name : kNames) {
        QPushButton* filter = NewButton(name, {});
        filter->setCheckable(true);
        filter->setChecked(true);
        connect(filter, &QPushButton::toggled, this, &HealthForm::ShowRows);
        row.addWidget(filter, 0, Qt::AlignTop);
        filters_.push_back(filter);
    }
    channel_ = new QComboBox;
    channel_->setObjectName(QStringLiteral("Box_HealthChannel"));
    channel_->setAccessibleName(Say(health_texts::kChannelFilter));
    channel_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(channel_, &QComboBox::currentIndexChanged, this, &HealthForm::ShowRows);
    row.addWidget(channel_, 0, Qt::AlignTop);
}

// A click seeks there; the window's own place is its cursor.
void HealthForm::BuildOverview(QVBoxLayout& column) {
    overview_ = new OverviewWidget;
    overview_->Retranslate(language_);
    overview_->setObjectName(QStringLiteral("HealthOverview"));
    overview_->setAccessibleName(Say(health_texts::kPlaces));
    overview_->setFixedHeight(overview_->minimumSizeHint().height());
    connect(overview_, &OverviewWidget::PlaceChosen, &session_, &SessionSignals::MoveToTick);
    connect(overview_, &OverviewWidget::LoopChosen, &session_, &SessionSignals::SetLoop);
    column.addWidget(overview_);
}

void HealthForm::BuildTable() {
    table_ = new QTableWidget(0, Columns, this);
    table_->setObjectName(QStringLiteral("Table_Findings"));
    table_->setAccessibleName(Say(health_texts::kFindings));
    table_->setHorizontalHeaderLabels({Say(health_texts::kSeverity), Say(health_texts::kFinding),
                                       Say(health_texts::kChannel), Say(health_texts::kPosition),
                                       Say(health_texts::kCount), Say(health_texts::kRepair)});
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 2);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setShowGrid(false);
    table_->setAlternatingRowColors(true);
    table_->setTabKeyNavigation(false);
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setSectionResizeMode(FindingColumn, QHeaderView::Stretch);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->installEventFilter(this);
    connect(table_, &QTableWidget::itemSelectionChanged, this, &HealthForm::ShowDetail);
    connect(table_, &QTableWidget::cellClicked, this, &HealthForm::GoThere);
}

// Scrolls up and down where the text is large and the screen small.
QWidget* HealthForm::BuildDetailArea() {
    detail_ = NewScrollArea(BuildDetail());
    detail_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return detail_;
}

// As wide as its texts and buttons need.
void HealthForm::FitDetail() {
    detail_->widget()->layout()->activate();
    detail_->setMinimumWidth(detail_->widget()->minimumSizeHint().width() +
                             detail_->verticalScrollBar()->sizeHint().width());
}

QWidget* HealthForm::BuildDetail() {
    auto* panel = new Panel(QPalette::Button);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(Gap() * 3 / 2, Gap() * 3 / 2, Gap() * 3 / 2, Gap() * 3 / 2);
    column->setSpacing(Gap());
    title_ = NewTextBlock("Lbl_FindingTitle");
    QFont bold = title_->font();
    bold.setBold(true);
    title_->setFont(bold);
    explanation_ = NewTextBlock("Lbl_Explanation");
    change_ = NewTextBlock("Lbl_WhatWouldChange");
    change_->setForegroundRole(QPalette::PlaceholderText);
    repair_ = NewButton("Btn_Repair", {});
    goThere_ = NewButton("Btn_GoThere", Say(health_texts::kGoThere));
    placeText_ = NewCaption("Lbl_Place", nullptr);
    previous_ = NewButton("Btn_PreviousPlace", QStringLiteral("‹"));
    previous_->setAccessibleName(Say(health_texts::kPreviousPlace));
    next_ = NewButton("Btn_NextPlace", QStringLiteral("›"));
    next_->setAccessibleName(Say(health_texts::kNextPlace));
    column->addWidget(title_);
    column->addWidget(explanation_);
    column->addWidget(BuildFigures());
    column->addWidget(change_);
    listen_ = NewButton("Btn_Listen", {});
    listen_->setToolTip(Say(health_texts::kListenHint));
    column->addWidget(listen_, 0, Qt::AlignLeft);
    column->addStretch(1);
    auto* acts = new QHBoxLayout;
    acts->addWidget(repair_, 1);
    acts->addWidget(goThere_);
    column->addLayout(acts);
    auto* places = new QHBoxLayout;
    for (QPushButton* step : {previous_, next_}) {
        step->setFixedWidth(step->sizeHint().height() * 3 / 2);
    }
    places->addWidget(placeText_, 1);
    places->addWidget(previous_);
    places->addWidget(next_);
    column->addLayout(places);
    connect(repair_, &QPushButton::clicked, this, [this] {
        if (Chosen() != nullptr) {
            RepairFinding(shown_[static_cast<std::size_t>(table_->currentRow())]);
        }
    });
    connect(goThere_, &QPushButton::clicked, this, &HealthForm::GoThere);
    connect(listen_, &QPushButton::clicked, this, &HealthForm::Listen);
    connect(previous_, &QPushButton::clicked, this, [this] { StepPlace(-1); });
    connect(next_, &QPushButton::clicked, this, [this] { StepPlace(1); });
    return panel;
}

// The notes around the place, now and as the repair would make them.
QWidget* HealthForm::BuildFigures() {
    figures_ = new QWidget;
    auto* row = new QHBoxLayout(figures_);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const char* objectName, const Text& caption) {
        auto* side = new QVBoxLayout;
        auto* view = new NoteFigureView;
        view->setObjectName(QLatin1String(objectName));
        view->setAccessibleName(Say(caption));
        QLabel* label = NewCaption("", nullptr);
        label->setText(Say(caption));
        side->addWidget(label);
        side->addWidget(view);
        row->addLayout(side, 1);
        return view;
    };
    now_ = add("Figure_Now", health_texts::kNow);
    after_ = add("Figure_After", health_texts::kAfter);
    return figures_;
}

void HealthForm::ShowFigures() {
    const Finding* finding = Chosen();
    health::NoteFigure figure;
    if (finding != nullptr && place_ < finding->ticks.size()) {
        figure = actions_.figure(*finding, finding->ticks[place_]);
    }
    figures_->setVisible(!figure.now.empty());
    if (!figure.now.empty()) {
        now_->Show(figure, false, finding->channel);
        after_->Show(figure, true, finding->channel);
    }
}

void HealthForm::BuildFooter(QVBoxLayout& column) {
    static constexpr Text kClose{De{"&Schließen"}, En{"&Close"}};
    noteReport_ = NewButton("Btn_NoteReport", Say(health_texts::kReport));
    takeBack_ = NewButton("Btn_HealthTakeBack", Say(health_texts::kTakeBack));
    safe_ = NewCaption("Lbl_SafeRepairs", nullptr);
    safe_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    repairAll_ = NewButton("Btn_RepairAll", {});
    repairAll_->setDefault(true);
    QPushButton* close = NewButton("Btn_Close", Say(kClose));
    auto* row = new QHBoxLayout;
    row->addWidget(noteReport_);
    row->addWidget(takeBack_);
    row->addStretch(1);
    row->addWidget(safe_);
    row->addWidget(repairAll_);
    row->addWidget(close);
    column.addLayout(row);
    connect(noteReport_, &QPushButton::clicked, this, [this] { actions_.openReport(); });
    connect(takeBack_, &QPushButton::clicked, this, [this] { actions_.takeBack(); });
    connect(repairAll_, &QPushButton::clicked, this, &HealthForm::RepairAll);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
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
    const auto put = [&](Column column, const QString& text) {
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
    QPushButton* button = NewButton("", words);
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

const Finding* HealthForm::Chosen() const {
    const int row = table_->currentRow();
    return row < 0 || static_cast<std::size_t>(row) >= shown_.size()
               ? nullptr
               : &report_.findings[shown_[static_cast<std::size_t>(row)]];
}

void HealthForm::ShowDetail() {
    place_ = 0;
    const Finding* finding = Chosen();
    if (finding == nullptr) {
        title_->setText(!actions_.watch.Ready()    ? Say(health_texts::kChecking)
                        : report_.findings.empty() ? Say(health_texts::kNothing)
                                                   : QString());
        explanation_->clear();
        change_->clear();
    } else {
        title_->setText(ToQString(health::Title(*finding, instrument_.toStdString(), language_)));
        explanation_->setText(ToQString(health::Explanation(*finding, language_)));
        change_->setText(ToQString(health::WhatWouldChange(*finding, language_)));
    }
    const bool lengthened = finding != nullptr && finding->rule == Rule::LengthenedNotes;
    const bool repairable = finding != nullptr && finding->repairable;
    repair_->setEnabled(repairable || lengthened);
    repair_->setText(lengthened ? Say(health_texts::kTakeBack).remove(u'&')
                     : repairable
                         ? Say(health_texts::kRepairThese)
                               .arg(InLanguage(health::RepairText(finding->rule), language_))
                               .arg(finding->count)
                         : Say(health_texts::kNoRepair));
    ShowPlace();
    FitDetail();
}

void HealthForm::ShowPlace() {
    const Finding* finding = Chosen();
    const std::size_t places = finding == nullptr ? 0 : finding->ticks.size();
    goThere_->setEnabled(places > 0);
    listen_->setEnabled(places > 0 || listenEnd_);
    previous_->setEnabled(place_ > 0);
    next_->setEnabled(place_ + 1 < places);
    ShowFigures();
    placeText_->setText(places == 0 ? QString()
                                    : Say(health_texts::kPlaceOf).arg(place_ + 1).arg(places));
}

void HealthForm::StepPlace(int step) {
    place_ = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(place_) + step);
    ShowPlace();
    GoThere();
}

void HealthForm::GoThere() {
    const Finding* finding = Chosen();
    if (finding != nullptr && place_ < finding->ticks.size()) {
        session_.MoveToTick(finding->ticks[place_]);
    }
}

// From the start of the place's measure, or of the one before where the place is that start.
void HealthForm::Listen() {
    session::Transport& controls = session_.Controls();
    if (listenEnd_) {
        controls.Stop();
        return;
    }
    GoThere();
    controls.MoveByMeasures(-1);
    const song::Song& song = session_.Session().Song();
    const std::int64_t second = controls.Tick() + song::TicksInMeasureAtPos(song, controls.Tick());
    const std::int64_t end = second + song::TicksInMeasureAtPos(song, second);
    if (controls.Playing() || controls.Play()) {
        listenEnd_ = static_cast<std::int32_t>(std::min<std::int64_t>(end, song.songLength));
    }
    ShowListening();
}

void HealthForm::WatchListening() {
    const session::Transport& controls = session_.Controls();
    overview_->ShowPlace(controls.Tick());
    if (!listenEnd_) {
        return;
    }
    if (!controls.Playing()) {
        EndListening();
    } else if (controls.Tick() >= *listenEnd_) {
        session_.Controls().Stop();
    }
}

void HealthForm::EndListening() {
    listenEnd_.reset();
    ShowListening();
    GoThere();
}

void HealthForm::ShowListening() {
    listen_->setText(Say(listenEnd_ ? health_texts::kStopListening : health_texts::kListen));
    ShowPlace();
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
