#include "editing/forms/range_form.h"

#include <algorithm>
#include <new>
#include <utility>

#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QPushButton>

#include "editing/forms/figure_lines.h"
#include "editing/forms/position_fields.h"
#include "editing/forms/range_colours.h"
#include "editing/forms/range_overview.h"
#include "editing/forms/texts.h"
#include "song/note_overview.h"

namespace tracksmith::forms {
namespace {

using editing::RangeTool;
using Field = editing::RangeReading::Field;

/// After the last key press, before the whole song is looked at.
constexpr int kSoonMs = 150;

} // namespace

RangeForm::RangeForm(session::Session& session, editing::RangeTools& tools, MessageHost& host,
                     RangeFormActions actions, QWidget* parent)
    : QDialog(parent),
      session_(session),
      tools_(tools),
      host_(host),
      actions_(std::move(actions)),
      listening_(session) {
    setAttribute(Qt::WA_DeleteOnClose);
    soon_.setSingleShot(true);
    soon_.setInterval(kSoonMs);
    connect(&soon_, &QTimer::timeout, this, &RangeForm::Look);
}

QString RangeForm::Say(const Text& text) const {
    return InLanguage(text, CurrentLanguage());
}

editing::RangeWish RangeForm::Wish() const {
    return {Tool(), from_->Text(), to_->Text(),
            destination_ != nullptr ? destination_->Text() : editing::PositionText{}};
}

void RangeForm::ShowWish(const editing::RangeWish& wish) {
    from_->SetText(wish.from);
    to_->SetText(wish.to);
    if (destination_ != nullptr) {
        destination_->SetText(wish.destination.measure.empty() ? wish.to : wish.destination);
    }
}

PositionFields* RangeForm::FieldsOf(Field field) const {
    return field == Field::Destination ? destination_ : field == Field::To ? to_ : from_;
}

void RangeForm::TakePlayhead(Field field) {
    if (PositionFields* fields = FieldsOf(field); fields != nullptr) {
        fields->ShowTick(session_.Song(), session_.Controls().Tick());
        Validate();
    }
}

void RangeForm::UseLoop() {
    const auto& loop = session_.Controls().Loop();
    if (!loop) {
        host_.ShowMessage(range_texts::kNoLoop.In(CurrentLanguage()));
        return;
    }
    from_->ShowTick(session_.Song(), loop->startTick);
    to_->ShowTick(session_.Song(), std::min(loop->endTick, session_.Song().songLength - 1));
    Validate();
}

void RangeForm::ShowPlace() {
    const std::int32_t tick = session_.Controls().Tick();
    if (listening_.On()) {
        ShowHeardPlace(tick);
    } else {
        now_->ShowPlace(tick);
    }
}

void RangeForm::Preview() {
    if (listening_.On()) {
        listening_.End();
    } else {
        static_cast<void>(actions_.run([this] { BeginPreview(); }));
    }
    ShowPreview();
}

void RangeForm::BeginPreview() {
    const editing::Foresight foresight = Foresee();
    if (!foresight.after) {
        host_.ShowMessage(foresight.reading.fault);
        return;
    }
    HearAnew(foresight);
}

void RangeForm::HearAnew(const editing::Foresight& foresight) {
    const editing::SeamSpan span = HeardSpan(foresight);
    static_cast<void>(listening_.Begin(*foresight.after, span.from, span.to));
}

void RangeForm::ShowPreview() {
    preview_->setText(Say(listening_.On() ? range_texts::kStopPreview : range_texts::kPreview));
    if (!listening_.On()) {
        ShowHeardPlace(-1);
        ShowPlace();
    }
}

void RangeForm::ShowPlaying(bool playing) {
    if (!playing && listening_.On()) {
        listening_.End();
        ShowPreview();
    }
}

void RangeForm::done(int result) {
    listening_.End();
    QDialog::done(result);
}

void RangeForm::ShowSong() {
    if (done_ || !session_.HasSong()) {
        return;
    }
    song::NoteOverview notes = song::MakeNoteOverview(session_.Song());
    const std::size_t columns = notes.Columns();
    now_->SetSong(std::move(notes), columns);
    ShowPlace();
    Validate();
}

// The fields are read at once; what would happen is found when the user pauses.
void RangeForm::Validate() {
    const editing::RangeReading reading = Check();
    ShowFault(reading);
    ShowRange(reading);
    soon_.start();
}

void RangeForm::ShowFault(const editing::RangeReading& reading) {
    const bool good = reading.fault.empty();
    for (const Field field : {Field::From, Field::To, Field::Destination}) {
        if (field != Field::Destination || destination_ != nullptr) {
            FieldsOf(field)->SetFaulty(!good && reading.field == field);
        }
    }
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, RedColour(colours));
    fault_->setPalette(colours);
    fault_->setText(ToQString(reading.fault));
    ok_->setEnabled(good);
}

void RangeForm::ShowRange(const editing::RangeReading& reading) {
    if (!reading.fault.empty()) {
        now_->ShowRange({});
        now_->ShowLine({});
        ok_->setText(ActText({}));
        return;
    }
    const Language language = CurrentLanguage();
    const editing::RangeFigures figures = editing::CountRange(session_.Song(), reading.range);
    const bool cut = Tool() == RangeTool::Delete;
    const bool copy = Tool() == RangeTool::Copy;
    now_->ShowRange(RangeMark{reading.range.start, reading.range.end,
                              cut ? RedColour(palette()) : Accent(palette()), cut,
                              copy ? range_texts::MeasuresCopied(figures.measures, language)
                                   : range_texts::Measures(figures.measures, language)});
    if (copy) {
        now_->ShowLine(PlaceMark{reading.range.destination, AmberColour(palette()), true});
    }
    ok_->setText(ActText(figures));
}

void RangeForm::Look() {
    if (done_ || !session_.HasSong() || session_.Changing()) {
        return;
    }
    try {
        const editing::Foresight foresight = Foresee();
        if (!foresight.after) {
            ShowFault(foresight.reading);
            listening_.End();
            ShowPreview();
            after_->SetSong({}, 1);
            ShowNothing();
            return;
        }
        song::NoteOverview notes = song::MakeNoteOverview(*foresight.after);
        const std::size_t columns = std::max(notes.Columns(), now_->Columns());
        now_->SetScale(columns);
        after_->SetSong(std::move(notes), columns);
        ShowForesight(foresight);
        if (listening_.On()) {
            HearAnew(foresight);
            ShowPreview();
        }
    } catch (const std::bad_alloc&) {
        after_->SetSong({}, 1); // the tool itself will say that memory does not suffice
        ShowNothing();
    }
}

void RangeForm::Btn_OkClick() {
    const editing::RangeReading reading = Check();
    if (!reading.fault.empty()) {
        host_.ShowMessage(reading.fault);
        return;
    }
    soon_.stop();
    listening_.End();
    done_ = true; // what follows is the window's own change
    if (actions_.run([this] { ProcessData(); })) {
        accept();
    } else {
        done_ = false;
        ShowSong();
    }
}

} // namespace tracksmith::forms
