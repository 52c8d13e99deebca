#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "song/channel_state.h"
#include "song/mode_message.h"

namespace tracksmith::player {

/// A message to a channel; `command` is a status byte without the channel.
struct ChannelMessage {
    std::uint8_t command = 0;
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;
};

/// How much is sent to bring a channel into a state. What is set on the device and not in that
/// state always goes to what a reset gives.
enum class Extent : std::uint8_t {
    Difference, ///< What the device has otherwise.
    Everything, ///< All that is set, too.
    Anew,       ///< As if the device might have lost or missed something.
};

/// A channel of a device: what the song has set there, and what a reset makes of it.
struct DeviceChannel {
    const song::ChannelState& state;
    /// The last reset that the device got; none where no reset is known.
    std::optional<song::SynthMode> mode;
    /// The channel plays drums after a reset.
    bool drum = false;
};

/// Composes the messages that bring a channel of a device into a state: bank select and program,
/// controllers, parameters, pitch bend, channel pressure. Allocates only in Reserve, as long as no
/// more parameters come than it made room for. One thread at a time.
class StateMessages {
public:
    /// Makes room for so many parameters in all. Throws std::bad_alloc.
    void Reserve(std::size_t parameters);

    /// The messages, which stay until the next call. Values of `wanted` are read from the events
    /// that have set them.
    std::span<const ChannelMessage> Compose(const song::ChannelState& wanted,
                                            const DeviceChannel& device, Extent extent);

private:
    std::vector<ChannelMessage> messages_;
};

} // namespace tracksmith::player
