#include "base/forms/qt_text.h"

#include "app/forms/main_form.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/ports/ports_dialog.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/forms/transport/play_desk.h"

// The commands that play the song.

namespace tracksmith::forms {

void TMainForm::ConnectPlayer() {
    connect(desk_.get(), &PlayDesk::LoopChanged, this, [this] {
        menu_->ActionOf(Command::Looping).setChecked(desk_->Loop() && desk_->Loop()->on);
    });
    connect(desk_.get(), &PlayDesk::TempoChanged, this, &TMainForm::ShowFileState);
    connect(desk_.get(), &PlayDesk::PortsChanged, this, &TMainForm::ShowMissingOutput);
    connect(desk_.get(), &PlayDesk::RoutesChanged, this, &TMainForm::TakeInstruments);
}

// Said once for each output that is missing.
void TMainForm::ShowMissingOutput() {
    const std::string missing = desk_->Outputs().MissingOutput();
    if (missing != missingOutput_ && !missing.empty()) {
        notice_->ShowPlain(InLanguage(texts::kOutputMissing, host_.CurrentLanguage())
                               .arg(ToQString(missing), ToQString(desk_->Outputs().Output())));
    }
    missingOutput_ = missing;
}

void TMainForm::MMP_PlayStopClick() {
    desk_->TogglePlay();
    const std::string trouble = sound_.Trouble(host_.CurrentLanguage());
    if (desk_->Playing() && desk_->PlaysOnSynth() && !trouble.empty()) {
        notice_->ShowPlain(ToQString(trouble));
    }
}

void TMainForm::MMP_MoveToStartClick() {
    desk_->MoveToStart();
}

void TMainForm::MMP_MoveToEndClick() {
    desk_->MoveToEnd();
}

void TMainForm::MMP_MeasureBackClick() {
    desk_->MoveByMeasures(-1);
}

void TMainForm::MMP_MeasureForwardClick() {
    desk_->MoveByMeasures(1);
}

void TMainForm::MMP_LoopingClick() {
    desk_->SetLooping(menu_->ActionOf(Command::Looping).isChecked());
}

void TMainForm::MMP_LoopFromHereClick() {
    desk_->LoopFromHere();
}

void TMainForm::MMP_LoopToHereClick() {
    desk_->LoopToHere();
}

void TMainForm::MMP_TempoDownClick() {
    desk_->ChangeTempo(-1);
}

void TMainForm::MMP_TempoUpClick() {
    desk_->ChangeTempo(1);
}

void TMainForm::MMP_TempoResetClick() {
    desk_->ResetTempo();
}

void TMainForm::MMP_PanicClick() {
    desk_->Panic();
}

void TMainForm::MMV_NextPageClick() {
    songView_->ShowNextPage();
}

void TMainForm::MMS_MidiPortsClick() {
    auto* dialog = new PortsDialog(*desk_, sound_, *chooser_, host_.CurrentLanguage(), this);
    dialog->open();
}

} // namespace tracksmith::forms
