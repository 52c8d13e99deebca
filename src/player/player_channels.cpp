#include <algorithm>
#include <array>

#include "player/held_notes.h"
#include "player/player.h"
#include "song/shared_byte.h"

// Mute, solo, routing and whatever else decides where a channel or track is heard.

namespace tracksmith::player {

void TMidiPlayer::SetChannelMuted(std::size_t channel, bool on) {
    const Hold hold(*this);
    routing_.SetMuted(channel, on);
    if (on) {
        sender_.Silence(channel);
    } else {
        keeper_.MarkStale(1U << channel);
    }
}

void TMidiPlayer::SetChannelSolo(std::size_t channel, bool on) {
    const Hold hold(*this);
    std::array<bool, kChannels> audibleBefore{};
    for (std::size_t index = 0; index < kChannels; ++index) {
        audibleBefore[index] = routing_.Audible(index);
    }
    routing_.SetSolo(channel, on);
    for (std::size_t index = 0; index < kChannels; ++index) {
        const bool audible = routing_.Audible(index);
        if (audibleBefore[index] && !audible) {
            sender_.Silence(index);
        } else if (audible && !audibleBefore[index]) {
            keeper_.MarkStale(1U << index);
        }
    }
}

bool TMidiPlayer::TryVoice(std::size_t channel, const std::optional<TrialVoice>& voice) {
    const Hold hold(*this);
    if (!hold) {
        return false;
    }
    sender_.TryVoice(channel, voice);
    if (voice) {
        static_cast<void>(sender_.SendTrialVoice(channel));
    } else {
        keeper_.Set(Chase().channels);
        static_cast<void>(sender_.BringChannel(channel, Extent::Difference));
    }
    return true;
}

bool TMidiPlayer::SetTrackMuted(std::size_t track, bool on) {
    const Hold hold(*this);
    if (!hold || track >= song_->tracks.size()) {
        return static_cast<bool>(hold);
    }
    song::WriteShared(song_->tracks[track].muted, on ? 1 : 0);
    dispatcher_.SetLoop(Loop().on, Loop().startTick, Loop().endTick);
    if (on) {
        for (const HeldNote& note : HeldNotes(song_->tracks[track])) {
            sender_.EndNote(note.channel, note.key);
        }
    } else {
        keeper_.Set(Chase().channels);
        keeper_.MarkStale(~0U);
    }
    return true;
}

bool TMidiPlayer::SetTrackTimeShift(std::size_t track, std::int32_t ms) {
    const Hold hold(*this);
    if (hold && track < song_->tracks.size()) {
        song_->tracks[track].timeShiftMs = ms;
        dispatcher_.CursorsMoved();
    }
    return static_cast<bool>(hold);
}

bool TMidiPlayer::SetDrumNotes(const DrumNotes& notes) {
    const Hold hold(*this);
    if (!hold) {
        return false;
    }
    for (const std::size_t channel :
         {std::size_t{sender_.OpenDrumNotes().channel}, std::size_t{notes.channel}}) {
        if (channel < kChannels) {
            sender_.Silence(channel);
        }
    }
    sender_.SetDrumNotes(notes);
    return true;
}

bool TMidiPlayer::ChangePitches(std::uint32_t channels, const std::function<void()>& write) {
    const Hold hold(*this);
    if (!hold) {
        return false;
    }
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        if ((channels >> channel & 1U) != 0) {
            sender_.EndSoundingNotes(channel);
        }
    }
    write();
    return true;
}

bool TMidiPlayer::SetRoutes(const ChannelRoutes& routes) {
    if (routes == routing_.Routes()) {
        return true;
    }
    const bool done = TryRoutes(routes);
    return LeaveHangingPort(routes) || done;
}

bool TMidiPlayer::TryRoutes(const ChannelRoutes& routes) {
    const Hold hold(*this);
    if (!hold) {
        return false;
    }
    const std::set<std::size_t> before = routing_.Ports();
    const std::size_t setUpBefore = routing_.Port(0);
    const std::vector<std::size_t> changed = ChangeRoutes(routes);
    if (!hold.WasPlaying()) {
        return true;
    }
    std::set<std::size_t> added = routing_.Ports();
    std::erase_if(added, [&](std::size_t port) { return before.contains(port); });
    OpenPorts(added);
    if (routing_.Port(0) != setUpBefore) {
        added.insert(routing_.Port(0));
    }
    for (const std::size_t channel : changed) {
        if (!added.contains(routing_.Port(channel))) {
            static_cast<void>(sender_.BringChannel(channel, Extent::Everything));
        }
    }
    if (!added.empty()) {
        SetUpNow(InUse(added));
    }
    return true;
}

// Ends what sounds where it was. Returns the channels that have moved.
std::vector<std::size_t> TMidiPlayer::ChangeRoutes(const ChannelRoutes& routes) {
    const ChannelRoutes before = routing_.Routes();
    std::vector<std::size_t> changed;
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        if (routes[channel] != before[channel]) {
            sender_.Silence(channel);
            routing_.SetRoute(channel, routes[channel]);
            changed.push_back(channel);
        }
    }
    keeper_.MakeRoomForPorts();
    // A reset reaches other channels than before.
    dispatcher_.SetLoop(Loop().on, Loop().startTick, Loop().endTick);
    keeper_.Set(Chase().channels);
    return changed;
}

// A driver that hangs keeps the thread that called it, which is needed no more when no channel goes
// there: playing goes on with another one, at the place where the music is by now.
bool TMidiPlayer::LeaveHangingPort(const ChannelRoutes& routes) {
    const std::optional<std::size_t> holding = ports_.HoldingPort();
    const auto goesThere = [&](const ChannelRoute& route) { return route.port == holding; };
    if (!holding || !thread_.Passes().Stuck() || std::ranges::any_of(routes, goesThere)) {
        return false;
    }
    const bool playing = thread_.Replace();
    sender_.SilenceAll();
    ChangeRoutes(routes);
    if (playing) {
        OpenPorts(routing_.Ports());
        dispatcher_.Preparing().Cancel();
        keeper_.ForgetSetUps(PortSet().set());
        BringToPlace(FindCursors(position_.Us()));
        if (dispatcher_.Preparing().HoldsMusic()) {
            position_.Rest();
        }
        thread_.AllowPasses();
    }
    if (listener_.onHangOver) {
        listener_.onHangOver();
    }
    return true;
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
    const Hold hold(*this);
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
