#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace tracksmith::midi::jack {

/// The thread that talks to the server. The library wants its clients opened and closed on one
/// thread, and each of these calls waits for the server's answer, for ever when the server is
/// stopped. So they are made here, one after the other, and nobody waits longer than he likes.
class CallThread {
public:
    CallThread();
    CallThread(const CallThread&) = delete;
    CallThread& operator=(const CallThread&) = delete;
    /// Lets the calls that were given end, for at most a second. A thread that hangs in the server
    /// is left to itself and ends with the process, or when the server answers.
    ~CallThread();

    /// Has `call` made after those that were given before and waits until it has ended, at most
    /// `patience`; not at all while the thread has been in one call for longer than that. False
    /// when it has not ended: it will be made or go on later, so it must own what it uses.
    bool Run(std::function<void()> call, std::chrono::milliseconds patience);

    /// How long the thread has been in the call that it makes now; 0 when it makes none.
    std::chrono::milliseconds Busy() const;

private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace tracksmith::midi::jack
