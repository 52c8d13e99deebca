#pragma once

#include <iosfwd>

namespace tracksmith::benchmarks {

/// Plays a generated song with the real clock and prints how late its messages come, beside a plain
/// loop that looks every millisecond, and what playing, stopping and changing the tempo cost. Takes
/// about a minute.
void RunDispatchBenchmark(std::ostream& out);

} // namespace tracksmith::benchmarks
