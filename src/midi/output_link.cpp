#include "midi/output_link.h"

#include <chrono>
#include <utility>

#include "midi/abandoned.h"
#include "midi/driver_callback.h"

namespace tracksmith::midi {
namespace {

/// Longest time that Close waits for headers to come back.
constexpr std::chrono::milliseconds kLongestWait{500};

} // namespace

OutputLink::OutputLink(MidiOutputDriver& driver, system::MessagePoster::Handler handler)
    : driver_(driver), window_(std::make_unique<PortWindow>(std::move(handler))) {}

OutputLink::~OutputLink() {
    if (stuck_) {
        window_->Detach();
        Abandon(std::move(window_));
        Abandon(std::shared_ptr<TMidiCtlInfo>(std::move(ctlInfo_)));
    }
    for (auto& header : inFlight_.TakeAll()) {
        Abandon(std::move(header));
    }
}

ResultCode OutputLink::Open(std::uint32_t device) {
    if (ctlInfo_ == nullptr) {
        ctlInfo_ = MakeCtlInfo();
    }
    ctlInfo_->hWindow = window_.get();
    DeviceHandle handle = 0;
    const ResultCode result = driver_.Open(device, &DriverNotification, ctlInfo_.get(), handle);
    handle_ = result == kNoError ? handle : 0;
    return result;
}

ResultCode OutputLink::Prepare(TMyMidiHdr& header) {
    return driver_.PrepareHeader(handle_, header.Header());
}

ResultCode OutputLink::Submit(std::unique_ptr<TMyMidiHdr> header) {
    MidiHeader& lent = header->Header();
    // From a success on the header may be released at any moment by the port's own thread
    const TMyMidiHdr* listed = header.get();
    inFlight_.Add(std::move(header));
    const ResultCode result = driver_.LongMessage(handle_, lent);
    if (result != kNoError) {
        driver_.UnprepareHeader(handle_, lent);
        inFlight_.Take(listed);
    }
    return result;
}

std::size_t OutputLink::ReleaseCompleted(ResultCode& failure) {
    std::size_t count = 0;
    while (TMyMidiHdr* completed = window_->TakeCompleted()) {
        auto header = inFlight_.Take(completed);
        if (header == nullptr) {
            continue;
        }
        const ResultCode result = driver_.UnprepareHeader(handle_, header->Header());
        failure = result != kNoError ? result : failure;
        if (result == kStillPlaying) {
            Abandon(std::move(header));
        }
        ++count;
    }
    return count;
}

ResultCode OutputLink::Close(bool fullReset) {
    const ResultCode ended = EndTransfers(fullReset);
    const ResultCode closed = driver_.Close(handle_);
    handle_ = 0;
    stuck_ = closed != kNoError;
    return ended != kNoError ? ended : closed;
}

ResultCode OutputLink::EndTransfers(bool fullReset) {
    ResultCode ignored = kNoError;
    ReleaseCompleted(ignored);
    if (!fullReset && inFlight_.Empty()) {
        return kNoError;
    }
    const ResultCode result = driver_.Reset(handle_);
    const auto deadline = std::chrono::steady_clock::now() + kLongestWait;
    ReleaseCompleted(ignored);
    while (!inFlight_.Empty() && window_->WaitForCompleted(deadline)) {
        ReleaseCompleted(ignored);
    }
    for (auto& header : inFlight_.TakeAll()) {
        Abandon(std::move(header));
    }
    return result;
}

} // namespace tracksmith::midi
