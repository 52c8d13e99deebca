#include <memory>
#include <utility>

#include "base/forms/qt_text.h"
#include <QApplication>

#include "app/forms/loading/song_loader.h"
#include "app/forms/main_form.h"
#include "app/forms/notices/captured_message.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/song/song_view.h"
#include "app/forms/texts.h"
#include "app/load_sequence.h"

// Loading songs beside the one in memory.

namespace tracksmith::forms {

void TMainForm::LoadAndShow(const std::filesystem::path& file, bool isDemo,
                            const AfterLoading& after) {
    Load({.file = file,
          .isDemo = isDemo,
          .options = session_.Options(),
          .language = host_.CurrentLanguage()},
         after);
}

void TMainForm::Load(app::LoadOrder order, AfterLoading after) {
    GiveUpLoading();
    bool ready = false;
    if (!Run([&] { ready = loader_->Start(std::move(order)); })) {
        if (after) {
            after(false);
        }
        return;
    }
    afterLoading_ = std::move(after);
    session_.SetAwaitsSong(true);
    if (ready) {
        TakeLoaded();
    }
}

// Under a dialog the song stays: what the user answers is about this one.
void TMainForm::TakeLoaded() {
    if (QApplication::activeModalWidget() != nullptr || session_.Changing()) {
        return;
    }
    const app::LoadOrder order = loader_->Order();
    const AfterLoading after = std::exchange(afterLoading_, {});
    EndAwaiting();
    std::unique_ptr<app::LoadedSong> loaded;
    CapturedMessage fault(host_);
    const bool taken = Run([&] {
        loaded = loader_->Take();
        app::TakeLoaded(session_, *loaded, fault);
    });
    if (taken) {
        ShowLoaded(order);
    } else if (loaded != nullptr) {
        TellRefused(order, *loaded, fault.Text());
    }
    if (after) {
        after(taken);
    }
}

void TMainForm::ShowLoaded(const app::LoadOrder& order) {
    songs_.Opened();
    // The demo song is part of the program, not a file of the user's.
    if (!order.isDemo) {
        RememberFile(order.file);
    }
    notice_->Clear();
    ShowChanges();
    TellNoteCheck();
    songView_->FocusOverview();
}

void TMainForm::ShowLoading() {
    if (loader_->Shown()) {
        status_->ShowLoading(
            {ShownFileName(loader_->Order().file), loader_->Percent(), loader_->Cancellable()});
    }
}

void TMainForm::EndAwaiting() {
    session_.SetAwaitsSong(false);
    status_->EndLoading();
    EndRefusal();
}

// What was wished is given up for something else; false when nothing was being loaded.
bool TMainForm::GiveUpLoading() {
    if (!loader_->Busy()) {
        return false;
    }
    loader_->Cancel();
    EndAwaiting();
    if (const AfterLoading after = std::exchange(afterLoading_, {})) {
        after(false);
    }
    return true;
}

void TMainForm::CancelLoading() {
    if (GiveUpLoading()) {
        songs_.Opened(); // the list goes on from the song that is still open
        ShowCommands();
        status_->ShowStatus(texts::kLoadingCancelled);
    }
}

// The program's own message first, below it what is wrong in plain words, and the way on.
void TMainForm::TellRefused(const app::LoadOrder& order, const app::LoadedSong& loaded,
                            const std::string& message) {
    if (!session_.HasSong()) {
        notice_->Clear();
    }
    const Language language = host_.CurrentLanguage();
    const QString name = ShownFileName(order.file);
    const QString sentence = ToQString(loaded.advice.In(language));
    notice_->ShowPlain(texts::NotOpened(name, language) + u' ' + sentence);
    const QString text = texts::Refused(ToQString(message), name, sentence);
    if (!loaded.advice.loadableWithRunningStatusAcrossSysex) {
        host_.ShowMessage(text.toStdString());
    } else if (host_.AskWayOn((text + texts::LoadableThatWay(language)).toStdString(),
                              texts::kLoadThatWay)) {
        LoadThatWay(order);
    }
}

// Only this file; the setting stays as it is.
void TMainForm::LoadThatWay(const app::LoadOrder& refused) {
    app::LoadOrder order = refused;
    order.isDemo = false;
    order.options.runningStatusAcrossSysex = true;
    Load(std::move(order), {});
}

} // namespace tracksmith::forms
