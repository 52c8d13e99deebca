#pragma once

#include <iosfwd>

namespace tracksmith::benchmarks {

/// Plays a song of two million events alone, with all volumes moving as fast as the display draws,
/// and with a backup every second, and prints how late the notes leave in each. Takes about 40
/// seconds.
void MeasureMoves(std::ostream& out);

} // namespace tracksmith::benchmarks
