#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "player/channel_activity.h"
#include "player/channels_in_effect.h"
#include "player/drum_notes.h"
#include "player/output_ports.h"
#include "player/routing.h"
#include "player/state_keeper.h"
#include "player/trial_voices.h"
#include "song/song.h"

namespace tracksmith::player {

/// Sends events of the song and messages of the program to the ports by way of the routing. Never
/// throws, allocates nothing.
class EventSender {
public:
    EventSender(const Routing& routing, const OutputPorts& ports, ChannelActivity& activity,
                ChannelsInEffect& inEffect, StateKeeper& keeper)
        : routing_(routing),
          ports_(ports),
          activity_(activity),
          inEffect_(inEffect),
          keeper_(keeper) {}

    /// Sends what is to be sent of an event that is due. Playback thread. False when the pass was
    /// given up meanwhile: then nothing may be touched any more.
    [[nodiscard]] bool Send(song::Track& track, song::EventLink event, PassState& pass) noexcept;

    /// Sends a channel message for a source channel (0-15) to where it is routed; `command` is a
    /// status byte whose channel does not count. False when the port does not take it.
    bool SendChannel(std::size_t channel, std::uint8_t command, std::uint8_t data1,
                     std::uint8_t data2) const noexcept;
    /// Sends a set-up message to the ports, unless they are suppressed. Within a pass false when
    /// that was given up meanwhile, as with the two that follow.
    [[nodiscard]] bool SendSetUp(const song::MidiEvent& event, const PortSet& ports,
                                 PassState* pass = nullptr) const noexcept;
    /// Brings the device of a source channel (0-15) into the state of the song.
    [[nodiscard]] bool BringChannel(std::size_t channel, Extent extent,
                                    PassState* pass = nullptr) const noexcept;
    /// The same for all channels that go to one of the ports.
    [[nodiscard]] bool BringPorts(const PortSet& ports, Extent extent,
                                  PassState* pass = nullptr) const noexcept;
    /// Channels that go to these ports are not heard; only while no pass of another thread runs.
    void WithholdFrom(const PortSet& ports) noexcept { withheld_ = ports; }
    /// Ends a note of the song (key 0-127) when it sounds.
    void EndNote(std::size_t channel, std::uint8_t key) noexcept;
    /// Ends every note that sounds on a channel by its note-off.
    void EndSoundingNotes(std::size_t channel) noexcept;
    /// All Sound Off and All Notes Off to one channel or to all; nothing sounds there any more.
    /// Within a pass false when that was given up meanwhile.
    bool Silence(std::size_t channel, PassState* pass = nullptr) noexcept;
    bool SilenceAll(PassState* pass = nullptr) noexcept;
    /// Switches local control on at every channel whose port is hardware; the same rule.
    bool SwitchLocalControlOn(PassState* pass = nullptr) const noexcept;

    /// System-exclusive messages are not sent while on. Any thread.
    void SuppressSysex(bool on) { suppressSysex_ = on; }
    /// Which channels the system-exclusive messages of the song reach.
    ChaseRules Rules() const noexcept;
    /// A voice is sent to a source channel (0-15) in place of those that the song selects, until
    /// this is called without one. It is sent with the next program change of the song, or by
    /// SendTrialVoice.
    void TryVoice(std::size_t channel, const std::optional<TrialVoice>& voice) noexcept {
        trials_.Set(channel, voice);
    }
    /// Sends the tried voice, if any; false as with SendSetUp.
    [[nodiscard]] bool SendTrialVoice(std::size_t channel,
                                      PassState* pass = nullptr) const noexcept;
    /// The open drum editor's notes; only while no pass runs.
    void SetDrumNotes(const DrumNotes& notes) { drumNotes_ = notes; }
    const DrumNotes& OpenDrumNotes() const { return drumNotes_; }

private:
    bool SendChannelEvent(song::Track& track, song::EventLink event, PassState& pass) noexcept;
    std::optional<std::uint8_t> NoteToSend(std::size_t channel, std::uint8_t command,
                                           std::uint8_t key, std::uint8_t velocity,
                                           bool audible) noexcept;
    bool MayBeSent(const song::MidiEvent& sysex) const noexcept;
    bool Withheld(std::size_t channel) const noexcept;
    bool Put(std::size_t channel, std::uint8_t command, std::uint8_t data1, std::uint8_t data2,
             PassState* pass) const noexcept;

    const Routing& routing_;
    const OutputPorts& ports_;
    ChannelActivity& activity_;
    ChannelsInEffect& inEffect_;
    StateKeeper& keeper_;
    PortSet withheld_;
    TrialVoices trials_;
    DrumNotes drumNotes_;
    std::atomic<bool> suppressSysex_ = false;
};

} // namespace tracksmith::player
