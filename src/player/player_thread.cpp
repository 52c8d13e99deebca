#include "player/player_thread.h"

#include <atomic>
#include <mutex>
#include <thread>
#include <utility>

namespace tracksmith::player {
namespace {

// Longest wait for the thread's end.
constexpr std::chrono::milliseconds kPassPatience{200};

} // namespace

/// What the thread uses beside its passes. It may outlive the player.
struct TMidiPlayerThread::Core {
    std::shared_ptr<Stopwatch> stopwatch;
    Pass pass;
    std::function<void()> onFreed; // guarded by mutex, once the thread runs
    PassState passes;
    std::atomic<bool> working = false;
    std::atomic<bool> terminated = false;
    std::mutex mutex;
    std::thread thread;

    Core(std::shared_ptr<Stopwatch> clock, Pass onePass, std::function<void()> freed)
        : stopwatch(std::move(clock)), pass(std::move(onePass)), onFreed(std::move(freed)) {}

    void Run() {
        stopwatch->PrepareThread();
        while (!terminated) {
            std::int64_t next = Stopwatch::kForever;
            if (passes.Begin()) {
                next = pass(passes);
                if (passes.End()) {
                    TellFreed();
                }
            }
            if (!terminated) {
                stopwatch->SleepUntil(next);
            }
        }
        working = false;
    }

    void TellFreed() {
        const std::lock_guard lock(mutex);
        if (onFreed) {
            onFreed();
        }
    }
};

TMidiPlayerThread::TMidiPlayerThread(std::shared_ptr<Stopwatch> stopwatch, Pass pass,
                                     std::function<void()> onFreed)
    : core_(std::make_shared<Core>(std::move(stopwatch), std::move(pass), std::move(onFreed))) {}

TMidiPlayerThread::~TMidiPlayerThread() {
    Terminate();
}

void TMidiPlayerThread::Start() {
    if (!core_->thread.joinable()) {
        core_->terminated = false;
        core_->working = true;
        core_->thread = std::thread([core = core_] { core->Run(); });
    }
}

void TMidiPlayerThread::Terminate() {
    if (!core_->thread.joinable()) {
        return;
    }
    const bool ended = core_->passes.Forbid(kPassPatience, true).ended;
    core_->terminated = true;
    core_->stopwatch->Wake();
    if (ended) {
        core_->thread.join();
    } else {
        LeaveToItself();
    }
}

void TMidiPlayerThread::LeaveToItself() {
    const std::lock_guard lock(core_->mutex);
    core_->onFreed = nullptr;
    core_->terminated = true;
    core_->thread.detach();
}

bool TMidiPlayerThread::Replace() {
    const bool wasPlaying = core_->passes.Forbid(PassHold::kPatience, true).wasPlaying;
    auto next = std::make_shared<Core>(core_->stopwatch, core_->pass, core_->onFreed);
    LeaveToItself();
    core_ = std::move(next);
    Start();
    return wasPlaying;
}

PassState& TMidiPlayerThread::Passes() const {
    return core_->passes;
}

bool TMidiPlayerThread::AllowPasses() {
    const bool allowed = core_->passes.Allow();
    core_->stopwatch->Wake();
    return allowed;
}

bool TMidiPlayerThread::WorkingFlag() const {
    return core_->working;
}

} // namespace tracksmith::player
