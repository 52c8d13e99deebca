#include "app/forms/revoicer/folder_worker.h"

#include <chrono>
#include <new>
#include <utility>

namespace tracksmith::forms {
namespace {

constexpr int kLookMs = 50;

template <typename Result>
bool IsReady(const std::future<Result>& future) {
    return future.valid() && future.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

} // namespace

FolderWorker::FolderWorker(QObject* parent) : QObject(parent) {
    timer_.setInterval(kLookMs);
    connect(&timer_, &QTimer::timeout, this, &FolderWorker::Look);
}

FolderWorker::~FolderWorker() {
    if (work_ != nullptr) {
        work_->Cancel();
    }
    if (finding_.valid()) {
        finding_.wait();
    }
    if (running_.valid()) {
        running_.wait();
    }
}

void FolderWorker::Find(app::FolderOrder order, const instruments::VoiceTables& tables,
                        Language language) {
    work_ = std::make_unique<app::FolderRevoicing>(std::move(order), tables, language);
    songs_ = 0;
    finding_ = std::async(std::launch::async, [work = work_.get()] { work->Find(); });
    timer_.start();
}

void FolderWorker::Run(bool replace) {
    running_ = std::async(std::launch::async,
                          [work = work_.get(), replace] { return work->Run(replace); });
    timer_.start();
}

void FolderWorker::Cancel() {
    if (work_ != nullptr) {
        work_->Cancel();
    }
    if (!finding_.valid() && !running_.valid()) {
        work_.reset();
    }
}

void FolderWorker::Look() {
    try {
        if (IsReady(finding_)) {
            timer_.stop();
            finding_.get();
            songs_ = work_->Songs();
            if (work_->Cancelled()) {
                End(work_->Run(false)); // which only tells that
            } else {
                emit Found(songs_, work_->Existing());
            }
        } else if (IsReady(running_)) {
            End(running_.get());
        } else if (running_.valid()) {
            emit Progressed(work_->Done());
        }
    } catch (const std::bad_alloc&) {
        End(std::nullopt);
    }
}

void FolderWorker::End(const std::optional<app::FolderResult>& result) {
    timer_.stop();
    work_.reset();
    emit Done(result);
}

} // namespace tracksmith::forms
