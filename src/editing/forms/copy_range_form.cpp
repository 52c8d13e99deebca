#include "editing/forms/copy_range_form.h"

#include <utility>

#include "base/forms/flow_layout.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>

#include "editing/forms/figure_lines.h"
#include "editing/forms/range_colours.h"
#include "editing/forms/range_overview.h"
#include "editing/forms/texts.h"
#include "song/song_position.h"

namespace tracksmith::forms {

TCopyRangeForm::TCopyRangeForm(session::Session& session, editing::RangeTools& tools,
                               MessageHost& host, RangeFormActions actions,
                               const editing::RangeWish& wish, QWidget* parent)
    : SeamForm(session, tools, host, std::move(actions), parent) {
    Start("Dlg_CopyRange", range_texts::kCopyRange, range_texts::kCopyPurpose, wish);
}

void TCopyRangeForm::BuildPositions(FlowLayout& row) {
    AddPosition(row, "Dest", range_texts::kDestination, editing::RangeReading::Field::Destination);
    state_ = new QCheckBox(Say(range_texts::kBringState));
    state_->setObjectName(QStringLiteral("Chk_BringState"));
    state_->setChecked(true);
    connect(state_, &QCheckBox::toggled, this, &TCopyRangeForm::Validate);
    row.addWidget(state_);
}

void TCopyRangeForm::BuildDetails(QHBoxLayout& row) {
    SeamForm::BuildDetails(row);
    AddSeamChoice();
}

// Which of the block's two seams is looked at.
void TCopyRangeForm::AddSeamChoice() {
    const auto add = [this](const char* name, const Text& text) {
        auto* button = new QPushButton(Say(text));
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        button->setCheckable(true);
        button->setAutoExclusive(true);
        Figures().Head().addWidget(button);
        return button;
    };
    blockStart_ = add("Btn_BlockStart", range_texts::kBlockStart);
    blockEnd_ = add("Btn_BlockEnd", range_texts::kBlockEnd);
    blockStart_->setChecked(true);
    connect(blockEnd_, &QPushButton::toggled, this, &TCopyRangeForm::Validate);
}

editing::RangeReading TCopyRangeForm::Check() const {
    return editing::CheckCopy(Owner().Song(), Wish(), CurrentLanguage());
}

editing::Foresight TCopyRangeForm::Foresee() const {
    return editing::ForeseeCopy(Owner().Song(), Wish(), state_->isChecked(), CurrentLanguage());
}

QString TCopyRangeForm::ActText(const editing::RangeFigures& figures) const {
    return range_texts::CopyMeasures(figures.measures, CurrentLanguage());
}

void TCopyRangeForm::ShowForesight(const editing::Foresight& foresight) {
    const Language language = CurrentLanguage();
    const editing::TickRange& range = foresight.reading.range;
    const QPalette& colours = palette();
    After().ShowRange(RangeMark{range.destination, range.destination + range.Length(),
                                AmberColour(colours), false,
                                range_texts::MeasuresNew(foresight.figures.measures, language)});
    const auto measureAt = [&](std::int32_t tick) {
        return song::GetMeasureBeatFromSongPos(Owner().Song(), tick).measure;
    };
    ShowSeam(foresight,
             AtEnd() ? range_texts::WasMeasure(measureAt(range.destination), language)
                     : range_texts::IsMeasureAgain(measureAt(range.start), language),
             AmberColour(colours));
    const std::int64_t messages =
        foresight.figures.instrumentMessages + foresight.figures.drumMessages;
    ShowFigures(foresight,
                {Accent(colours), range_texts::NotesCome(foresight.figures.notes,
                                                         foresight.figures.lengthMs, language)},
                {Accent(colours), range_texts::MessagesCome(messages, language)});
}

void TCopyRangeForm::ShowNothing() {
    After().ShowRange({});
    ClearSeam();
}

bool TCopyRangeForm::AtEnd() const {
    return blockEnd_->isChecked();
}

void TCopyRangeForm::ProcessData() {
    const std::int64_t measures = editing::CountRange(Owner().Song(), Check().range).measures;
    Tools().Copy(Wish(), state_->isChecked());
    Actions().tell(range_texts::kCopyDone, measures);
}

} // namespace tracksmith::forms
