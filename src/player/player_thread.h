#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

#include "player/stopwatch.h"

namespace tracksmith::player {

/// Values of the thread state. 2 and 3 stand for waiting for an instrument's audio buffer; here
/// every instrument takes its messages like a port, so that nobody waits.
inline constexpr std::int32_t kStateStopped = 99;
inline constexpr std::int32_t kStateIdle = 0;
inline constexpr std::int32_t kStatePass = 1;

/// The thread that plays. It runs one pass after the other and sleeps until the next is due; while
/// stopped it sleeps without a deadline. Its state is the only hand-over with the owner's thread:
/// whoever changes it does so by compare-and-swap or exchange, so that no Stop is ever lost.
class TMidiPlayerThread {
public:
    /// One pass; returns the moment on the stopwatch (microseconds) when the next one is due. Must
    /// not throw.
    using Pass = std::function<std::int64_t()>;

    /// A thread that is not running yet, in the stopped state.
    TMidiPlayerThread(Stopwatch& stopwatch, Pass pass);
    TMidiPlayerThread(const TMidiPlayerThread&) = delete;
    TMidiPlayerThread& operator=(const TMidiPlayerThread&) = delete;
    ~TMidiPlayerThread();

    /// Lets the thread run. Owner's thread, as all down to ForbidPasses.
    void Start();
    /// Ends the thread and waits for it.
    void Terminate();
    /// From stopped to playing. False when it was not stopped.
    bool AllowPasses();

    /// What ForbidPasses found.
    struct Halt {
        /// No pass is running any more; else one is stuck in a driver.
        bool ended = false;
        /// The state was playing.
        bool wasPlaying = false;
    };
    /// Stops, and waits until a running pass has ended, at most `patience`.
    Halt ForbidPasses(std::chrono::milliseconds patience = std::chrono::milliseconds(1000));

    /// From idle to a pass; false when stopped. Playback thread, as all that follows but State and
    /// WorkingFlag.
    bool BeginPass();
    /// Back to idle, unless somebody has stopped meanwhile.
    void EndPass();
    /// From the pass to stopped; false when somebody else has changed the state meanwhile.
    bool StopInPass();
    /// The pass shall end without sending anything more.
    bool PassForbidden() const { return state_.load(std::memory_order_relaxed) != kStatePass; }

    std::int32_t State() const { return state_.load(); }
    /// True while the thread's loop runs.
    bool WorkingFlag() const { return workingFlag_.load(); }

private:
    void Run();

    Stopwatch& stopwatch_;
    Pass pass_;
    std::atomic<std::int32_t> state_ = kStateStopped;
    std::atomic<bool> workingFlag_ = false;
    std::atomic<bool> terminated_ = false;
    std::mutex mutex_;
    std::condition_variable passEnded_;
    bool inPass_ = false; // guarded by mutex_
    std::thread thread_;
};

/// Keeps passes from running while it lives, so that the owner's thread may touch what they use;
/// playing goes on afterwards when it was going on before.
class PassHold {
public:
    PassHold(TMidiPlayerThread& thread, Stopwatch& stopwatch);
    PassHold(const PassHold&) = delete;
    PassHold& operator=(const PassHold&) = delete;
    ~PassHold();

    /// False when a pass is stuck in a driver: then nothing that passes use may be touched.
    explicit operator bool() const { return halt_.ended; }
    bool WasPlaying() const { return halt_.wasPlaying; }
    /// Playing does not go on afterwards.
    void StayStopped() { resume_ = false; }

private:
    TMidiPlayerThread& thread_;
    Stopwatch& stopwatch_;
    TMidiPlayerThread::Halt halt_;
    bool resume_;
};

} // namespace tracksmith::player
