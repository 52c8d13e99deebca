#pragma once

#include <cstddef>

namespace tracksmith::system {

/// Copies `bytes` between places that do not overlap, past the caches where the processor can do
/// that: for blocks so large that nothing of them will be read again soon. Any thread.
void CopyPastCaches(void* to, const void* from, std::size_t bytes);

} // namespace tracksmith::system
