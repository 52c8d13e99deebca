#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

#include "app/session/session.h"
#include "mixer/controls.h"
#include "song/midi_numbers.h"

namespace tracksmith::mixer {

/// Microseconds of a clock that never goes back.
using Clock = std::function<std::int64_t()>;

/// Sends the values of moving sliders to where their channels go: at most one message of a slider
/// in kPauseUs, the last value always. What cannot be sent now is kept as pending; it stands in the
/// song, so that the instrument gets it when playing begins. Owner's thread of the session.
class LiveSender {
public:
    static constexpr std::int64_t kPauseUs = 10'000;

    /// `session` must outlive the object. Sends nothing while it has no player.
    LiveSender(const session::Session& session, Clock clock);

    /// A slider has a new value (0-127).
    void Put(std::size_t channel, Control control, std::uint8_t value);
    /// Sends what has waited long enough; to be called every few milliseconds while Waiting.
    void Flush();
    bool Waiting() const { return waiting_ > 0; }
    /// Nothing waits and nothing is pending any more.
    void Clear();
    /// Playing has begun: the instruments have what was pending.
    void PlayingBegun();

    /// Hardware gets values while nothing plays, too; what is pending goes out at once.
    void SetLiveWhileStopped(bool on);
    bool LiveWhileStopped() const { return liveWhileStopped_; }
    /// The channel (0-15) of an open and active drum editor: its messages go to channel 10.
    void SetDrumEditor(std::optional<std::size_t> channel) { drumEditor_ = channel; }
    /// The channel that messages of `channel` are sent on.
    std::size_t SendingChannel(std::size_t channel) const;

    /// The value that waits for playing to begin; none when the last one was sent.
    std::optional<std::uint8_t> Pending(std::size_t channel, Control control) const {
        return SlotOf(channel, control).pending;
    }

private:
    struct Slot {
        std::optional<std::int64_t> sentUs;
        std::optional<std::uint8_t> waiting;
        std::optional<std::uint8_t> pending;
    };

    const Slot& SlotOf(std::size_t channel, Control control) const {
        return slots_.at(channel).at(IndexOf(control));
    }
    Slot& SlotOf(std::size_t channel, Control control) {
        return slots_.at(channel).at(IndexOf(control));
    }
    void Send(std::size_t channel, Control control, std::uint8_t value);
    bool Deliver(std::size_t channel, std::uint8_t controller, std::uint8_t value) const;
    bool MaySendNow(player::TMidiPlayer& player, std::size_t port) const;

    const session::Session& session_;
    Clock clock_;
    std::array<std::array<Slot, kControls>, song::kMidiChannels> slots_{};
    std::size_t waiting_ = 0;
    bool liveWhileStopped_ = false;
    std::optional<std::size_t> drumEditor_;
};

} // namespace tracksmith::mixer
