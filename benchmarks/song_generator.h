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

/// What stands at tick 0 of GenerateSettings' tracks: controllers, bend and pressure, as they come
/// from sliders, or again and again all that the set-up of a channel consists of, with banks,
/// programs and parameters.
enum class SettingsKind { Movements, SetUps };

/// A song whose tracks all begin with settings at tick 0, about `events` of them. A note on each
/// channel follows after a second.
std::vector<std::uint8_t> GenerateSettings(std::size_t events, SettingsKind kind);

} // namespace tracksmith::benchmarks
