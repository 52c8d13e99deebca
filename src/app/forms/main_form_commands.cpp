#include <functional>
#include <new>

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
    event->setAccepted(AgreeToEnd(true));
}

void TMainForm::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        TellChangedOnDisk();
    }
    QMainWindow::changeEvent(event);
}

void TMainForm::dragEnterEvent(QDragEnterEvent* event) {
    const QString file = DraggedFile(*event->mimeData());
    if (!file.isEmpty()) {
        event->acceptProposedAction();
        dropHint_->ShowFile(ShownFileName(PathFromQString(file)), host_.CurrentLanguage());
    }
}

void TMainForm::dragLeaveEvent(QDragLeaveEvent* event) {
    dropHint_->hide();
    QMainWindow::dragLeaveEvent(event);
}

void TMainForm::dropEvent(QDropEvent* event) {
    dropHint_->hide();
    const QString file = DraggedFile(*event->mimeData());
    if (!file.isEmpty()) {
        event->acceptProposedAction();
        OpenMidiFile(PathFromQString(file));
    }
}

} // namespace tracksmith::forms
