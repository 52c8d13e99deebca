#include <optional>
#include <span>

#include "base/forms/qt_text.h"
#include "base/system/known_folders.h"
#include <QDesktopServices>
#include <QUrl>

#include "app/forms/health/health_form.h"
#include "app/forms/health/health_watch.h"
#include "app/forms/main_form.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"
#include "app/health/repair.h"
#include "app/note_report.h"
#include "app/note_settings.h"

// What is wrong with the song.

namespace tracksmith::forms {

health::HealthOptions TMainForm::HealthOptionsOf() {
    health::HealthOptions options;
    const session::Workspace& work = session_.Work();
    if (work.noteLength.minimum > 0) {
        options.shortNote = 0; // loading has seen to them
    }
    const auto& output = work.outputs.outputs.front();
    if (instruments::FindInstrument(output.name) != nullptr) {
        options.instrument = output.id;
        options.voices = &voices_.Tables();
        options.lookup = voices_.OptionsOf(output.id);
    }
    return options;
}

void TMainForm::ShowFindings() {
    songView_->ShowHealth(healthWatch_->Ready() ? std::optional(healthWatch_->Report().counts)
                                                : std::nullopt);
}

void TMainForm::MMF_HealthClick() {
    if (!session_.HasSong()) {
        return;
    }
    if (health_ != nullptr) {
        health_->raise();
        health_->activateWindow();
        return;
    }
    const HealthActions actions{
        *healthWatch_,
        [this](const health::Finding& finding, std::int32_t tick) {
            return health::FigureOf(session_.Song(), finding, tick, HealthOptionsOf());
        },
        [this](const health::Finding& finding) {
            Run([&] { health::Repair(session_, {&finding, 1}, HealthOptionsOf(), host_); });
        },
        [this] { Run([&] { health::RepairAll(session_, HealthOptionsOf(), host_); }); },
        [this] { Run([&] { session_.TakeBackLastChange(host_); }); },
        [this] { TakeBackLengthening(); },
        [this] { OpenNoteReport(); }};
    const auto& output = session_.Work().outputs.outputs.front();
    const bool known = instruments::FindInstrument(output.name) != nullptr;
    health_ =
        new HealthForm(*signals_, actions, SongFileName(),
                       known ? ToQString(output.name) : QString(), host_.CurrentLanguage(), this);
    health_->show();
}

// In another language.
void TMainForm::ShowHealthAnew() {
    if (health_ != nullptr) {
        delete health_.data();
        MMF_HealthClick();
    }
}

// The load step that can be taken back, else the file once more without it.
void TMainForm::TakeBackLengthening() {
    const session::TakeBack& last = session_.LastChange();
    if (last.Available() && !last.Taken() &&
        last.Name().english == session::kLengthenNotes.name.english) {
        Run([&] { session_.TakeBackLastChange(host_); });
        return;
    }
    const session::FileState file = session_.Work().file;
    if (!file.source.empty() && ConfirmDiscard()) {
        const song::NoteLengthOptions setting = session_.Options().noteLength;
        session_.Options().noteLength = {};
        LoadAndShow(std::filesystem::path(file.source), file.isDemo);
        session_.Options().noteLength = setting;
    }
}

void TMainForm::MMF_NoteLengthClick() {
    song::NoteLengthOptions& length = session_.Options().noteLength;
    length.minimum = menu_->Chosen(kNoteLengthMenu);
    if (!app::WriteNoteLength(store_, length)) {
        notice_->ShowText(texts::kSettingNotStored);
    }
    if (session_.HasSong()) {
        notice_->ShowReloadOffer();
    }
}

void TMainForm::TellNoteCheck() {
    if (session_.Options().skipNoteCheck) {
        status_->ShowStatus(texts::kNoteCheckOff);
    } else if (!session_.Work().balanced) {
        status_->ShowStatus(texts::kNoteFault);
    } else {
        status_->ShowStatus(texts::kLoaded, SongFileName());
    }
}

// Beside the backups.
void TMainForm::OpenNoteReport() {
    const std::filesystem::path file = app::NoteReportFile(system::UserDataFolder() / "AutoBackups",
                                                           PathFromQString(SongFileName()));
    bool written = false;
    if (Run([&] { written = app::WriteNoteReport(session_.Work(), file, host_); }) && written) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(PathToQString(file)));
        notice_->ShowPlain(texts::ReportWritten(ShownPath(file), host_.CurrentLanguage()));
    }
}

} // namespace tracksmith::forms
