#include "midi/headers_in_flight.h"

#include <algorithm>
#include <utility>

namespace tracksmith::midi {

void HeadersInFlight::Add(std::unique_ptr<TMyMidiHdr> header) {
    const std::scoped_lock lock(mutex_);
    headers_.push_back(std::move(header));
}

std::unique_ptr<TMyMidiHdr> HeadersInFlight::Take(const TMyMidiHdr* header) {
    const std::scoped_lock lock(mutex_);
    const auto found = std::find_if(headers_.begin(), headers_.end(),
                                    [&](const auto& listed) { return listed.get() == header; });
    if (found == headers_.end()) {
        return nullptr;
    }
    auto taken = std::move(*found);
    headers_.erase(found);
    return taken;
}

std::vector<std::unique_ptr<TMyMidiHdr>> HeadersInFlight::TakeAll() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(headers_, {});
}

bool HeadersInFlight::Empty() const {
    const std::scoped_lock lock(mutex_);
    return headers_.empty();
}

} // namespace tracksmith::midi
