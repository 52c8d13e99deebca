#include <functional>
#include <new>

#include "base/data_folders.h"
#include "base/errors.h"
#include "base/forms/qt_text.h"
#include "base/system/file_types.h"
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include "app/forms/guide/guide_desk.h"
#include "app/forms/main_form.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/notices/dialogs.h"
#include "app/forms/notices/drop_hint.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"
#include "app/session/texts.h"

namespace tracksmith::forms {
namespace {

class WaitCursor {
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

// The local files that are dragged; none when there is anything else among them.
std::vector<std::filesystem::path> DraggedFiles(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    std::vector<std::filesystem::path> files;
    for (const QUrl& url : urls) {
        if (!url.isLocalFile()) {
            return {};
        }
        files.push_back(PathFromQString(url.toLocalFile()));
    }
    return files;
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
    } catch (const std::bad_alloc&) {
        TellOutOfMemory();
        return false;
    }
}

void TMainForm::TellOutOfMemory() {
    host_.ShowMessage(session::texts::kNoMemory.In(host_.CurrentLanguage()));
}

void TMainForm::MME_TakeBackClick() {
    if (Run([&] { session_.TakeBackLastChange(host_); })) {
        ShowChanges();
    }
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

void TMainForm::MMF_UserGuideClick() {
    guide_->Show();
}

void TMainForm::MMF_OpenDemoSongClick() {
    LoadDemoSong();
}

void TMainForm::LoadDemoSong(const AfterLoading& after) {
    const auto demo = FindData(std::filesystem::path("demo") / "demo.mid");
    if (!demo) {
        notice_->ShowText(texts::kNoDemo);
    } else if (ConfirmDiscard()) {
        LoadAndShow(*demo, true, after);
    }
}

void TMainForm::ShowFileAssociation() {
    QAction& action = menu_->ActionOf(commands::kFileAssociation);
    action.setVisible(association_.Possible());
    action.setChecked(association_.Possible() && association_.Offered());
}

void TMainForm::MMS_FileAssociationClick() {
    const bool wanted = menu_->ActionOf(commands::kFileAssociation).isChecked();
    const bool done =
        wanted ? association_.Offer(host_.CurrentLanguage()) : association_.TakeBack();
    system::TellFileTypesChanged();
    ShowFileAssociation();
    if (!done) {
        notice_->ShowText(texts::kSettingNotStored);
    }
}

void TMainForm::MMF_AboutClick() {
    ShowAboutDialog(this, host_.CurrentLanguage());
}

void TMainForm::closeEvent(QCloseEvent* event) {
    event->setAccepted(AgreeToEnd(true));
}

void TMainForm::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        TellChangedOnDisk();
    }
    QMainWindow::changeEvent(event);
}

void TMainForm::dragEnterEvent(QDragEnterEvent* event) {
    const auto files = DraggedFiles(*event->mimeData());
    if (!files.empty()) {
        event->acceptProposedAction();
        dropHint_->ShowFile(ShownFileName(files.front()), files.size() - 1,
                            host_.CurrentLanguage());
    }
}

void TMainForm::dragLeaveEvent(QDragLeaveEvent* event) {
    dropHint_->hide();
    QMainWindow::dragLeaveEvent(event);
}

void TMainForm::dropEvent(QDropEvent* event) {
    dropHint_->hide();
    const auto files = DraggedFiles(*event->mimeData());
    if (!files.empty()) {
        event->acceptProposedAction();
        OpenMidiFiles(files);
    }
}

} // namespace tracksmith::forms
