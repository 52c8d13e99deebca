#include <array>

#include "player/chase_messages.h"
#include "player/held_notes.h"
#include "player/player.h"
#include "song/shared_byte.h"

// Mute, solo, routing and whatever else decides where a channel or track is heard.

namespace tracksmith::player {

void TMidiPlayer::SetChannelMuted(std::size_t channel, bool on) {
    const PassHold hold(thread_, *stopwatch_);
    routing_.SetMuted(channel, on);
    if (on) {
        sender_.Silence(channel);
    }
}

void TMidiPlayer::SetChannelSolo(std::size_t channel, bool on) {
    const PassHold hold(thread_, *stopwatch_);
    std::array<bool, kChannels> audibleBefore{};
    for (std::size_t index = 0; index < kChannels; ++index) {
        audibleBefore[index] = routing_.Audible(index);
    }
    routing_.SetSolo(channel, on);
    for (std::size_t index = 0; index < kChannels; ++index) {
        if (audibleBefore[index] && !routing_.Audible(index)) {
            sender_.Silence(index);
        }
    }
}

void TMidiPlayer::SetTrackMuted(std::size_t track, bool on) {
    const PassHold hold(thread_, *stopwatch_);
    if (!hold || track >= song_.tracks.size()) {
        return;
    }
    song::WriteShared(song_.tracks[track].muted, on ? 1 : 0);
    dispatcher_.SetLoop(Loop().on, Loop().startTick, Loop().endTick);
    if (on) {
        for (const HeldNote& note : HeldNotes(song_.tracks[track])) {
            sender_.EndNote(note.channel, note.key);
        }
    }
}

void TMidiPlayer::SetTrackTimeShift(std::size_t track, std::int32_t ms) {
    const PassHold hold(thread_, *stopwatch_);
    if (hold && track < song_.tracks.size()) {
        song_.tracks[track].timeShiftMs = ms;
        dispatcher_.CursorsMoved();
    }
}

void TMidiPlayer::SetDrumNotes(const DrumNotes& notes) {
    const PassHold hold(thread_, *stopwatch_);
    if (!hold) {
        return;
    }
    if (notes.channel < kChannels) {
        sender_.Silence(notes.channel);
    }
    sender_.SetDrumNotes(notes);
}

void TMidiPlayer::SetRoute(std::size_t channel, std::size_t port, std::uint8_t target) {
    const PassHold hold(thread_, *stopwatch_);
    if (!hold || (routing_.Port(channel) == port && routing_.Target(channel) == target)) {
        return;
    }
    sender_.Silence(channel);
    routing_.SetRoute(channel, port, target);
    if (hold.WasPlaying()) {
        ports_.Open(port);
        SendChannelChase(CollectChase(song_).channels[channel], channel, sender_);
    }
}

bool TMidiPlayer::SendMidiData(std::size_t port, std::uint8_t status, std::uint8_t data1,
                               std::uint8_t data2) {
    return ports_.SendShort(port, status, data1 & 0x7F, data2 & 0x7F);
}

bool TMidiPlayer::SendSysex(std::size_t port, std::uint8_t status,
                            std::span<const std::uint8_t> data) {
    return ports_.SendSysex(port, status, data);
}

bool TMidiPlayer::SendChannel(std::size_t channel, std::uint8_t command, std::uint8_t data1,
                              std::uint8_t data2) {
    return sender_.SendChannel(channel, command, data1, data2);
}

void TMidiPlayer::Panic() {
    const PassHold hold(thread_, *stopwatch_);
    for (std::size_t port = 0; port < ports_.Count(); ++port) {
        for (unsigned channel = 0; channel < kChannels; ++channel) {
            const auto status = static_cast<std::uint8_t>(song::kControlChange | channel);
            ports_.SendShort(port, status, song::kSustain, 0);
        }
        ports_.Silence(port);
    }
    activity_.ClearAll();
}

} // namespace tracksmith::player
