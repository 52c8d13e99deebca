#pragma once

#include <cstddef>

namespace tracksmith::system {

/// Copies `bytes` bytes between places that do not overlap, past the caches where the processor
/// can: for copies so large that they would only push everything else out of them.
void CopyLarge(void* to, const void* from, std::size_t bytes);

} // namespace tracksmith::system
