#include <array>

#include "base/forms/dialog_frame.h"
#include "base/forms/labels.h"
#include "base/forms/panel.h"
#include "base/forms/theme.h"
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/forms/health/health_columns.h"
#include "app/forms/health/health_form.h"
#include "app/forms/health/note_figure_view.h"
#include "app/forms/health/texts.h"
#include "app/forms/overview/overview_widget.h"
#include "app/forms/transport/session_signals.h"

// How the window of findings is laid out.

namespace tracksmith::forms {
namespace {

QLabel* NewTextBlock(const char* objectName) {
    QLabel* label = NewLabel(objectName, nullptr);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

} // namespace

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

} // namespace tracksmith::forms
