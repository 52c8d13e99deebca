#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace tracksmith::system {

/// Hands messages of any thread over to the thread that created the poster: on Windows through a
/// hidden window, elsewhere through a queue that DispatchMessages empties. At most one message of a
/// number waits at a time, so that no queue can fill; who posts must therefore keep the data
/// elsewhere and the handler must take all of it.
class MessagePoster {
public:
    /// Called on the creating thread with the number of the message.
    using Handler = std::function<void(std::uint32_t message)>;

    explicit MessagePoster(Handler handler);
    MessagePoster(const MessagePoster&) = delete;
    MessagePoster& operator=(const MessagePoster&) = delete;
    /// Messages that still wait are dropped. Must run on the creating thread, when nobody posts any
    /// more.
    ~MessagePoster();

    /// Asks for one call of the handler. `message` 0-4095. Never blocks or throws; may be called
    /// from any thread.
    void Post(std::uint32_t message) noexcept;

private:
    struct Window;
    std::unique_ptr<Window> window_;
};

/// Runs the handlers of all messages that wait for the calling thread. A program without an event
/// loop calls it from time to time; on Windows every message loop does the same.
void DispatchMessages();

/// Sets what is called, from any thread, when a message begins to wait for the calling thread, so
/// that an event loop can call DispatchMessages soon. Without effect on Windows, whose event loops
/// notice by themselves. Null ends it.
void SetMessageWakeUp(std::function<void()> wakeUp);

} // namespace tracksmith::system
