#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "player/chase.h"
#include "player/output_ports.h"
#include "player/routing.h"
#include "player/state_messages.h"
#include "song/song.h"

namespace tracksmith::player {

/// Knows the state that the song is in at the play position, and the state that it has left each
/// device in, so that a device can be brought from one into the other. Belongs to the playback
/// thread while it plays, to the owner's while no pass runs. Only what makes room allocates.
class StateKeeper {
public:
    explicit StateKeeper(const Routing& routing) : routing_(routing) {}

    /// Makes room for the parameters of a song, and for the ports that channels go to. Owner's
    /// thread; throws std::bad_alloc.
    void MakeRoom(const song::Song& song);
    void MakeRoomForPorts();

    /// The position has moved.
    void Set(const std::array<song::ChannelState, kChannels>& channels);
    /// A channel message of the song has passed, heard or not.
    void Pass(song::ConstEventLink event) { song_[event->Channel()].Take(event); }
    /// A system-exclusive message of the song is sent to the port of channel 1.
    void PassSysex(const song::MidiEvent& event);

    /// A channel message is sent to where a source channel goes.
    void Sent(std::size_t channel, const ChannelMessage& message);
    /// A set-up message is sent to a port.
    void SentSysex(std::size_t port, const song::MidiEvent& event);
    /// How many of the set-up messages the port has had, as long as it has had no other since.
    std::size_t SetUpsHad(std::size_t port, std::span<const SetUpMessage> messages) const;
    /// The ports are given all set-up messages again.
    void ForgetSetUps(const PortSet& ports);

    /// Something else was sent to where a source channel goes. Any thread.
    void Touch(std::size_t channel) { touched_.fetch_or(1U << channel, kRelaxed); }
    /// The channels may have missed messages (a bit for each): their devices are to be brought
    /// into the state of the song before their next notes. Any thread.
    void MarkStale(unsigned channels) { stale_.fetch_or(channels, kRelaxed); }
    bool Stale(std::size_t channel) const { return (stale_.load(kRelaxed) >> channel & 1U) != 0; }
    /// The messages that bring the device of a source channel into the state of the song; the
    /// channel counts as brought then. They stay until the next call.
    std::span<const ChannelMessage> Bring(std::size_t channel, Extent extent);

private:
    static constexpr auto kRelaxed = std::memory_order_relaxed;

    struct Port {
        std::array<song::ChannelState, kChannels> channels;
        std::optional<song::SynthMode> mode;
        // Of the system-exclusive messages sent.
        std::size_t messages = 0;
        std::uint64_t digest = 0;
    };

    Port* PortOf(std::size_t port) const {
        return port < ports_.size() ? ports_[port].get() : nullptr;
    }
    void MakeRoomIn(Port& port) const;
    bool Shared(std::size_t channel) const;

    const Routing& routing_;
    std::array<song::ChannelState, kChannels> song_;
    std::array<std::unique_ptr<Port>, OutputPorts::kMostPorts> ports_;
    StateMessages messages_;
    const song::ChannelState nothing_{};
    std::size_t parameters_ = 0; // of all channels of the song
    std::atomic<unsigned> touched_ = 0;
    std::atomic<unsigned> stale_ = 0;
};

} // namespace tracksmith::player
