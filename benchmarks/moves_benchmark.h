#pragma once

#include <iosfwd>

namespace tracksmith::benchmarks {

/// Plays a song of two million events without and with all volumes moving as fast as the display
/// draws, and prints how late the notes leave in both. Takes about half a minute.
void MeasureMoves(std::ostream& out);

} // namespace tracksmith::benchmarks
