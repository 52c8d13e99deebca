#include "player/preparation.h"

#include <algorithm>
#include <utility>

namespace tracksmith::player {

void Preparation::Begin(PreparationPlan plan) {
    if (active_) {
        plan.setUpPorts |= plan_.setUpPorts;
        plan.ports |= plan_.ports;
        plan.extent = std::max(plan.extent, plan_.extent);
        plan.holdsMusic = plan.holdsMusic || plan_.holdsMusic;
    }
    plan_ = std::move(plan);
    sent_ = 0;
    nextUs_ = 0;
    active_ = true;
    sender_.WithholdFrom(plan_.ports);
}

void Preparation::Cancel() {
    active_ = false;
    sender_.WithholdFrom({});
}

bool Preparation::Step(std::int64_t nowUs, PassState* pass) noexcept {
    while (sent_ < plan_.setUp.size() && nowUs >= nextUs_) {
        const SetUpMessage& message = plan_.setUp[sent_++];
        nextUs_ = nowUs + message.pauseMs * 1000;
        if (!sender_.SendSetUp(*message.event, plan_.setUpPorts, pass)) {
            return false;
        }
    }
    if (sent_ < plan_.setUp.size() || nowUs < nextUs_) {
        return true;
    }
    active_ = false;
    sender_.WithholdFrom({});
    return sender_.BringPorts(plan_.ports, plan_.extent, pass);
}

std::int64_t Preparation::LeftMs() const {
    std::int64_t left = 0;
    for (std::size_t index = sent_ > 0 ? sent_ - 1 : 0; active_ && index < plan_.setUp.size();
         ++index) {
        left += plan_.setUp[index].pauseMs;
    }
    return left;
}

} // namespace tracksmith::player
