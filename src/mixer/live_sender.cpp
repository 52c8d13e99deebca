#include "mixer/live_sender.h"

#include <algorithm>
#include <utility>

#include "player/player.h"

namespace tracksmith::mixer {

LiveSender::LiveSender(const session::Session& session, Clock clock)
    : session_(session), clock_(std::move(clock)) {
    if (!clock_) {
        clock_ = [] {
            return std::chrono::duration_cast<std::chrono::microseconds>(
                       std::chrono::steady_clock::now().time_since_epoch())
                .count();
        };
    }
}

void LiveSender::Put(std::size_t channel, Control control, std::uint8_t value) {
    Slot& slot = SlotOf(channel, control);
    if (slot.waiting) {
        slot.waiting = value;
    } else if (slot.sentUs && clock_() - *slot.sentUs < kPauseUs) {
        slot.waiting = value;
        ++waiting_;
    } else {
        Send(channel, control, value);
    }
}

void LiveSender::Flush() {
    const std::int64_t now = clock_();
    for (std::size_t channel = 0; channel < slots_.size() && Waiting(); ++channel) {
        for (const Control control : kAllControls) {
            Slot& slot = SlotOf(channel, control);
            if (slot.waiting && now - slot.sentUs.value_or(now - kPauseUs) >= kPauseUs) {
                const std::uint8_t value = *std::exchange(slot.waiting, std::nullopt);
                --waiting_;
                Send(channel, control, value);
            }
        }
    }
}

void LiveSender::Clear() {
    slots_ = {};
    waiting_ = 0;
}

void LiveSender::PlayingBegun() {
    for (auto& channel : slots_) {
        for (Slot& slot : channel) {
            slot.pending.reset();
        }
    }
}

void LiveSender::SetLiveWhileStopped(bool on) {
    liveWhileStopped_ = on;
    for (std::size_t channel = 0; on && channel < slots_.size(); ++channel) {
        for (const Control control : kAllControls) {
            if (const auto pending = Pending(channel, control)) {
                Send(channel, control, *pending);
            }
        }
    }
}

std::size_t LiveSender::SendingChannel(std::size_t channel) const {
    return drumEditor_ == channel ? song::kDrumChannel : channel;
}

void LiveSender::Send(std::size_t channel, Control control, std::uint8_t value) {
    Slot& slot = SlotOf(channel, control);
    const bool sent = Deliver(SendingChannel(channel), ControllerOf(control), value);
    slot.sentUs = sent ? std::optional(clock_()) : std::nullopt;
    slot.pending = sent ? std::nullopt : std::optional(value);
}

bool LiveSender::Deliver(std::size_t channel, std::uint8_t controller, std::uint8_t value) const {
    if (!session_.HasPlayer()) {
        return false;
    }
    player::TMidiPlayer& player = session_.Controls().Player();
    return MaySendNow(player, player.Routes().Port(channel)) &&
           player.SendChannel(channel, song::kControlChange, controller, value);
}

bool LiveSender::MaySendNow(player::TMidiPlayer& player, std::size_t port) const {
    if (player.Playing()) {
        return true;
    }
    const auto devices = player.OutputDevices();
    const auto device = std::ranges::find(devices, port, &player::OutputDevice::port);
    const bool hardware = device != devices.end() && !device->softwareInstrument;
    return hardware && liveWhileStopped_ && player.OpenPort(port);
}

} // namespace tracksmith::mixer
