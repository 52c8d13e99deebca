#include <utility>

#include "base/system/interrupt.h"
#include <QSocketNotifier>

#include "app/forms/settings/interrupt_notifier.h"

namespace tracksmith::forms {

void CallWhenInterrupted(QObject& owner, std::function<void()> action) {
    const int descriptor = system::InterruptWatch::Descriptor();
    if (descriptor < 0) {
        return;
    }
    auto* waiting = new QSocketNotifier(descriptor, QSocketNotifier::Read, &owner);
    QObject::connect(waiting, &QSocketNotifier::activated, &owner,
                     [waiting, action = std::move(action)] {
                         waiting->setEnabled(false);
                         action();
                     });
}

} // namespace tracksmith::forms
