#include "midi/port_list.h"

#include <utility>

namespace tracksmith::midi {

PortList::PortList(std::function<std::vector<DeviceCapabilities>()> list)
    : list_(std::move(list)) {}

std::uint32_t PortList::Count() {
    const std::scoped_lock lock(mutex_);
    ports_ = list_();
    return static_cast<std::uint32_t>(ports_->size());
}

std::optional<DeviceCapabilities> PortList::At(std::uint32_t device) {
    const std::scoped_lock lock(mutex_);
    if (!ports_) {
        ports_ = list_();
    }
    return device < ports_->size() ? std::optional((*ports_)[device]) : std::nullopt;
}

} // namespace tracksmith::midi
