#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// The open ports of a driver by handle. Handles are not used twice, so that an old one is noticed.
/// Thread safe; looking up allocates nothing, and what was found lives on while it is held.
template <typename Port>
class HandleTable {
public:
    DeviceHandle Add(std::shared_ptr<Port> port) {
        const std::scoped_lock lock(mutex_);
        ports_.emplace(++last_, std::move(port));
        return last_;
    }

    /// Null for a handle that is not open.
    std::shared_ptr<Port> Find(DeviceHandle handle) const {
        const std::scoped_lock lock(mutex_);
        const auto found = ports_.find(handle);
        return found != ports_.end() ? found->second : nullptr;
    }

    void Remove(DeviceHandle handle) {
        std::shared_ptr<Port> removed;
        const std::scoped_lock lock(mutex_);
        const auto found = ports_.find(handle);
        if (found != ports_.end()) {
            // Destroyed behind the lock, since that may wait for another thread
            removed = std::move(found->second);
            ports_.erase(found);
        }
    }

    std::vector<std::shared_ptr<Port>> All() const {
        const std::scoped_lock lock(mutex_);
        std::vector<std::shared_ptr<Port>> all;
        for (const auto& [handle, port] : ports_) {
            all.push_back(port);
        }
        return all;
    }

private:
    mutable std::mutex mutex_;
    std::map<DeviceHandle, std::shared_ptr<Port>> ports_;
    DeviceHandle last_ = 0;
};

} // namespace tracksmith::midi
