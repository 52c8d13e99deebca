#pragma once

#include <cstdint>

namespace tracksmith::system {

/// Gives the title bar of a window of this program a dark or a light ground where the system can,
/// which is Windows 10 and later. `window` is the number that the system knows the window by.
void SetTitleBarDark(std::uintptr_t window, bool dark) noexcept;

} // namespace tracksmith::system
