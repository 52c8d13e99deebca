#include "app/forms/application.h"

#include <new>
#include <utility>

#include <QTimer>

namespace tracksmith::forms {

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc&) {
        // The handler may show a box, whose events must not run inside what has just failed.
        if (!std::exchange(untold_, true)) {
            QTimer::singleShot(0, this, &Application::Tell);
        }
        return false;
    }
}

void Application::Tell() {
    untold_ = false;
    if (handler_) {
        handler_();
    }
}

} // namespace tracksmith::forms
