#include "editing/forms/delete_range_form.h"

#include <utility>

#include "base/forms/flow_layout.h"
#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "editing/forms/figure_lines.h"
#include "editing/forms/range_colours.h"
#include "editing/forms/range_overview.h"
#include "editing/forms/texts.h"
#include "song/song_position.h"

namespace tracksmith::forms {

TDeleteRangeForm::TDeleteRangeForm(session::Session& session, editing::RangeTools& tools,
                                   MessageHost& host, RangeFormActions actions,
                                   const editing::RangeWish& wish, QWidget* parent)
    : SeamForm(session, tools, host, std::move(actions), parent) {
    Start("Dlg_DeleteRange", range_texts::kDeleteRange, range_texts::kDeletePurpose, wish);
}

void TDeleteRangeForm::BuildPositions(FlowLayout& row) {
    auto* length = new QWidget;
    auto* column = new QVBoxLayout(length);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Gap() / 2);
    QLabel* caption = NewCaption("Lbl_LengthCaption", this);
    caption->setText(Say(range_texts::kLength));
    length_ = NewLabel("Lbl_Length", this);
    column->addWidget(caption);
    column->addWidget(length_, 1);
    row.addWidget(length);
}

editing::RangeReading TDeleteRangeForm::Check() const {
    return editing::CheckDelete(Owner().Song(), Wish(), CurrentLanguage());
}

editing::Foresight TDeleteRangeForm::Foresee() const {
    return editing::ForeseeDelete(Owner().Song(), Wish(), CurrentLanguage());
}

QString TDeleteRangeForm::ActText(const editing::RangeFigures& figures) const {
    return range_texts::DeleteMeasures(figures.measures, CurrentLanguage());
}

void TDeleteRangeForm::ShowForesight(const editing::Foresight& foresight) {
    const Language language = CurrentLanguage();
    const editing::TickRange& range = foresight.reading.range;
    const QPalette& colours = palette();
    length_->setText(
        range_texts::LengthText(foresight.figures.measures, foresight.figures.lengthMs, language));
    After().SetRest(range_texts::Shorter(foresight.figures.lengthMs, language));
    After().ShowLine(PlaceMark{range.start, Accent(colours), false});
    const auto was = song::GetMeasureBeatFromSongPos(Owner().Song(), range.end).measure;
    ShowSeam(foresight, range_texts::WasMeasure(was, language), Accent(colours));
    const std::int64_t messages =
        foresight.figures.instrumentMessages + foresight.figures.drumMessages;
    ShowFigures(foresight,
                {RedColour(colours), range_texts::NotesGo(foresight.figures.notes, language)},
                {RedColour(colours), range_texts::MessagesGo(messages, language)});
}

void TDeleteRangeForm::ShowNothing() {
    length_->clear();
    After().ShowLine({});
    After().SetRest({});
    ClearSeam();
}

void TDeleteRangeForm::ProcessData() {
    const std::int64_t measures = editing::CountRange(Owner().Song(), Check().range).measures;
    Tools().Delete(Wish());
    Actions().tell(range_texts::kDeleteDone, measures);
}

} // namespace tracksmith::forms
