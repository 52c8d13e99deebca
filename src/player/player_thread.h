#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "player/pass_state.h"
#include "player/stopwatch.h"

namespace tracksmith::player {

/// The thread that plays. It runs one pass after the other and sleeps until the next is due; while
/// stopped it sleeps without a deadline. Everything here is for the owner's thread.
class TMidiPlayerThread {
public:
    /// One pass; returns the moment on the stopwatch (microseconds) when the next one is due. Must
    /// not throw. Once it was given up it must touch nothing but its PassState.
    using Pass = std::function<std::int64_t(PassState&)>;

    /// A thread that is not running yet, in the stopped state. `onFreed` is called on the playback
    /// thread when a pass that was waited for in vain has ended after all; must not block.
    TMidiPlayerThread(std::shared_ptr<Stopwatch> stopwatch, Pass pass,
                      std::function<void()> onFreed);
    TMidiPlayerThread(const TMidiPlayerThread&) = delete;
    TMidiPlayerThread& operator=(const TMidiPlayerThread&) = delete;
    ~TMidiPlayerThread();

    /// Lets the thread run.
    void Start();
    /// Ends the thread and waits for it. One that hangs in a driver is given up and left to itself.
    void Terminate();
    /// Leaves a thread that hangs in a driver to itself and goes on with a new one, stopped. True
    /// when the former was playing.
    bool Replace();

    PassState& Passes() const;
    /// From stopped to playing, and off at once. False when it was not stopped.
    bool AllowPasses();
    std::int32_t State() const { return Passes().State(); }
    /// True while the thread's loop runs.
    bool WorkingFlag() const;

private:
    struct Core;

    void LeaveToItself();

    std::shared_ptr<Core> core_;
};

/// Keeps passes from running while it lives, so that the owner's thread may touch what they use;
/// playing goes on afterwards when it was going on before.
class PassHold {
public:
    /// Longest wait for a pass that is in a driver.
    static constexpr std::chrono::milliseconds kPatience{150};

    explicit PassHold(TMidiPlayerThread& thread)
        : thread_(thread), halt_(thread.Passes().Forbid(kPatience)) {}
    PassHold(const PassHold&) = delete;
    PassHold& operator=(const PassHold&) = delete;
    ~PassHold() {
        if (halt_.wasPlaying) {
            thread_.AllowPasses();
        }
    }

    /// False when a pass is stuck in a driver: then nothing that passes use may be touched.
    explicit operator bool() const { return halt_.free; }
    bool WasPlaying() const { return halt_.wasPlaying; }

private:
    TMidiPlayerThread& thread_;
    PassState::Halt halt_;
};

} // namespace tracksmith::player
