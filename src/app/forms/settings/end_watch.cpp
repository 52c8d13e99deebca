#include "app/forms/settings/end_watch.h"

#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>

#include "app/forms/main_form.h"

namespace tracksmith::forms {

EndWatch::EndWatch(TMainForm& form) {
    if (system::InterruptWatch::Descriptor() >= 0) {
        auto* waiting =
            new QSocketNotifier(system::InterruptWatch::Descriptor(), QSocketNotifier::Read, this);
        connect(waiting, &QSocketNotifier::activated, this, [waiting, &form] {
            waiting->setEnabled(false);
            form.EndNow();
        });
    }
    // The answer is wanted before the signal returns.
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this,
        [&form](QSessionManager& session) {
            const bool mayAsk = session.allowsInteraction();
            if (!form.AgreeToEnd(mayAsk)) {
                session.cancel();
            }
            if (mayAsk) {
                session.release();
            }
        },
        Qt::DirectConnection);
}

} // namespace tracksmith::forms
