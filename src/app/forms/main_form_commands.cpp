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
#include "app/forms/notices/dialogs.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/forms/transport/play_desk.h"
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
    if (!workspace_.modified) {
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
    desk_->LeaveSong();
    const bool loaded = Run([&] { app::OpenMidiFile(workspace_, file, host_); });
    if (loaded || !workspace_.hasSong) {
        desk_->TakeSong();
    }
    if (loaded) {
        source_ = file;
        isDemo_ = isDemo;
        // The demo song is part of the program: saving asks for a place of the user's own.
        if (isDemo) {
            workspace_.fileName.clear();
        } else {
            recentFiles_.Add(file);
            settings_.WriteLastFolder(std::filesystem::absolute(file).parent_path());
            ShowRecentFiles();
        }
        notice_->ShowChanges(workspace_);
        status_->ShowStatus(texts::kLoaded, SongFileName());
        songView_->FocusOverview();
    } else if (!workspace_.hasSong) {
        notice_->Clear();
    }
    ShowWorkspace();
}

void TMainForm::ClearMidiMemory() {
    desk_->LeaveSong();
    app::ClearMidiMemory(workspace_);
    desk_->TakeSong();
    source_.clear();
    isDemo_ = false;
    notice_->Clear();
    status_->ShowStatus(texts::kReady);
    ShowWorkspace();
}

bool TMainForm::SaveSong() {
    return workspace_.fileName.empty() ? SaveSongAs(app::SaveFormat::AsSong)
                                       : SaveTo(workspace_.fileName, app::SaveFormat::AsSong);
}

bool TMainForm::SaveSongAs(app::SaveFormat format) {
    const auto proposal = workspace_.fileName.empty()
                              ? settings_.ReadLastFolder() / source_.filename()
                              : workspace_.fileName;
    const auto file = chooser_->ChooseSave(this, host_.CurrentLanguage(), FileKind::Song, proposal);
    return file && SaveTo(*file, format);
}

bool TMainForm::SaveTo(const std::filesystem::path& file, app::SaveFormat format) {
    if (!app::ConfirmOverwrite(file, host_) ||
        !Run([&] { app::SaveMidiFile(workspace_, file, format, host_); })) {
        return false;
    }
    source_ = workspace_.fileName;
    isDemo_ = false;
    recentFiles_.Add(file);
    settings_.WriteLastFolder(std::filesystem::absolute(file).parent_path());
    ShowRecentFiles();
    status_->ShowStatus(texts::kSaved, ShownFileName(file));
    ShowFileState();
    return true;
}

void TMainForm::MMF_NewMidifileClick() {
    if (!ConfirmDiscard()) {
        return;
    }
    ClearMidiMemory();
    Run([&] { app::NewSong(workspace_, host_); });
    desk_->TakeSong();
    notice_->ShowChanges(workspace_);
    songView_->FocusOverview();
    ShowWorkspace();
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
    if (!source_.empty() && ConfirmDiscard()) {
        LoadAndShow(std::filesystem::path(source_), isDemo_);
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

void TMainForm::MMF_WhatChangedClick() {
    ShowChangesDialog(this, workspace_, host_.CurrentLanguage());
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
    desk_->Stop();
    settings_.WriteGeometry(saveGeometry());
    event->accept();
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
