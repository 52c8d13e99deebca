#include <algorithm>

#include "base/forms/qt_text.h"
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include "app/forms/health/health_form.h"
#include "app/forms/health/health_watch.h"
#include "app/forms/health/note_figure_view.h"
#include "app/forms/health/texts.h"
#include "app/forms/overview/overview_widget.h"
#include "app/forms/transport/session_signals.h"
#include "song/song_position.h"

// One finding: what it means, where it is, how that sounds.

namespace tracksmith::forms {

using health::Finding;
using health::Rule;

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

} // namespace tracksmith::forms
