#include "midi/driver_callback.h"

#include "midi/ctl_info.h"
#include "midi/input_queue.h"
#include "midi/port_window.h"

namespace tracksmith::midi {
namespace {

// The names of the two flags follow the message sets of the port: the one for time code is the one
// that keeps the timing clock out.
constexpr std::uintptr_t kTimingClock = 0xF8;
constexpr std::uintptr_t kActiveSensing = 0xFE;

bool IsFiltered(const TMidiCtlInfo& info, std::uintptr_t shortMessage) {
    return info.SysexOnly != 0 || (info.FilterMTC != 0 && shortMessage == kTimingClock) ||
           (info.FilterAS != 0 && shortMessage == kActiveSensing);
}

MidiHeader* Header(std::uintptr_t parameter) {
    // Drivers hand pointers over as numbers
    return reinterpret_cast<MidiHeader*>(parameter); // NOLINT(performance-no-int-to-ptr)
}

void Queue(const TMidiCtlInfo& info, const QueueEntry& entry) {
    info.hWindow->Post(info.PBuffer->Put(entry) ? kInputData : kInputOverflow);
}

} // namespace

void DriverNotification(DeviceHandle /*handle*/, std::uint32_t message, void* instance,
                        std::uintptr_t param1, std::uintptr_t param2) noexcept {
    const auto* info = static_cast<const TMidiCtlInfo*>(instance);
    if (info == nullptr) {
        return;
    }
    if (message == kOutputDone) {
        info->hWindow->Complete(*Header(param1));
    } else if (info->PBuffer == nullptr) {
        return;
    } else if (message == kInputData) {
        if (!IsFiltered(*info, param1)) {
            Queue(*info, {param2, param1, nullptr});
        }
    } else if (message == kInputLongData || message == kInputLongError) {
        Queue(*info, {param2, 0, Header(param1)});
    }
}

} // namespace tracksmith::midi
