#include "midi/port_window.h"

#include <utility>

namespace tracksmith::midi {

PortWindow::PortWindow(system::MessagePoster::Handler handler)
    : poster_(std::make_unique<system::MessagePoster>(std::move(handler))) {}

void PortWindow::Post(std::uint32_t message) noexcept {
    const std::scoped_lock lock(mutex_);
    if (poster_ != nullptr) {
        poster_->Post(message);
    }
}

void PortWindow::Complete(MidiHeader& header) noexcept {
    const std::scoped_lock lock(mutex_);
    // A port that gave up on its driver has abandoned the header, too
    if (detached_) {
        return;
    }
    TMyMidiHdr* completed = TMyMidiHdr::Of(header);
    completed->nextCompleted_ = nullptr;
    TMyMidiHdr*& link =
        lastCompleted_ != nullptr ? lastCompleted_->nextCompleted_ : firstCompleted_;
    link = completed;
    lastCompleted_ = completed;
    completion_.notify_all();
    if (poster_ != nullptr) {
        poster_->Post(kOutputDone);
    }
}

TMyMidiHdr* PortWindow::TakeCompleted() {
    const std::scoped_lock lock(mutex_);
    TMyMidiHdr* taken = firstCompleted_;
    if (taken != nullptr) {
        firstCompleted_ = taken->nextCompleted_;
        lastCompleted_ = firstCompleted_ != nullptr ? lastCompleted_ : nullptr;
    }
    return taken;
}

bool PortWindow::WaitForCompleted(std::chrono::steady_clock::time_point deadline) {
    std::unique_lock lock(mutex_);
    return completion_.wait_until(lock, deadline, [this] { return firstCompleted_ != nullptr; });
}

void PortWindow::StopPosting() {
    std::unique_ptr<system::MessagePoster> poster;
    const std::scoped_lock lock(mutex_);
    poster = std::move(poster_);
}

void PortWindow::Detach() {
    StopPosting();
    const std::scoped_lock lock(mutex_);
    detached_ = true;
    firstCompleted_ = nullptr;
    lastCompleted_ = nullptr;
}

} // namespace tracksmith::midi
