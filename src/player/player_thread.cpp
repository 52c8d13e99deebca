#include "player/player_thread.h"

#include <utility>

namespace tracksmith::player {

TMidiPlayerThread::TMidiPlayerThread(Stopwatch& stopwatch, Pass pass)
    : stopwatch_(stopwatch), pass_(std::move(pass)) {}

TMidiPlayerThread::~TMidiPlayerThread() {
    Terminate();
}

void TMidiPlayerThread::Start() {
    if (!thread_.joinable()) {
        terminated_ = false;
        workingFlag_ = true;
        thread_ = std::thread([this] { Run(); });
    }
}

void TMidiPlayerThread::Terminate() {
    state_.store(kStateStopped);
    terminated_ = true;
    if (thread_.joinable()) {
        stopwatch_.Wake();
        thread_.join();
    }
}

void TMidiPlayerThread::Run() {
    stopwatch_.PrepareThread();
    while (!terminated_) {
        stopwatch_.SleepUntil(pass_());
    }
    workingFlag_ = false;
}

bool TMidiPlayerThread::AllowPasses() {
    std::int32_t expected = kStateStopped;
    return state_.compare_exchange_strong(expected, kStateIdle);
}

TMidiPlayerThread::Halt TMidiPlayerThread::ForbidPasses(std::chrono::milliseconds patience) {
    Halt halt;
    halt.wasPlaying = state_.exchange(kStateStopped) != kStateStopped;
    std::unique_lock lock(mutex_);
    halt.ended = passEnded_.wait_for(lock, patience, [this] { return !inPass_; });
    return halt;
}

bool TMidiPlayerThread::BeginPass() {
    // Under the lock, so that whoever stops sees either the pass or that none can begin.
    const std::lock_guard lock(mutex_);
    std::int32_t expected = kStateIdle;
    inPass_ = state_.compare_exchange_strong(expected, kStatePass);
    return inPass_;
}

void TMidiPlayerThread::EndPass() {
    std::int32_t expected = kStatePass;
    state_.compare_exchange_strong(expected, kStateIdle);
    const std::lock_guard lock(mutex_);
    inPass_ = false;
    passEnded_.notify_all();
}

bool TMidiPlayerThread::StopInPass() {
    std::int32_t expected = kStatePass;
    return state_.compare_exchange_strong(expected, kStateStopped);
}

PassHold::PassHold(TMidiPlayerThread& thread, Stopwatch& stopwatch)
    : thread_(thread),
      stopwatch_(stopwatch),
      halt_(thread.ForbidPasses()),
      resume_(halt_.wasPlaying) {}

PassHold::~PassHold() {
    if (resume_) {
        thread_.AllowPasses();
        stopwatch_.Wake();
    }
}

} // namespace tracksmith::player
