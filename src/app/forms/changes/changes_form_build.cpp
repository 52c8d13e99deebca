#include <array>

#include "base/forms/dialog_frame.h"
#include "base/forms/flow_layout.h"
#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include "app/forms/changes/changes_form.h"
#include "app/forms/changes/changes_watch.h"
#include "app/forms/changes/listening_row.h"
#include "app/forms/changes/texts.h"
#include "app/forms/overview/overview_widget.h"
#include "app/forms/settings/file_chooser.h"
#include "app/forms/transport/session_signals.h"

// What the window of the changes consists of.

namespace tracksmith::forms {
void ChangesForm::BuildHeader(QVBoxLayout& column) {
    QLabel* title = NewLabel("Lbl_ChangesTitle", this);
    title->setText(Say(changes_texts::kTitle));
    title->setFont(ScaledFont(title->font(), 1.4));
    song_ = NewCaption("Lbl_ChangesSong", this);
    auto* names = new QVBoxLayout;
    names->addWidget(title);
    names->addWidget(song_);
    column.addLayout(names);
    BuildFilters(column);
}

// They wrap where the width does not suffice.
void ChangesForm::BuildFilters(QVBoxLayout& column) {
    constexpr std::array<const char*, diff::kKinds> kNames{
        "Btn_Voices", "Btn_Controllers", "Btn_Notes", "Btn_Messages", "Btn_TempoKind", "Btn_Texts"};
    auto* filters = new QWidget;
    auto* row = new FlowLayout(filters);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Gap());
    for (const char* name : kNames) {
        QPushButton* kind = NewButton(name, {});
        kind->setCheckable(true);
        kind->setChecked(true);
        connect(kind, &QPushButton::toggled, this, &ChangesForm::ShowRows);
        row->addWidget(kind);
        kinds_.push_back(kind);
    }
    channel_ = new QComboBox;
    channel_->setObjectName(QStringLiteral("Box_ChangesChannel"));
    channel_->setAccessibleName(Say(changes_texts::kChannelFilter));
    channel_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(channel_, &QComboBox::currentIndexChanged, this, &ChangesForm::ShowRows);
    row->addWidget(channel_);
    column.addWidget(filters);
}

void ChangesForm::BuildOverview(QVBoxLayout& column) {
    overview_ = new OverviewWidget;
    overview_->Retranslate(language_);
    overview_->setObjectName(QStringLiteral("ChangesOverview"));
    overview_->setAccessibleName(Say(changes_texts::kPlaces));
    overview_->setFixedHeight(overview_->sizeHint().height());
    connect(overview_, &OverviewWidget::PlaceChosen, this, [this](std::int32_t tick) {
        session_.MoveToTick(tick);
        ChooseAt(tick);
    });
    connect(overview_, &OverviewWidget::LoopChosen, &session_, &SessionSignals::SetLoop);
    column.addWidget(overview_);
}

void ChangesForm::BuildListening(QVBoxLayout& column) {
    listening_ = new ListeningRow(session_, language_);
    loopHere_ = new QCheckBox(Say(changes_texts::kLoopHere));
    loopHere_->setObjectName(QStringLiteral("Chk_LoopHere"));
    loopHere_->setToolTip(Say(changes_texts::kLoopHint));
    connect(loopHere_, &QCheckBox::toggled, this, &ChangesForm::SetLoopHere);
    auto* row = new QHBoxLayout;
    row->setSpacing(Gap());
    row->addWidget(listening_, 1);
    row->addWidget(loopHere_);
    column.addLayout(row);
}

void ChangesForm::BuildTree() {
    tree_ = new QTreeView;
    tree_->setObjectName(QStringLiteral("Tree_Changes"));
    tree_->setAccessibleName(Say(changes_texts::kChanges));
    tree_->setModel(model_);
    tree_->setAlternatingRowColors(true);
    tree_->setUniformRowHeights(true);
    tree_->setAllColumnsShowFocus(true);
    tree_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tree_->setSelectionMode(QAbstractItemView::SingleSelection);
    tree_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tree_->setTextElideMode(Qt::ElideRight);
    tree_->header()->setStretchLastSection(true);
    tree_->header()->setHighlightSections(false);
    tree_->installEventFilter(this);
}

void ChangesForm::BuildFooter(QVBoxLayout& column) {
    saveText_ = NewButton("Btn_SaveText", Say(changes_texts::kSaveText));
    saveJson_ = NewButton("Btn_SaveJson", Say(changes_texts::kSaveJson));
    QPushButton* loading = NewButton("Btn_OnLoading", Say(changes_texts::kLoading));
    loading->setToolTip(Say(changes_texts::kLoadingHint));
    summary_ = NewCaption("Lbl_ChangesSummary", nullptr);
    goThere_ = NewButton("Btn_ChangeGoThere", Say(changes_texts::kGoThere));
    goThere_->setDefault(true);
    QPushButton* close = NewButton("Btn_Close", Say(changes_texts::kClose));
    auto* row = new QHBoxLayout;
    row->setSpacing(Gap());
    for (QWidget* widget : {static_cast<QWidget*>(saveText_), static_cast<QWidget*>(saveJson_),
                            static_cast<QWidget*>(loading)}) {
        row->addWidget(widget);
    }
    row->addStretch(1);
    row->addWidget(goThere_);
    row->addWidget(close);
    column.addWidget(summary_);
    column.addLayout(row);
    connect(saveText_, &QPushButton::clicked, this, [this] { Save(FileKind::ChangesText); });
    connect(saveJson_, &QPushButton::clicked, this, [this] { Save(FileKind::ChangesJson); });
    connect(loading, &QPushButton::clicked, this, [this] { actions_.showLoading(); });
    connect(goThere_, &QPushButton::clicked, this, &ChangesForm::GoThere);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

void ChangesForm::Connect() {
    connect(&watch_, &ChangesWatch::Changed, this, &ChangesForm::Refresh);
    connect(&session_, &SessionSignals::SongChanged, this, &ChangesForm::ShowSong);
    connect(&session_, &SessionSignals::FileStateChanged, this, &ChangesForm::ShowSummary);
    connect(&session_, &SessionSignals::PlaceChanged, this, &ChangesForm::ShowPlace);
    connect(tree_, &QTreeView::clicked, this, &ChangesForm::GoThere);
    connect(this, &QDialog::finished, this, &ChangesForm::End);
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        ShowButtons();
        if (loopHere_->isChecked()) {
            SetLoopHere(true);
        }
    });
}

} // namespace tracksmith::forms
