#include "base/forms/qt_text.h"

#include "app/forms/main_form.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/ports/ports_dialog.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"
#include "app/session/texts.h"
#include "mixer/mixer.h"

// The commands that play the song.

namespace tracksmith::forms {

void TMainForm::ConnectSession() {
    connect(signals_.get(), &SessionSignals::SongChanged, this, &TMainForm::ShowSong);
    connect(signals_.get(), &SessionSignals::FileStateChanged, this, &TMainForm::ShowFileState);
    connect(signals_.get(), &SessionSignals::LoopChanged, this, &TMainForm::ShowLooping);
    connect(signals_.get(), &SessionSignals::PortsChanged, this, &TMainForm::ShowMissingOutput);
    connect(signals_.get(), &SessionSignals::PortsChecked, this, &TMainForm::ShowSettingsTrouble);
    connect(signals_.get(), &SessionSignals::RoutesChanged, this, &TMainForm::TakeInstruments);
    ConnectHearing();
}

void TMainForm::ShowLooping() {
    const auto& loop = session_.Controls().Loop();
    menu_->ActionOf(commands::kLooping).setChecked(loop && loop->on);
}

// Said once for each output that is missing.
void TMainForm::ShowMissingOutput() {
    const std::string missing = session_.Controls().Outputs().MissingOutput();
    if (missing != missingOutput_ && !missing.empty()) {
        notice_->ShowPlain(
            InLanguage(texts::kOutputMissing, host_.CurrentLanguage())
                .arg(ToQString(missing), ToQString(session_.Controls().Outputs().Output())));
    }
    missingOutput_ = missing;
}

// The store tells each kind once; it is looked at with the ports, since any control may write.
void TMainForm::ShowSettingsTrouble() {
    while (const auto trouble = store_.TakeTrouble()) {
        notice_->ShowPlain(ToQString(trouble->In(host_.CurrentLanguage())));
    }
}

void TMainForm::MMP_PlayStopClick() {
    session_.Controls().TogglePlay();
    const std::string trouble = sound_.Trouble(host_.CurrentLanguage());
    if (session_.Controls().Playing() && session_.Controls().PlaysOnSynth() && !trouble.empty()) {
        notice_->ShowPlain(ToQString(trouble));
    }
}

void TMainForm::MMP_MoveToStartClick() {
    session_.Controls().MoveToStart();
}

void TMainForm::MMP_MoveToEndClick() {
    session_.Controls().MoveToEnd();
}

void TMainForm::MMP_MeasureBackClick() {
    session_.Controls().MoveByMeasures(-1);
}

void TMainForm::MMP_MeasureForwardClick() {
    session_.Controls().MoveByMeasures(1);
}

void TMainForm::MMP_LoopingClick() {
    session_.Controls().SetLooping(menu_->ActionOf(commands::kLooping).isChecked());
}

void TMainForm::MMP_LoopFromHereClick() {
    session_.Controls().LoopFromHere();
}

void TMainForm::MMP_LoopToHereClick() {
    session_.Controls().LoopToHere();
}

void TMainForm::MMP_TempoDownClick() {
    session_.Controls().SetBpm(session_.Controls().Bpm() - 1);
}

void TMainForm::MMP_TempoUpClick() {
    session_.Controls().SetBpm(session_.Controls().Bpm() + 1);
}

void TMainForm::MMP_TempoResetClick() {
    session_.Controls().ResetTempo();
}

void TMainForm::TransposeSong(int semitones) {
    if (!mixer_->TransposeChange(semitones)) {
        TellPortHangs();
    }
    songView_->ShowMixer();
}

void TMainForm::TellPortHangs() {
    if (session_.WhyNoChange() != nullptr) {
        return; // that is why, and has been told
    }
    notice_->ShowPlain(ToQString(session::texts::PortHangs(
        host_.CurrentLanguage(), session_.Controls().Player().HangingPort())));
}

void TMainForm::MMP_TransposeUpClick() {
    TransposeSong(mixer_->Transposing().song + 1);
}

void TMainForm::MMP_TransposeDownClick() {
    TransposeSong(mixer_->Transposing().song - 1);
}

void TMainForm::MMP_TransposeResetClick() {
    TransposeSong(0);
}

void TMainForm::InsertAtStart(int channel, mixer::Control control) {
    Run([&] { mixer_->InsertAtStart(static_cast<std::size_t>(channel), control, host_); });
}

void TMainForm::MMP_PanicClick() {
    session_.Controls().Panic();
}

// What waits for the song to play goes out when it is switched on.
void TMainForm::MMS_LiveWhileStoppedClick() {
    const bool on = menu_->ActionOf(commands::kLiveWhileStopped).isChecked();
    mixer_->Live().SetLiveWhileStopped(on);
    settings_.WriteSwitch(kLiveWhileStopped, on);
}

void TMainForm::MMV_NextPageClick() {
    songView_->ShowNextPage();
}

const ConnectionTools& TMainForm::Connection() {
    if (!connection_.asker) {
        player::TMidiPlayer& player = session_.Controls().Player();
        connection_.asker =
            std::make_shared<app::InstrumentAsker>(player, instruments::IdentityTable::Load());
        connection_.test = std::make_shared<app::ConnectionTest>(player);
    }
    return connection_;
}

void TMainForm::MMS_MidiPortsClick() {
    auto* dialog =
        new PortsDialog(*signals_, sound_, *chooser_, Connection(), host_.CurrentLanguage(), this);
    const std::string former = instruments_.ReadInstrument();
    connect(dialog, &PortsDialog::InstrumentChosen, this, &TMainForm::TakeAnsweredInstrument);
    connect(dialog, &QDialog::finished, this, [this, former] { OfferPreparing(former); });
    dialog->open();
}

} // namespace tracksmith::forms
