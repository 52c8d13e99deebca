#include "app/forms/loading/song_loader.h"

#include <algorithm>
#include <cstdint>
#include <system_error>
#include <utility>

namespace tracksmith::forms {
namespace {

constexpr std::chrono::milliseconds kLook{20};
constexpr std::chrono::milliseconds kGrace{50};

bool IsReady(const std::future<std::unique_ptr<app::LoadedSong>>& result,
             std::chrono::milliseconds patience = {}) {
    return result.wait_for(patience) == std::future_status::ready;
}

} // namespace

SongLoader::SongLoader(QObject* parent) : QObject(parent) {
    timer_.setInterval(kLook);
    connect(&timer_, &QTimer::timeout, this, &SongLoader::Look);
}

SongLoader::~SongLoader() {
    Cancel();
    for (Job& job : leaving_) {
        End(job);
    }
}

bool SongLoader::Start(app::LoadOrder order) {
    Cancel();
    order_ = std::move(order);
    order_.reader = reader_;
    begun_ = std::chrono::steady_clock::now();
    Run();
    timer_.start();
    return IsReady(running_.result, times_.quick);
}

void SongLoader::StartAnew(const session::WorkOptions& options) {
    Cancel();
    order_.options = options;
    Run();
    timer_.start();
}

// The thread shares nothing with this object, which may end before it does.
void SongLoader::Run() {
    auto watch = std::make_shared<app::LoadWatch>();
    const auto task = std::make_shared<std::packaged_task<Result()>>(
        [order = order_, watch] { return app::PrepareLoad(order, *watch); });
    running_ = {watch, task->get_future(), {}};
    try {
        running_.thread = std::thread([task] { (*task)(); });
    } catch (const std::system_error&) {
        (*task)();
    }
}

void SongLoader::Cancel() {
    timer_.stop();
    if (Busy()) {
        running_.watch->stop.request_stop();
        leaving_.push_back(std::exchange(running_, {}));
    }
    EndThoseReady();
}

bool SongLoader::Waited(std::chrono::milliseconds time) const {
    return Busy() && std::chrono::steady_clock::now() - begun_ >= time;
}

bool SongLoader::Shown() const {
    return Waited(times_.shown);
}

bool SongLoader::Cancellable() const {
    return Waited(times_.cancel);
}

int SongLoader::Percent() const {
    const std::uint64_t size = Busy() ? running_.watch->size.load() : 0;
    const std::uint64_t read = Busy() ? running_.watch->read.load() : 0;
    return size == 0 || read >= size ? -1 : static_cast<int>(100 * read / size);
}

std::unique_ptr<app::LoadedSong> SongLoader::Take() {
    timer_.stop();
    Job job = std::exchange(running_, {});
    End(job);
    return job.result.get();
}

void SongLoader::Look() {
    emit Moved();
    if (Busy() && IsReady(running_.result)) {
        emit Ready();
    }
}

void SongLoader::EndThoseReady() {
    const auto ended = std::partition(leaving_.begin(), leaving_.end(),
                                      [](const Job& job) { return !IsReady(job.result); });
    std::for_each(ended, leaving_.end(), &SongLoader::End);
    leaving_.erase(ended, leaving_.end());
}

void SongLoader::End(Job& job) {
    bool ready = IsReady(job.result, kGrace);
    while (!ready && !job.watch->reading) {
        ready = IsReady(job.result, kGrace);
    }
    if (job.thread.joinable()) {
        ready ? job.thread.join() : job.thread.detach();
    }
}

} // namespace tracksmith::forms
