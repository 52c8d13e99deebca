#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "app/session/session_listener.h"

namespace tracksmith::session {

/// The listeners of a session, told in the order in which they came. A listener may leave or join
/// while all are told. Owner's thread.
class ListenerList {
public:
    /// `listener` must leave before it is destroyed.
    void Add(SessionListener& listener) { listeners_.push_back(&listener); }
    void Remove(SessionListener& listener) { std::erase(listeners_, &listener); }

    /// Calls `method` of each with `arguments`.
    template <typename Method, typename... Arguments>
    void Tell(Method method, const Arguments&... arguments) const {
        for (SessionListener* listener : std::vector(listeners_)) {
            if (std::ranges::find(listeners_, listener) != listeners_.end()) {
                (listener->*method)(arguments...);
            }
        }
    }

private:
    std::vector<SessionListener*> listeners_;
};

} // namespace tracksmith::session
