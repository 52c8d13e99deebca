#include "app/forms/transport/position_display.h"

#include <algorithm>

#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>

#include "app/forms/texts.h"
#include "app/forms/transport/value_box.h"

namespace tracksmith::forms {
namespace {

constexpr double kBig = 2.2;
constexpr double kSmall = 1.2;

// The position is large enough to be read from afar; it need not grow with the text.
double PositionSize() {
    return std::max(kSmall, kBig / TextScale());
}

} // namespace

PositionDisplay::PositionDisplay(QWidget* parent)
    : Panel(QPalette::Base, parent),
      position_(new ValueBox("Lbl_Position", texts::kPosition, PositionSize(), true)),
      clock_(new ValueBox("Lbl_Time", texts::kTime, kSmall, true)),
      timeSignature_(new ValueBox("Lbl_TimeSignature", texts::kTimeSignature, kSmall, true)),
      notes_(new ValueBox("Lbl_NotesHere", texts::kNotesHere, kSmall, true)) {
    setObjectName(QStringLiteral("PositionDisplay"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Gap() * 2, Gap() / 2, Gap() * 2, Gap() / 2);
    row->setSpacing(Gap() * 2);
    for (ValueBox* box : {position_, clock_, timeSignature_, notes_}) {
        row->addWidget(box);
    }
}

void PositionDisplay::ShowPlace(const Place& place) {
    position_->SetValue(place.position);
    clock_->SetValue(place.clock);
    timeSignature_->SetValue(place.timeSignature);
    notes_->SetValue(place.notes);
}

void PositionDisplay::Reserve(const Place& end) {
    position_->Reserve(end.position);
    clock_->Reserve(end.clock);
    timeSignature_->Reserve(QStringLiteral("00/00"));
    notes_->Reserve(QStringLiteral("00.000"));
}

void PositionDisplay::Retranslate(Language language) {
    setAccessibleName(InLanguage(texts::kPosition, language));
    setAccessibleDescription(InLanguage(texts::kPositionHint, language));
    setToolTip(InLanguage(texts::kPositionHint, language));
    for (ValueBox* box : {position_, clock_, timeSignature_, notes_}) {
        box->Retranslate(language);
    }
}

} // namespace tracksmith::forms
