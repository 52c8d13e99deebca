#include <utility>

#include "base/system/interrupt.h"
#include <QWinEventNotifier>

#include "app/forms/settings/interrupt_notifier.h"

namespace tracksmith::forms {

void CallWhenInterrupted(QObject& owner, std::function<void()> action) {
    void* event = system::InterruptWatch::Event();
    if (event == nullptr) {
        return;
    }
    auto* waiting = new QWinEventNotifier(event, &owner);
    QObject::connect(waiting, &QWinEventNotifier::activated, &owner,
                     [waiting, action = std::move(action)] {
                         waiting->setEnabled(false);
                         action();
                     });
}

} // namespace tracksmith::forms
