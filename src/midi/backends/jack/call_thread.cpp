#include "midi/backends/jack/call_thread.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <new>
#include <thread>
#include <utility>

namespace tracksmith::midi::jack {
namespace {

using Clock = std::chrono::steady_clock;

// Longest wait at the end, and the longest call that is waited for then.
constexpr std::chrono::seconds kLastPatience{1};
constexpr std::chrono::milliseconds kLongestLastCall{500};
constexpr std::chrono::milliseconds kLook{20};

} // namespace

/// Shared with the thread, which may outlive its owner.
struct CallThread::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> calls;
    std::uint64_t given = 0;
    std::uint64_t ended = 0;
    bool busy = false;
    Clock::time_point busySince;
    bool closing = false;
    bool finished = false;
    std::thread thread;

    std::chrono::milliseconds Busy() const {
        return busy
                   ? std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - busySince)
                   : std::chrono::milliseconds(0);
    }

    void Work() {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return !calls.empty() || closing; });
            if (calls.empty()) {
                finished = true;
                changed.notify_all();
                return;
            }
            Make(lock, std::exchange(calls.front(), nullptr));
        }
    }

    void Make(std::unique_lock<std::mutex>& lock, std::function<void()> call) {
        calls.pop_front();
        busy = true;
        busySince = Clock::now();
        lock.unlock();
        try {
            call();
        } catch (const std::bad_alloc&) {
            // Whoever waits for what it makes finds nothing.
        }
        // What it owned may be a client, which is closed here, too.
        call = nullptr;
        lock.lock();
        busy = false;
        ++ended;
        changed.notify_all();
    }
};

CallThread::CallThread() : state_(std::make_shared<State>()) {
    state_->thread = std::thread([state = state_] { state->Work(); });
}

CallThread::~CallThread() {
    std::unique_lock lock(state_->mutex);
    state_->closing = true;
    state_->changed.notify_all();
    const auto deadline = Clock::now() + kLastPatience;
    while (!state_->finished && state_->Busy() < kLongestLastCall && Clock::now() < deadline) {
        state_->changed.wait_for(lock, kLook);
    }
    std::thread thread = std::move(state_->thread);
    if (!state_->finished) {
        thread.detach();
        return;
    }
    lock.unlock();
    thread.join();
}

bool CallThread::Run(std::function<void()> call, std::chrono::milliseconds patience) {
    std::unique_lock lock(state_->mutex);
    state_->calls.push_back(std::move(call));
    const std::uint64_t own = ++state_->given;
    state_->changed.notify_all();
    const auto wait = state_->Busy() > patience ? std::chrono::milliseconds(0) : patience;
    return state_->changed.wait_for(lock, wait, [&] { return state_->ended >= own; });
}

std::chrono::milliseconds CallThread::Busy() const {
    const std::lock_guard lock(state_->mutex);
    return state_->Busy();
}

} // namespace tracksmith::midi::jack
