#include <algorithm>

#include "base/forms/qt_text.h"

#include "app/forms/main_form.h"
#include "app/forms/menu/recent_files_menu.h"
#include "app/forms/notices/captured_message.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/load_sequence.h"
#include "app/prepare_song.h"
#include "mixer/mixer.h"

// The commands that open and save songs.

namespace tracksmith::forms {

bool TMainForm::ConfirmDiscard() {
    if (!session_.Modified()) {
        return true;
    }
    const auto answer = host_.AskSaveChanges(SongFileName());
    return answer == QtMessageHost::SaveAnswer::Discard ||
           (answer == QtMessageHost::SaveAnswer::Save && SaveSong());
}

void TMainForm::OpenMidiFile(const std::filesystem::path& file) {
    if (ConfirmDiscard()) {
        LoadAndShow(file, false);
    }
}

void TMainForm::OpenMidiFiles(const std::vector<std::filesystem::path>& files,
                              const AfterLoading& after) {
    if (!ConfirmDiscard()) {
        return;
    }
    std::for_each(files.rbegin(), files.rend(),
                  [this](const std::filesystem::path& file) { recentFiles_.Add(file); });
    ShowRecentFiles();
    songs_.Take(files);
    const QString name = ShownFileName(files.front());
    LoadAndShow(files.front(), false, [this, name, count = files.size(), after](bool loaded) {
        if (loaded && count > 1) {
            status_->ShowStatus(texts::kLoaded,
                                texts::SongOfList(name, 1, count, host_.CurrentLanguage()));
        }
        if (after) {
            after(loaded);
        }
    });
}

void TMainForm::RememberFile(const std::filesystem::path& file) {
    recentFiles_.Add(file);
    settings_.WriteLastFolder(std::filesystem::absolute(file).parent_path());
    ShowRecentFiles();
}

void TMainForm::ShowChanges() {
    const session::TakeBack& last = session_.LastChange();
    notice_->ShowChanges(session_.Work(), {.takeBack = last.Available() && !last.Taken(),
                                           .leadIn = app::CanInsertLeadIn(session_),
                                           .prepare = app::CanPrepare(session_.Work())});
}

void TMainForm::ClearMidiMemory() {
    GiveUpLoading();
    if (Run([&] { app::ClearMidiMemory(session_, host_); })) {
        notice_->Clear();
        status_->ShowStatus(texts::kReady);
    }
}

bool TMainForm::SaveSong() {
    const std::filesystem::path& name = session_.Work().file.name;
    return name.empty() ? SaveSongAs(app::SaveFormat::AsSong)
                        : SaveTo(name, app::SaveFormat::AsSong);
}

bool TMainForm::SaveSongAs(app::SaveFormat format) {
    const session::FileState& state = session_.Work().file;
    const auto proposal =
        state.name.empty() ? settings_.ReadLastFolder() / state.source.filename() : state.name;
    const auto file = chooser_->ChooseSave(this, host_.CurrentLanguage(), FileKind::Song, proposal);
    return file && SaveTo(*file, format);
}

bool TMainForm::SaveTo(const std::filesystem::path& file, app::SaveFormat format) {
    const std::filesystem::path target = file; // may be the session's own
    const std::int32_t bpm = session_.TempoOffset() != 0 ? session_.Controls().Bpm() : 0;
    const bool transposed = mixer_->Transposing().Any();
    const int semitones = mixer_->Transposing().song;
    if (!ConfirmOverwrite(target)) {
        return false;
    }
    CapturedMessage fault(host_);
    if (!Run([&] { app::SaveMidiFile(session_, target, format, fault); })) {
        return host_.AskWayOn(fault.Text(), texts::kSaveAs) && SaveSongAs(format);
    }
    RememberFile(target);
    if (bpm != 0) {
        notice_->ShowPlain(texts::SavedWithTempo(bpm, host_.CurrentLanguage()));
    }
    if (transposed) {
        notice_->ShowPlain(texts::SavedTransposed(semitones, host_.CurrentLanguage()));
    }
    status_->ShowStatus(texts::kSaved, ShownFileName(target));
    return true;
}

bool TMainForm::ConfirmOverwrite(const std::filesystem::path& file) {
    const session::FileState& state = session_.Work().file;
    if (file == state.source && state.ChangedOnDisk() && session::StampOf(file)) {
        return host_.AskYesNo(
            texts::OverwriteChanged(ShownFileName(file), host_.CurrentLanguage()).toStdString());
    }
    return app::ConfirmOverwrite(file, host_);
}

// Said once for each change that others make.
void TMainForm::TellChangedOnDisk() {
    const session::FileState& state = session_.Work().file;
    if (!session_.HasSong() || !state.ChangedOnDisk()) {
        return;
    }
    const auto stamp = session::StampOf(state.source);
    if (stamp != toldStamp_) {
        toldStamp_ = stamp;
        notice_->ShowChangedOnDisk(ShownFileName(state.source));
    }
}

void TMainForm::MMF_NewMidifileClick() {
    if (!ConfirmDiscard()) {
        return;
    }
    GiveUpLoading();
    if (Run([&] { app::NewSong(session_, host_); })) {
        songs_.Opened();
        notice_->Clear();
        ShowChanges();
        songView_->FocusOverview();
    }
}

void TMainForm::MMF_OpenMidifileClick() {
    const auto file = chooser_->ChooseOpen(this, host_.CurrentLanguage(), FileKind::Song,
                                           settings_.ReadLastFolder());
    if (file) {
        OpenMidiFile(*file);
    }
}

void TMainForm::MMF_OpenRecentClick(const std::filesystem::path& file) {
    OpenMidiFile(std::filesystem::path(file)); // the list that holds `file` is made anew
}

void TMainForm::MMF_ClearRecentClick() {
    recentFiles_.Clear();
    ShowRecentFiles();
}

void TMainForm::MMF_ReloadMidifileClick() {
    const session::FileState& file = session_.Work().file;
    if (!file.source.empty() && ConfirmDiscard()) {
        LoadAndShow(std::filesystem::path(file.source), file.isDemo);
    }
}

// Where the song is in its list is said in the status line, since that is where one looks who leafs
// through a folder.
void TMainForm::OpenFromList(int step) {
    if (!ConfirmDiscard()) {
        return;
    }
    const auto entry = songs_.Step(session_.Work().file.source, step);
    if (!entry) {
        status_->ShowStatus(step > 0 ? texts::kLastSong : texts::kFirstSong);
        return;
    }
    LoadAndShow(entry->file, false, [this, entry = *entry](bool loaded) {
        if (loaded) {
            status_->ShowStatus(texts::kLoaded,
                                texts::SongOfList(ShownFileName(entry.file), entry.number,
                                                  entry.count, host_.CurrentLanguage()));
        }
    });
}

void TMainForm::MMF_NextSongClick() {
    OpenFromList(1);
}

void TMainForm::MMF_PreviousSongClick() {
    OpenFromList(-1);
}

void TMainForm::MMF_SaveMidifileClick() {
    SaveSong();
}

void TMainForm::MMF_SaveMidifileAsClick() {
    SaveSongAs(app::SaveFormat::AsSong);
}

void TMainForm::MMF_SaveFileAsFormat0Click() {
    SaveSongAs(app::SaveFormat::Format0);
}

void TMainForm::MMF_SaveFileAsFormat1Click() {
    SaveSongAs(app::SaveFormat::Format1);
}

} // namespace tracksmith::forms
