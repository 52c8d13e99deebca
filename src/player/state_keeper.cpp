#include "player/state_keeper.h"

#include <algorithm>
#include <bitset>

#include "song/mode_message.h"

namespace tracksmith::player {
namespace {

/// How many parameters the messages of a channel may set at most.
class ParameterBound {
public:
    void Take(const song::MidiEvent& event) {
        const std::uint8_t controller = event.data1 & 0x7F;
        if (controller >= song::kNonRegisteredLsb && controller <= song::kRegisteredMsb) {
            numbers_.at(controller - song::kNonRegisteredLsb).set(event.data2 & 0x7F);
        } else if (controller == song::kDataMsb || controller == song::kDataLsb) {
            ++entries_;
        }
    }
    // Any most significant byte may meet any least significant one, whatever is muted or shifted;
    // among them those that Reset All Controllers leaves.
    std::size_t Most() const {
        return std::min(entries_, (numbers_[0].count() + 1) * (numbers_[1].count() + 1) +
                                      (numbers_[2].count() + 1) * (numbers_[3].count() + 1));
    }

private:
    std::array<std::bitset<128>, 4> numbers_;
    std::size_t entries_ = 0;
};

std::uint64_t DigestWith(std::uint64_t digest, song::ConstEventLink event) {
    constexpr std::uint64_t kPrime = 0x100000001B3;
    return (digest ^ (event.Unit() + std::uint64_t{1})) * kPrime;
}

} // namespace

void StateKeeper::MakeRoom(const song::Song& song) {
    std::array<ParameterBound, kChannels> bounds;
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            if (event->IsChannelMessage() && event->Command() == song::kControlChange) {
                bounds[event->Channel()].Take(*event);
            }
        }
    }
    parameters_ = 0;
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        const std::size_t most = bounds[channel].Most();
        song_[channel].parameters.Reserve(most);
        parameters_ += most;
    }
    std::size_t known = 0;
    for (const auto& port : ports_) {
        if (port) {
            MakeRoomIn(*port);
            for (const song::ChannelState& channel : port->channels) {
                known = std::max(known, channel.parameters.Count());
            }
        }
    }
    // Those of the song, and those left on a device.
    messages_.Reserve(2 * parameters_ + known);
}

// Each channel of a port may get the parameters of every source channel, beside those it has.
void StateKeeper::MakeRoomIn(Port& port) const {
    for (song::ChannelState& channel : port.channels) {
        channel.parameters.Reserve(channel.parameters.Count() + parameters_);
    }
}

void StateKeeper::MakeRoomForPorts() {
    for (const std::size_t index : routing_.Ports()) {
        if (index < ports_.size() && !ports_[index]) {
            ports_[index] = std::make_unique<Port>();
            MakeRoomIn(*ports_[index]);
        }
    }
}

void StateKeeper::Set(const std::array<song::ChannelState, kChannels>& channels) {
    std::ranges::copy(channels, song_.begin());
}

void StateKeeper::PassSysex(const song::MidiEvent& event) {
    const std::size_t port = routing_.Port(0);
    SentSysex(port, event);
    if (!song::ModeOfReset(song::WithoutFrame(event.Payload()))) {
        return;
    }
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        if (routing_.Port(channel) == port) {
            song_[channel].Clear();
        }
    }
}

void StateKeeper::Sent(std::size_t channel, const ChannelMessage& message) {
    if (Port* const port = PortOf(routing_.Port(channel))) {
        port->channels[routing_.Target(channel)].Take(message.command, message.data1, message.data2,
                                                      {});
    }
}

void StateKeeper::SentSysex(std::size_t index, const song::MidiEvent& event) {
    Port* const port = PortOf(index);
    if (port == nullptr) {
        return;
    }
    ++port->messages;
    port->digest = DigestWith(port->digest, song::LinkTo(event));
    if (const auto mode = song::ModeOfReset(song::WithoutFrame(event.Payload()))) {
        port->mode = mode;
        for (song::ChannelState& channel : port->channels) {
            channel.Clear();
        }
    }
}

std::size_t StateKeeper::SetUpsHad(std::size_t index,
                                   std::span<const SetUpMessage> messages) const {
    const Port* const port = PortOf(index);
    if (port == nullptr || port->messages > messages.size()) {
        return 0;
    }
    std::uint64_t digest = 0;
    for (const SetUpMessage& message : messages.first(port->messages)) {
        digest = DigestWith(digest, message.event);
    }
    return digest == port->digest ? port->messages : 0;
}

void StateKeeper::ForgetSetUps(const PortSet& ports) {
    for (std::size_t index = 0; index < ports_.size(); ++index) {
        if (ports_[index] && ports[index]) {
            ports_[index]->messages = 0;
            ports_[index]->digest = 0;
        }
    }
}

std::span<const ChannelMessage> StateKeeper::Bring(std::size_t channel, Extent extent) {
    const unsigned bit = 1U << channel;
    stale_.fetch_and(~bit, kRelaxed);
    const bool touched = (touched_.fetch_and(~bit, kRelaxed) & bit) != 0;
    const Port* const port = PortOf(routing_.Port(channel));
    if (port == nullptr) {
        return {};
    }
    const std::uint8_t target = routing_.Target(channel);
    // Where several source channels go, what one has not set may be another's.
    const DeviceChannel device{Shared(channel) ? nothing_ : port->channels[target], port->mode,
                               target == song::kDrumChannel};
    const bool all = touched && extent == Extent::Difference;
    return messages_.Compose(song_[channel], device, all ? Extent::Everything : extent);
}

bool StateKeeper::Shared(std::size_t channel) const {
    for (std::size_t other = 0; other < kChannels; ++other) {
        if (other != channel && routing_.Port(other) == routing_.Port(channel) &&
            routing_.Target(other) == routing_.Target(channel)) {
            return true;
        }
    }
    return false;
}

} // namespace tracksmith::player
