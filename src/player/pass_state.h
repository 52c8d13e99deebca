#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace tracksmith::player {

/// Values of the thread state. 2 and 3 stand for waiting for an instrument's audio buffer; here
/// every instrument takes its messages like a port, so that nobody waits.
inline constexpr std::int32_t kStateStopped = 99;
inline constexpr std::int32_t kStateIdle = 0;
inline constexpr std::int32_t kStatePass = 1;

/// The hand-over between the owner's thread and the playback thread: whether passes may run, and
/// to whom the song belongs. Whoever changes the state does so by compare-and-swap or exchange, so
/// that no Stop is ever lost.
///
/// A pass that sends is in a driver, which may hang. Meanwhile it uses nothing of the song, and the
/// owner's thread may give it up: then it ends as soon as the driver lets go of it, and touches
/// nothing any more.
class PassState {
public:
    /// From stopped to playing. False when it was not stopped. Owner's thread, as all down to
    /// Stuck.
    bool Allow();

    /// What Forbid found.
    struct Halt {
        /// No pass is running any more; else one is in a driver.
        bool ended = false;
        /// What passes use may be touched: the pass has ended or was given up.
        bool free = false;
        /// The state was playing.
        bool wasPlaying = false;
    };
    /// Stops, and waits until a running pass has ended; for one in a driver at most `patience`, and
    /// not at all for one that was waited for in vain before. `giveUp` gives such a pass up.
    Halt Forbid(std::chrono::milliseconds patience, bool giveUp = false);
    /// A pass was waited for in vain and is still in its driver.
    bool Stuck() const;

    /// From idle to a pass; false when stopped. Playback thread, as all that follows but State.
    bool Begin();
    /// Back to idle, unless somebody has stopped meanwhile. True when somebody has waited in vain.
    bool End();
    /// From the pass to stopped; false when somebody else has changed the state meanwhile.
    bool StopInPass();
    /// The pass shall end without sending anything more.
    bool Forbidden() const { return state_.load(std::memory_order_relaxed) != kStatePass; }
    /// The pass is about to call a driver, and has done all that it had to do with the song.
    void EnterDriver() { place_.store(Place::Driver); }
    /// The call is over. False when the pass was given up meanwhile.
    [[nodiscard]] bool LeaveDriver();

    std::int32_t State() const { return state_.load(); }

private:
    enum class Place { None, Song, Driver, GivenUp };

    std::atomic<std::int32_t> state_ = kStateStopped;
    std::atomic<Place> place_ = Place::None;
    mutable std::mutex mutex_;
    std::condition_variable ended_;
    bool waitedInVain_ = false; // guarded by mutex_
};

} // namespace tracksmith::player
