#include "player/output_port.h"

#include <new>
#include <utility>

#include "base/system/thread_timing.h"

#include "midi/abandoned.h"

namespace tracksmith::player {
namespace {

// What waits at most: two of the longest messages and some thousand short ones.
constexpr std::size_t kQueueBytes = std::size_t{192} * 1024;
// Longest wait for the port's thread when the port is destroyed.
constexpr std::chrono::milliseconds kIdlePatience{1000};
// Longest wait for a send that is under way.
constexpr std::chrono::milliseconds kSendPatience{50};

} // namespace

OutputPort::OutputPort(OutputDriver driver, std::string productName,
                       std::shared_ptr<const Stopwatch> stopwatch, std::function<void()> onTrouble)
    : driver_(std::move(driver)),
      output_(*driver_.driver),
      productName_(std::move(productName)),
      stopwatch_(std::move(stopwatch)),
      onTrouble_(std::move(onTrouble)) {}

OutputPort::~OutputPort() {
    if (thread_.joinable()) {
        EndThread();
        thread_.join();
    }
}

void OutputPort::Dispose(std::unique_ptr<OutputPort> port) {
    if (port->EndThread() && !port->HoldsPass()) {
        return;
    }
    {
        const std::lock_guard lock(port->tellMutex_);
        port->onTrouble_ = nullptr;
    }
    if (port->thread_.joinable()) {
        port->thread_.detach();
    }
    midi::Abandon(std::move(port));
}

// Waits a bounded time: whoever holds the lock may be stuck in a dead driver.
std::unique_lock<std::mutex> OutputPort::LockSending() noexcept {
    constexpr auto kPause = std::chrono::microseconds(200);
    std::unique_lock lock(sending_, std::try_to_lock);
    const auto deadline = std::chrono::steady_clock::now() + kSendPatience;
    while (!lock && !Hanging() && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(kPause);
        lock.try_lock();
    }
    return lock;
}

midi::ResultCode OutputPort::Open(std::uint32_t device) noexcept {
    midi::ResultCode result = midi::kNotReady;
    if (const std::unique_lock lock = LockSending()) {
        try {
            Connect(device);
        } catch (const std::bad_alloc&) {
            result = midi::kNoMemory;
        } catch (const std::exception&) {
            result = output_.Error() != midi::kNoError ? output_.Error() : midi::kBadDeviceId;
        }
    }
    notOpened_ = !open_;
    return open_ ? midi::kNoError : result;
}

// With `sending_` held.
void OutputPort::Connect(std::uint32_t device) {
    {
        const std::lock_guard lock(mutex_);
        if (open_ || leaving_ != nullptr) {
            return;
        }
        queue_.Reserve(kQueueBytes);
        tryAgain_ = false;
    }
    current_.reserve(kMostSysex);
    hasCurrent_ = false;
    StartThread();
    output_.SetDeviceID(device);
    output_.Open();
    cableFreeUs_ = 0;
    refusalTold_ = false;
    provenGood_ = false;
    lost_ = false;
    open_ = true;
}

bool OutputPort::Close(std::chrono::milliseconds patience) noexcept {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    WaitUntilSent(deadline);
    if (open_) {
        const std::unique_lock sending = LockSending();
        if (!sending) {
            return false;
        }
        open_ = false;
        try {
            const std::lock_guard lock(mutex_);
            leaving_ = output_.Detach();
        } catch (const std::bad_alloc&) {
            return false;
        }
        work_.notify_one();
    }
    std::unique_lock lock(mutex_);
    return idle_.wait_until(lock, deadline, [this] { return leaving_ == nullptr; });
}

bool OutputPort::Hanging() const noexcept {
    const std::int64_t since = busySinceUs_;
    return since >= 0 && stopwatch_->ElapsedUs() - since > busyMostUs_;
}

PortState OutputPort::State() const {
    if (Hanging()) {
        return PortState::Hanging;
    }
    if (lost_ || !present_) {
        return PortState::Lost;
    }
    if (open_) {
        return PortState::Open;
    }
    return notOpened_ ? PortState::NotOpened : PortState::Closed;
}

void OutputPort::Tell(std::atomic<bool>& trouble) noexcept {
    trouble = true;
    const std::lock_guard lock(tellMutex_);
    if (onTrouble_) {
        onTrouble_();
    }
}

void OutputPort::MarkLost() noexcept {
    if (!lost_.exchange(true)) {
        timesLost_.fetch_add(1, std::memory_order_relaxed);
        Tell(lossUntold_);
    }
}

OutputPort::Trouble OutputPort::TakeTrouble() {
    const bool lost = lossUntold_.exchange(false);
    // A device that is there but keeps failing is told of once.
    lossMayBeTold_ = lossMayBeTold_ || provenGood_.exchange(false);
    const bool told = lost && std::exchange(lossMayBeTold_, false);
    const bool hanging = Hanging();
    return {told && !hanging, told && hanging, refusalUntold_.exchange(false),
            sysexUntold_.exchange(false)};
}

void OutputPort::SetPresent(bool present) {
    lossMayBeTold_ = lossMayBeTold_ || (present && !present_);
    present_ = present;
}

void OutputPort::StartThread() {
    if (!thread_.joinable()) {
        finished_ = false;
        try {
            thread_ = std::thread([this] { Work(); });
        } catch (...) {
            finished_ = true;
            throw;
        }
    }
}

// False when it hangs in the driver.
bool OutputPort::EndThread() noexcept {
    std::unique_lock lock(mutex_);
    ending_ = true;
    work_.notify_one();
    return idle_.wait_for(lock, Hanging() ? std::chrono::milliseconds(0) : kIdlePatience,
                          [this] { return finished_; });
}

void OutputPort::Work() noexcept {
    constexpr std::chrono::milliseconds kTryAgain{1};
    // What the user plays must not wait for other programs any more than what the song plays.
    system::WakeThisThreadExactly();
    std::unique_lock lock(mutex_);
    while (!ending_ || leaving_ != nullptr) {
        if (leaving_ != nullptr) {
            CloseLink(lock);
        } else if (queue_.Empty() && !tryAgain_) {
            work_.wait(lock);
        } else {
            lock.unlock();
            {
                const std::lock_guard sending(sending_);
                Drain();
            }
            lock.lock();
            if (tryAgain_) {
                work_.wait_for(lock, kTryAgain);
            }
        }
    }
    finished_ = true;
    idle_.notify_all();
}

void OutputPort::CloseLink(std::unique_lock<std::mutex>& lock) noexcept {
    lock.unlock();
    leaving_->Close(false);
    lock.lock();
    leaving_.reset();
    idle_.notify_all();
}

} // namespace tracksmith::player
