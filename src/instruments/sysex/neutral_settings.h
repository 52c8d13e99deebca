#pragma once

#include <cstdint>
#include <vector>

#include "instruments/sysex/channel_settings.h"

namespace tracksmith::instruments {

/// A channel message.
struct ShortMessage {
    std::uint8_t status = 0;
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;
};

/// What brings a channel back to where a reset would.
struct NeutralSettings {
    std::vector<ShortMessage> messages;
    /// Parameters whose value after a reset is not known.
    std::int32_t unknown = 0;
};

/// Undoes `settings`, which one channel (0-15) has in force in this order, with the values that
/// follow a reset: GM System On (RP-003, RP-024) and the published formats of GS and XG. `bankMsb`
/// is the instrument's first bank for the channel. Throws std::bad_alloc.
NeutralSettings NeutralOf(const std::vector<SettingEvent>& settings, std::uint8_t channel,
                          std::uint8_t bankMsb);

} // namespace tracksmith::instruments
