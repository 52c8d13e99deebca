#pragma once

#include <functional>
#include <utility>

#include <QApplication>

namespace tracksmith::forms {

/// The application, which goes on and says so when memory runs out while an event is handled.
class Application final : public QApplication {
public:
    using QApplication::QApplication;

    /// What tells the user; called from the event loop, once for all faults until then.
    void SetOutOfMemoryHandler(std::function<void()> handler) { handler_ = std::move(handler); }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    void Tell();

    std::function<void()> handler_;
    bool untold_ = false;
};

} // namespace tracksmith::forms
