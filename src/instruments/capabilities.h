#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "base/text.h"

/// Which settings make sense for which instrument.
namespace tracksmith::instruments {

/// A group of settings that only some instruments have.
enum class Capability : std::uint8_t {
    KorgPartEqualizer,
    LimexTe200,
    Integra7Routing,
    RolandScMap,
    MotifRoutingAndDsps,
    YamahaDsps,
    YamahaMasterEq,
    YamahaVocalHarmony,
    Count
};

inline constexpr std::size_t kCapabilityCount = static_cast<std::size_t>(Capability::Count);

/// Whether the instrument of exactly this name has the group; Roland SC instruments are recognised
/// by the beginning of their name. Any thread.
bool HasCapability(std::string_view instrumentName, Capability capability);

/// The sound maps that an instrument offers, oldest first; empty for one without a choice.
std::span<const std::string_view> RolandScMaps(std::string_view instrumentName);

/// The stored number of a sound map (from 1), or the newest of the instrument when it is not one of
/// those on offer; `stored` for an instrument without a choice.
std::int32_t RolandScMap(std::string_view instrumentName, std::int32_t stored);

/// Why the settings of the group are greyed out where an instrument lacks it.
const Text& WhyUnavailable(Capability capability);

} // namespace tracksmith::instruments
