#include <functional>

#include "base/data_folders.h"
#include "base/errors.h"
#include "base/forms/qt_text.h"
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include "app/forms/main_form.h"
#include "app/forms/notices/captured_message.h"
#include "app/forms/notices/dialogs.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"
#include "app/load_sequence.h"

namespace tracksmith::forms {
namespace {

class WaitCursor {
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

// The one local file that is dragged; empty for anything else.
QString DraggedFile(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    return urls.size() == 1 && urls.constFirst().isLocalFile() ? urls.constFirst().toLocalFile()
                                                               : QString();
}

} // namespace

// The boundary at which a command ends: the message of the fault has been shown.
bool TMainForm::Run(const std::function<void()>& command) {
    try {
        const WaitCursor cursor;
        command();
        return true;
    } catch (const EMidiError&) {
        return false;
    }
}

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

void TMainForm::LoadAndShow(const std::filesystem::path& file, bool isDemo) {
    if (!Run([&] { app::OpenMidiFile(session_, file, host_, isDemo); })) {
        if (!session_.HasSong()) {
            notice_->Clear();
        }
        notice_->ShowPlain(texts::NotOpened(ShownFileName(file), host_.CurrentLanguage()));
        return;
    }
    // The demo song is part of the program, not a file of the user's.
    if (!isDemo) {
        RememberFile(file);
    }
    notice_->Clear();
    ShowChanges();
    status_->ShowStatus(texts::kLoaded, SongFileName());
    songView_->FocusOverview();
}

void TMainForm::RememberFile(const std::filesystem::path& file) {
    recentFiles_.Add(file);
    settings_.WriteLastFolder(std::filesystem::absolute(file).parent_path());
    ShowRecentFiles();
}

void TMainForm::ShowChanges() {
    const session::TakeBack& last = session_.LastChange();
    notice_->ShowChanges(session_.Work(), last.Available() && !last.Taken());
}

void TMainForm::ClearMidiMemory() {
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
    if (ConfirmDiscard() && Run([&] { app::NewSong(session_, host_); })) {
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

void TMainForm::MME_TakeBackClick() {
    if (Run([&] { session_.TakeBackLastChange(host_); })) {
        ShowChanges();
    }
}

void TMainForm::MMF_WhatChangedClick() {
    ShowChangesDialog(this, session_.Work(), host_.CurrentLanguage());
}

void TMainForm::MMF_ThemeDarkClick() {
    ApplyChosenTheme(Theme::Dark);
}

void TMainForm::MMF_ThemeLightClick() {
    ApplyChosenTheme(Theme::Light);
}

void TMainForm::MMF_ThemeSystemClick() {
    ApplyChosenTheme(Theme::System);
}

void TMainForm::MMF_GermanClick() {
    settings_.WriteLanguage(Language::German);
    ApplyLanguage(Language::German);
}

void TMainForm::MMF_EnglishClick() {
    settings_.WriteLanguage(Language::English);
    ApplyLanguage(Language::English);
}

void TMainForm::MMF_OpenDemoSongClick() {
    const auto demo = FindData(std::filesystem::path("demo") / "demo.mid");
    if (!demo) {
        notice_->ShowText(texts::kNoDemo);
    } else if (ConfirmDiscard()) {
        LoadAndShow(*demo, true);
    }
}

void TMainForm::MMF_AboutClick() {
    ShowAboutDialog(this, host_.CurrentLanguage());
}

void TMainForm::closeEvent(QCloseEvent* event) {
    if (!ConfirmDiscard()) {
        event->ignore();
        return;
    }
    session_.Controls().Stop();
    settings_.WriteGeometry(saveGeometry());
    event->accept();
}

void TMainForm::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        TellChangedOnDisk();
    }
    QMainWindow::changeEvent(event);
}

void TMainForm::dragEnterEvent(QDragEnterEvent* event) {
    if (!DraggedFile(*event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void TMainForm::dropEvent(QDropEvent* event) {
    const QString file = DraggedFile(*event->mimeData());
    if (!file.isEmpty()) {
        event->acceptProposedAction();
        OpenMidiFile(PathFromQString(file));
    }
}

} // namespace tracksmith::forms
