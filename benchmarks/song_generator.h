#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tracksmith::benchmarks {

/// A Standard MIDI File of format 1 with about `events` events: a conductor track and one track per
/// channel. Four fifths are notes under running status; controllers and pitch bends come in runs,
/// as players make them, and there are program changes, lyrics and system exclusive messages. The
/// same number always gives the same bytes, about four an event.
std::vector<std::uint8_t> GenerateSong(std::size_t events);

} // namespace tracksmith::benchmarks
