#include <algorithm>
#include <array>

#include "base/forms/dialog_frame.h"
#include "base/forms/flow_layout.h"
#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "editing/forms/figure_lines.h"
#include "editing/forms/position_fields.h"
#include "editing/forms/range_form.h"
#include "editing/forms/range_overview.h"
#include "editing/forms/texts.h"

// How the windows for ranges are laid out.

namespace tracksmith::forms {
namespace {

using editing::RangeTool;
using Field = editing::RangeReading::Field;

struct ToolChoice {
    RangeTool tool;
    const char* objectName;
    Text text;
};
constexpr auto kTools = std::to_array<ToolChoice>({
    {RangeTool::Delete, "Btn_ToolDelete", range_texts::kDelete},
    {RangeTool::Copy, "Btn_ToolCopy", range_texts::kCopy},
    {RangeTool::Transpose, "Btn_ToolTranspose", range_texts::kTranspose},
});

// Its widgets wrap where the width does not suffice.
FlowLayout& AddFlow(QWidget& owner, int spacing) {
    auto* row = new FlowLayout(&owner);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing);
    row->KeepWidths();
    return *row;
}

} // namespace

void RangeForm::Start(const char* objectName, const Text& title, const Text& purpose,
                      const editing::RangeWish& wish) {
    setObjectName(QLatin1String(objectName));
    AddColumn(*this);
    auto& column = static_cast<QVBoxLayout&>(*layout());
    BuildHeader(column, title, purpose);
    auto* positions = new QWidget;
    auto& row = AddFlow(*positions, Gap() * 2);
    from_ = AddPosition(row, "SourceFrom", range_texts::kFrom, Field::From);
    to_ = AddPosition(row, "SourceTo", range_texts::kTo, Field::To);
    BuildPositions(row);
    column.addWidget(positions);
    fault_ = NewLabel("Lbl_RangeFault", this);
    fault_->setWordWrap(true);
    column.addWidget(fault_);
    BuildOverviews(column);
    auto* details = new QHBoxLayout;
    details->setSpacing(Gap());
    figures_ = new FigureLines(this);
    BuildDetails(*details);
    details->addWidget(figures_);
    column.addLayout(details, 1);
    BuildFooter(column);
    resize(fontMetrics().height() * 62, fontMetrics().height() * 39);
    ShowPreview();
    ShowWish(wish);
    ShowSong();
    from_->setFocus();
}

void RangeForm::BuildHeader(QVBoxLayout& column, const Text& title, const Text& purpose) {
    setWindowTitle(Say(title));
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    auto* names = new QVBoxLayout;
    QLabel* heading = NewLabel("Lbl_RangeTitle", this);
    heading->setFont(ScaledFont(heading->font(), 1.4));
    heading->setText(Say(title));
    QLabel* caption = NewCaption("Lbl_RangePurpose", this);
    caption->setText(Say(purpose).arg(actions_.songName()));
    names->addWidget(heading);
    names->addWidget(caption);
    row->addLayout(names, 1);
    for (const ToolChoice& choice : kTools) {
        auto* button = new QPushButton(Say(choice.text));
        button->setObjectName(QLatin1String(choice.objectName));
        button->setAutoDefault(false);
        button->setCheckable(true);
        button->setChecked(choice.tool == Tool());
        connect(button, &QPushButton::clicked, this, [this, button, tool = choice.tool] {
            button->setChecked(tool == Tool());
            if (tool != Tool()) {
                actions_.open(tool, Wish());
            }
        });
        row->addWidget(button);
    }
    column.addLayout(row);
}

PositionFields* RangeForm::AddPosition(QLayout& row, const char* name, const Text& caption,
                                       Field field) {
    auto* fields = new PositionFields(name, caption, this);
    fields->Retranslate(CurrentLanguage());
    row.addWidget(fields);
    if (field == Field::Destination) {
        destination_ = fields;
    }
    connect(fields, &PositionFields::Edited, this, [this, field] {
        field == Field::From ? E_SourceFromBeatChange()
        : field == Field::To ? E_SourceToBeatChange()
                             : E_DestBeatChange();
    });
    connect(fields, &PositionFields::Stepped, this, [this, fields](int measures, int beats) {
        fields->Step(session_.Song(), measures, beats);
    });
    connect(fields, &PositionFields::PlayheadPressed, this, [this, field] { TakePlayhead(field); });
    return fields;
}

void RangeForm::BuildOverviews(QVBoxLayout& column) {
    auto* grid = new QGridLayout;
    grid->setSpacing(Gap());
    now_ = new RangeOverview("NowOverview", this);
    now_->SetDraggable(true);
    now_->setAccessibleName(Say(range_texts::kNow));
    now_->setToolTip(Say(range_texts::kNowHint));
    after_ = new RangeOverview("AfterOverview", this);
    after_->setAccessibleName(Say(range_texts::kAfter));
    after_->setToolTip(Say(range_texts::kAfterHint));
    QLabel* now = NewCaption("Lbl_Now", this);
    now->setText(Say(range_texts::kNow));
    QLabel* after = NewCaption("Lbl_After", this);
    after->setText(Say(range_texts::kAfter));
    grid->addWidget(now, 0, 0);
    grid->addWidget(now_, 0, 1);
    grid->addWidget(after, 1, 0);
    grid->addWidget(after_, 1, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(0, 3);
    grid->setRowStretch(1, 2);
    column.addLayout(grid, 1);
    connect(now_, &RangeOverview::RangeDragged, this, [this](std::int32_t start, std::int32_t end) {
        from_->ShowTick(session_.Song(), start);
        to_->ShowTick(session_.Song(), std::min(end, session_.Song().songLength - 1));
        Validate();
    });
    connect(now_, &RangeOverview::PlaceChosen, this,
            [this](std::int32_t tick) { session_.Controls().MoveToTick(tick); });
}

void RangeForm::BuildFooter(QVBoxLayout& column) {
    auto* footer = new QWidget;
    auto* row = &AddFlow(*footer, Gap());
    auto* loop = new QPushButton(Say(range_texts::kUseLoop));
    loop->setObjectName(QStringLiteral("Btn_UseLoop"));
    loop->setAutoDefault(false);
    connect(loop, &QPushButton::clicked, this, &RangeForm::UseLoop);
    preview_ = new QPushButton;
    preview_->setObjectName(QStringLiteral("Btn_Preview"));
    preview_->setAutoDefault(false);
    connect(preview_, &QPushButton::clicked, this, &RangeForm::Preview);
    row->addWidget(preview_);
    QLabel* what = NewCaption("Lbl_PreviewHint", this);
    what->setText(Say(PreviewText()));
    what->setMinimumWidth(what->sizeHint().width()); // rather two rows than less of it
    row->addWidget(what);
    row->SetStretching(what);
    row->addWidget(loop);
    QLabel* hint = NewCaption("Lbl_UndoHint", this);
    hint->setText(Say(range_texts::kUndoHint));
    row->addWidget(hint);
    ok_ = new QPushButton;
    ok_->setObjectName(QStringLiteral("Btn_Ok"));
    ok_->setDefault(true);
    connect(ok_, &QPushButton::clicked, this, &RangeForm::Btn_OkClick);
    row->addWidget(ok_);
    auto* cancel = new QPushButton(Say(range_texts::kCancel));
    cancel->setObjectName(QStringLiteral("Btn_Cancel"));
    cancel->setAutoDefault(false);
    connect(cancel, &QPushButton::clicked, this, &RangeForm::Btn_CancelClick);
    row->addWidget(cancel);
    column.addWidget(footer);
}

} // namespace tracksmith::forms
