#include "app/forms/settings/start_watch.h"

#include <chrono>
#include <utility>

#include <QApplication>

#include "app/forms/main_form.h"

namespace tracksmith::forms {
namespace {

constexpr std::chrono::milliseconds kLookAgain{200};

} // namespace

StartWatch::StartWatch(TMainForm& form, system::SingleStart& start) : form_(form) {
    again_.setInterval(kLookAgain);
    connect(&again_, &QTimer::timeout, this, &StartWatch::OpenWaiting);
    start.Receive([this](const std::vector<std::filesystem::path>& files) { Take(files); });
}

void StartWatch::Take(const std::vector<std::filesystem::path>& files) {
    form_.setWindowState(form_.windowState() & ~Qt::WindowMinimized);
    form_.raise();
    form_.activateWindow();
    if (!files.empty()) {
        waiting_ = files;
        OpenWaiting();
    }
}

void StartWatch::OpenWaiting() {
    if (QApplication::activeModalWidget() != nullptr) {
        again_.start();
        return;
    }
    again_.stop();
    form_.OpenMidiFiles(std::exchange(waiting_, {}));
}

} // namespace tracksmith::forms
