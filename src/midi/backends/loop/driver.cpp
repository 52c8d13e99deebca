#include "midi/backends/loop/driver.h"

#include <utility>

namespace tracksmith::midi::loop {

LoopOutputDriver::LoopOutputDriver(std::shared_ptr<LoopBackend> backend)
    : PortableOutputDriver(std::move(backend)) {}

void LoopOutputDriver::HoldCompletions(bool hold) {
    hold_ = hold;
    if (!hold) {
        GiveBackHeaders();
    }
}

} // namespace tracksmith::midi::loop
