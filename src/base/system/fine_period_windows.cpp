#include "base/system/fine_period_windows.h"

#include <utility>
#include <windows.h>
// Needs the types of windows.h.
#include <mmsystem.h>

namespace tracksmith::system {
namespace {

constexpr unsigned kFinest = 1;

PeriodCalls& Calls() {
    static PeriodCalls calls{&timeBeginPeriod, &timeEndPeriod};
    return calls;
}

} // namespace

PeriodCalls ReplacePeriodCalls(const PeriodCalls& calls) {
    return std::exchange(Calls(), calls);
}

void FinePeriod::Hold() noexcept {
    if (!held_) {
        held_ = Calls().begin(kFinest) == TIMERR_NOERROR;
    }
}

void FinePeriod::Release() noexcept {
    if (std::exchange(held_, false)) {
        Calls().end(kFinest);
    }
}

} // namespace tracksmith::system
