#include "midi/ctl_info.h"

#include <new>

#include "base/system/locked_memory.h"

namespace tracksmith::midi {

static_assert(sizeof(void*) != 8 || sizeof(TMidiCtlInfo) == 32);

void CtlInfoDeleter::operator()(TMidiCtlInfo* info) const noexcept {
    system::FreeLocked(info->hMem);
}

CtlInfoPointer MakeCtlInfo() {
    const system::LockedBlock block = system::AllocateLocked(sizeof(TMidiCtlInfo));
    return CtlInfoPointer(new (block.pointer)
                              TMidiCtlInfo{block.handle, nullptr, nullptr, 0, 0, 0});
}

} // namespace tracksmith::midi
