#include "app/forms/health/health_watch.h"

#include <utility>

namespace tracksmith::forms {
namespace {

// Events that are looked at before the window goes on, and then between two of its events: some
// ten milliseconds and a few.
constexpr std::size_t kFirstStep = 250'000;
constexpr std::size_t kStep = 60'000;

} // namespace

HealthWatch::HealthWatch(const session::Session& session, Options options)
    : session_(session), options_(std::move(options)) {
    connect(&timer_, &QTimer::timeout, this, &HealthWatch::GoOn);
}

HealthWatch::~HealthWatch() = default;

void HealthWatch::Begin() {
    timer_.stop();
    check_.reset();
    report_ = {};
    revision_ = session_.Revision();
    ready_ = !session_.HasSong();
    if (!ready_) {
        check_ = std::make_unique<health::HealthCheck>(session_.Work(), options_());
        if (check_->Step(kFirstStep)) {
            Finish();
        } else {
            timer_.start(0);
        }
    }
    emit Changed();
}

// While an edit runs the song cannot be read; whoever made it begins anew.
void HealthWatch::GoOn() {
    if (Outdated()) {
        timer_.stop();
        check_.reset();
    } else if (check_->Step(kStep)) {
        Finish();
        emit Changed();
    }
}

void HealthWatch::Finish() {
    timer_.stop();
    report_ = check_->Take();
    check_.reset();
    ready_ = true;
}

} // namespace tracksmith::forms
