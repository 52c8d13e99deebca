#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <mutex>
#include <utility>
#include <vector>

#include "base/system/message_poster.h"

namespace tracksmith::system {
namespace {

constexpr std::uint32_t kMessageLimit = 4096;
constexpr std::uint32_t kWordBits = 64;

/// What wakes up a thread that has inboxes. Lives as long as one of them or the thread.
class WakeUp {
public:
    void Call() {
        const std::scoped_lock lock(mutex_);
        if (call_) {
            call_();
        }
    }

    void Set(std::function<void()> call) {
        const std::scoped_lock lock(mutex_);
        call_ = std::move(call);
    }

private:
    std::mutex mutex_;
    std::function<void()> call_;
};

/// The messages of one poster that wait, one bit each.
struct Inbox {
    std::shared_ptr<const MessagePoster::Handler> handler;
    std::shared_ptr<WakeUp> wakeUp;
    std::array<std::atomic<std::uint64_t>, kMessageLimit / kWordBits> waiting{};
};

/// The inboxes of a thread. Touched by that thread only.
struct Inboxes {
    std::shared_ptr<WakeUp> wakeUp = std::make_shared<WakeUp>();
    /// An inbox that goes while messages are handed out leaves a null behind until that has ended.
    std::vector<Inbox*> list;
    int dispatching = 0;
};

Inboxes& Own() {
    thread_local Inboxes inboxes;
    return inboxes;
}

void RemoveNulls() {
    if (Own().dispatching == 0) {
        std::erase(Own().list, nullptr);
    }
}

/// Marks the thread as handing out messages.
class Dispatching {
public:
    Dispatching() { ++Own().dispatching; }
    Dispatching(const Dispatching&) = delete;
    Dispatching& operator=(const Dispatching&) = delete;
    ~Dispatching() {
        --Own().dispatching;
        RemoveNulls();
    }
};

/// Hands out what waits in one word of an inbox; messages that the handler posts into it are left
/// to the next time.
void HandOut(std::size_t index, std::size_t word) {
    const auto inbox = [&] { return Own().list[index]; };
    std::uint64_t bits = inbox() != nullptr ? inbox()->waiting[word].load() : 0;
    for (; bits != 0 && inbox() != nullptr; bits &= bits - 1) {
        const auto bit = static_cast<std::uint32_t>(std::countr_zero(bits));
        inbox()->waiting[word].fetch_and(~(std::uint64_t{1} << bit));
        // The handler may destroy the poster that it belongs to
        const auto handler = inbox()->handler;
        (*handler)(static_cast<std::uint32_t>(word) * kWordBits + bit);
    }
}

} // namespace

struct MessagePoster::Window : Inbox {};

MessagePoster::MessagePoster(Handler handler) : window_(std::make_unique<Window>()) {
    window_->handler = std::make_shared<const Handler>(std::move(handler));
    window_->wakeUp = Own().wakeUp;
    Own().list.push_back(window_.get());
}

MessagePoster::~MessagePoster() {
    std::ranges::replace(Own().list, static_cast<Inbox*>(window_.get()), nullptr);
    RemoveNulls();
}

void MessagePoster::Post(std::uint32_t message) noexcept {
    const std::uint64_t bit = std::uint64_t{1} << message % kWordBits;
    if ((window_->waiting[message / kWordBits].fetch_or(bit) & bit) == 0) {
        window_->wakeUp->Call();
    }
}

void DispatchMessages() {
    const Dispatching dispatching;
    for (std::size_t index = 0; index < Own().list.size(); ++index) {
        for (std::size_t word = 0; word < kMessageLimit / kWordBits; ++word) {
            HandOut(index, word);
        }
    }
}

void SetMessageWakeUp(std::function<void()> wakeUp) {
    Own().wakeUp->Set(std::move(wakeUp));
}

} // namespace tracksmith::system
