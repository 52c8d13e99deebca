#pragma once

#include <functional>

class QObject;

namespace tracksmith::forms {

/// Lets the event loop call `action` once, when an InterruptWatch that lives is asked for the end,
/// as long as `owner` lives. User-interface thread.
void CallWhenInterrupted(QObject& owner, std::function<void()> action);

} // namespace tracksmith::forms
