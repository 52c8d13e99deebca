#pragma once

#include <atomic>

#include "midi/backends/loop/backend.h"
#include "midi/portable_driver.h"

namespace tracksmith::midi::loop {

/// The outputs of a LoopBackend as a driver that can be told to keep the headers it was given, like
/// a device that hangs.
class LoopOutputDriver : public PortableOutputDriver {
public:
    explicit LoopOutputDriver(std::shared_ptr<LoopBackend> backend);

    /// From now on headers stay with the driver, even over Reset; false gives them all back.
    void HoldCompletions(bool hold);

protected:
    bool HoldsHeaders() const override { return hold_; }

private:
    std::atomic<bool> hold_ = false;
};

} // namespace tracksmith::midi::loop
