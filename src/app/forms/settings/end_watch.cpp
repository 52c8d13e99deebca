#include "app/forms/settings/end_watch.h"

#include <QGuiApplication>
#include <QSessionManager>

#include "app/forms/main_form.h"
#include "app/forms/settings/interrupt_notifier.h"

namespace tracksmith::forms {

EndWatch::EndWatch(TMainForm& form) {
    CallWhenInterrupted(*this, [&form] { form.EndNow(); });
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
