#pragma once

#include <cstdint>
#include <memory>

namespace tracksmith::midi {

class InputQueue;
class PortWindow;

/// What a driver callback knows of its port, in locked memory. Filled while the port is closed and
/// only read from the driver's thread.
struct TMidiCtlInfo {
    /// The memory block of this record.
    void* hMem;
    /// Where received messages go; null for an output port.
    InputQueue* PBuffer;
    /// What tells the port's own thread.
    PortWindow* hWindow;
    /// 1: short messages are dropped.
    std::uint8_t SysexOnly;
    /// 1: timing clock (0xF8) is dropped.
    std::uint8_t FilterMTC;
    /// 1: active sensing (0xFE) is dropped.
    std::uint8_t FilterAS;
};

/// Frees the memory block of a record.
struct CtlInfoDeleter {
    void operator()(TMidiCtlInfo* info) const noexcept;
};
using CtlInfoPointer = std::unique_ptr<TMidiCtlInfo, CtlInfoDeleter>;

/// A record with nothing but its own memory block filled in. Raises std::bad_alloc.
CtlInfoPointer MakeCtlInfo();

} // namespace tracksmith::midi
