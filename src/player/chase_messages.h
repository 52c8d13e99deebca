#pragma once

#include <cstddef>

#include "player/chase.h"
#include "player/event_sender.h"

namespace tracksmith::player {

/// Sends the set-up messages of the song, each as it is stored.
void SendSetUp(const ChaseMemory& memory, const EventSender& sender);

/// Sends what is set on one channel (0-15): bank select, program, controllers, parameters, pitch
/// bend, channel pressure. What nothing has set is not sent.
void SendChannelChase(const song::ChannelState& state, std::size_t channel,
                      const EventSender& sender);

} // namespace tracksmith::player
