#include <QStackedWidget>

#include "app/forms/main_form.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/start/start_page.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"

// The page at the first start.

namespace tracksmith::forms {

bool TMainForm::WantsStartPage() {
    return settings_.ReadStartPage(!instruments_.HasInstrument());
}

void TMainForm::MMF_FirstStepsClick() {
    StartAnswers answers;
    answers.instrument = instruments_.ReadInstrument();
    answers.output = session_.Controls().Outputs().Output();
    answers.again = settings_.ReadStartPage(false);
    ShowStartPage(answers);
}

void TMainForm::ShowStartPage(const StartAnswers& answers) {
    LeaveStartPage();
    const Language language = host_.CurrentLanguage();
    StartAround around;
    around.remark = [this, language](const instruments::Instrument& each) {
        return voices_.Remark(each, language);
    };
    around.outputs = [this] { return session_.Controls().Player().OutputDevices(); };
    around.input = [this] { return sound_.ReadInput(); };
    around.connection = Connection();
    around.chooseSong = [this] {
        return chooser_
            ->ChooseOpen(this, host_.CurrentLanguage(), FileKind::Song, settings_.ReadLastFolder())
            .value_or(std::filesystem::path());
    };
    around.recent = recentFiles_.List();
    startPage_ = new StartPage(std::move(around), answers, language);
    pages_->addWidget(startPage_);
    pages_->setCurrentWidget(startPage_);
    connect(startPage_, &StartPage::Accepted, this, &TMainForm::TakeStartAnswers);
    connect(startPage_, &StartPage::Skipped, this, [this] {
        settings_.WriteStartPage(startPage_->Answers().again);
        LeaveStartPage();
    });
    connect(startPage_, &StartPage::LanguageChosen, this, [this](Language chosen) {
        chosen == Language::German ? MMF_GermanClick() : MMF_EnglishClick();
    });
    connect(signals_.get(), &SessionSignals::PortsChanged, startPage_, &StartPage::ShowOutputs);
}

// In another language; the answers so far stay.
void TMainForm::ShowStartPageAnew() {
    if (startPage_ != nullptr) {
        ShowStartPage(startPage_->Answers());
    }
}

// The page may be the sender of what led here.
void TMainForm::LeaveStartPage() {
    if (startPage_ != nullptr) {
        pages_->removeWidget(startPage_);
        startPage_->disconnect(this);
        startPage_->deleteLater();
        startPage_.clear();
        pages_->setCurrentIndex(session_.HasSong() ? 1 : 0);
    }
}

void TMainForm::TakeStartAnswers() {
    const StartAnswers answers = startPage_->Answers();
    settings_.WriteStartPage(answers.again);
    LeaveStartPage();
    if (!answers.instrument.empty()) {
        TakeAnsweredInstrument(QString::fromStdString(answers.instrument));
    }
    if (!answers.output.empty() && answers.output != session_.Controls().Outputs().Output()) {
        session_.Controls().ChooseOutput(answers.output);
    }
    if (!answers.song.empty()) {
        OpenMidiFile(answers.song);
        return;
    }
    LoadDemoSong([this](bool loaded) {
        if (loaded) {
            session_.Controls().Play();
        }
    });
}

} // namespace tracksmith::forms
