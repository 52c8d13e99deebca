#pragma once

#include <cstdint>

namespace tracksmith {

/// Bytes that one song may take: half of the machine's memory, at most 4 GiB.
std::uint64_t SongMemoryBudget();

} // namespace tracksmith
