#include "app/forms/changes/background_comparison.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <new>
#include <utility>

#include "base/errors.h"
#include "base/recording_message_host.h"

#include "app/forms/changes/texts.h"
#include "song/event_chain.h"

namespace tracksmith::forms {
namespace {

constexpr int kLookMs = 20;

// RP-003.
constexpr std::array<std::uint8_t, 5> kGmSystemOn{0x7E, 0x7F, 0x09, 0x01, 0xF7};

std::shared_ptr<const ComparedSongs> Compare(const diff::FilePair& files, Language language) {
    auto result = std::make_shared<ComparedSongs>();
    try {
        RecordingMessageHost unseen(language);
        const auto found = diff::CompareFiles(files, unseen);
        result->before = std::make_shared<session::OtherSong>();
        result->before->song.Swap(found->before);
        result->before->places = found->places;
        result->before->reset = song::NewSysexEvent(result->before->song.pool, 0, kGmSystemOn);
        result->beforeMap = std::move(found->beforeMap);
        result->afterMap = std::move(found->afterMap);
        result->differences = std::move(found->differences);
    } catch (const EMidiError& error) {
        result->error = error.what();
    } catch (const std::bad_alloc&) {
        result->error = changes_texts::kNoMemory.In(language);
    }
    return result;
}

} // namespace

BackgroundComparison::BackgroundComparison(QObject* parent) : QObject(parent) {
    timer_.setInterval(kLookMs);
    connect(&timer_, &QTimer::timeout, this, &BackgroundComparison::Look);
}

BackgroundComparison::~BackgroundComparison() {
    if (running_.valid()) {
        running_.wait();
    }
}

void BackgroundComparison::Start(diff::FilePair files, Language language) {
    Order order{std::move(files), language};
    if (running_.valid()) {
        wanted_ = false;
        waiting_ = true;
        next_ = std::make_unique<Order>(std::move(order));
    } else {
        Run(std::move(order));
    }
}

void BackgroundComparison::Run(Order order) {
    running_ = std::async(std::launch::async, [order = std::move(order)] {
        return Compare(order.files, order.language);
    });
    wanted_ = true;
    timer_.start();
}

void BackgroundComparison::Drop() {
    wanted_ = waiting_ = false;
    next_.reset();
}

void BackgroundComparison::Look() {
    if (running_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        return;
    }
    timer_.stop();
    const auto result = running_.get();
    if (next_) {
        waiting_ = false;
        Run(*std::exchange(next_, nullptr));
    } else if (std::exchange(wanted_, false)) {
        emit Done(result);
    }
}

} // namespace tracksmith::forms
