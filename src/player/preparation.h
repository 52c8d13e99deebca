#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "player/chase.h"
#include "player/event_sender.h"

namespace tracksmith::player {

/// What ports are to be given before channels are heard there.
struct PreparationPlan {
    /// Set-up messages, and the ports that they go to.
    std::vector<SetUpMessage> setUp;
    PortSet setUpPorts;
    /// The ports whose channels follow then.
    PortSet ports;
    Extent extent = Extent::Everything;
    /// The music waits; else what these channels play is left out until then.
    bool holdsMusic = false;
};

/// Gives ports what a PreparationPlan says, with the pauses that instruments need. Begin and Cancel
/// allocate or free and are for the owner's thread while no pass runs; so is Step with a null
/// PassState.
class Preparation {
public:
    explicit Preparation(EventSender& sender) : sender_(sender) {}

    /// Takes a plan, together with what is left of one before.
    void Begin(PreparationPlan plan);
    void Cancel();

    /// Sends what may be sent by `nowUs` on the stopwatch (microseconds). False when the pass was
    /// given up: then nothing may be touched any more.
    [[nodiscard]] bool Step(std::int64_t nowUs, PassState* pass) noexcept;

    bool Active() const { return active_; }
    /// The music waits for the end.
    bool HoldsMusic() const { return active_ && plan_.holdsMusic; }
    /// When Step is to be called next, on the stopwatch (microseconds).
    std::int64_t NextUs() const { return nextUs_; }
    /// Milliseconds that what is left takes, counted from the message sent last.
    std::int64_t LeftMs() const;

private:
    EventSender& sender_;
    PreparationPlan plan_;
    std::size_t sent_ = 0;
    std::int64_t nextUs_ = 0;
    bool active_ = false;
};

} // namespace tracksmith::player
