#include "player/event_sender.h"

#include <optional>

#include "song/shared_byte.h"

namespace tracksmith::player {
namespace {

bool IsNote(std::uint8_t command) {
    return command == song::kNoteOn || command == song::kNoteOff;
}

} // namespace

void EventSender::Send(song::Track& track, song::EventLink event) noexcept {
    if (event->length <= 0) {
        return;
    }
    if (event->IsChannelMessage()) {
        SendChannelEvent(track, event);
    } else if (song::ReadShared(track.muted) == 0) {
        SendSysex(*event);
    }
}

void EventSender::SendSysex(const song::MidiEvent& event) const noexcept {
    const bool sysex = event.status == song::kSystemExclusive || event.status == song::kEscape;
    if (sysex && !suppressSysex_ && !event.Payload().empty()) {
        ports_.SendSysex(routing_.Port(0), event.status, event.Payload());
    }
}

void EventSender::SendChannelEvent(song::Track& track, song::EventLink event) noexcept {
    const std::size_t channel = event->Channel();
    const std::uint8_t command = event->Command();
    const std::uint8_t data1 = song::ReadShared(event->data1) & 0x7F;
    const std::uint8_t data2 = song::ReadShared(event->data2) & 0x7F;
    const bool trackAudible = song::ReadShared(track.muted) == 0;
    if (command >= song::kControlChange && trackAudible) {
        inEffect_.Take(event);
    }
    const bool audible = trackAudible && routing_.Audible(channel);
    if (IsNote(command)) {
        SendNote(channel, command, data1, data2, audible);
    } else if (audible) {
        SendChannel(channel, command, data1, data2);
    }
}

// A note that began before its channel or track was muted still ends.
void EventSender::SendNote(std::size_t channel, std::uint8_t command, std::uint8_t key,
                           std::uint8_t velocity, bool audible) noexcept {
    const std::optional<std::uint8_t> sounding =
        drumNotes_.Sounding(static_cast<std::uint8_t>(channel), key);
    const bool on = command == song::kNoteOn && velocity > 0;
    if (!sounding || (!audible && (on || activity_.Sounding(channel, *sounding) == 0))) {
        return;
    }
    if (on) {
        activity_.NoteOn(channel, *sounding, velocity);
    } else {
        activity_.NoteOff(channel, *sounding);
    }
    SendChannel(channel, command, *sounding, velocity);
}

void EventSender::EndNote(std::size_t channel, std::uint8_t key) noexcept {
    constexpr std::uint8_t kReleaseVelocity = 64;
    SendNote(channel, song::kNoteOff, key, kReleaseVelocity, false);
}

bool EventSender::SendChannel(std::size_t channel, std::uint8_t command, std::uint8_t data1,
                              std::uint8_t data2) const noexcept {
    const auto status = static_cast<std::uint8_t>((command & 0xF0) | routing_.Target(channel));
    const bool oneByte =
        (command & 0xF0) == song::kProgramChange || (command & 0xF0) == song::kChannelPressure;
    return ports_.SendShort(routing_.Port(channel), status, data1 & 0x7F,
                            oneByte ? std::uint8_t{0} : static_cast<std::uint8_t>(data2 & 0x7F));
}

void EventSender::Silence(std::size_t channel) noexcept {
    SendChannel(channel, song::kControlChange, song::kAllSoundOff, 0);
    SendChannel(channel, song::kControlChange, song::kAllNotesOff, 0);
    activity_.Clear(channel);
}

void EventSender::SilenceAll() noexcept {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        Silence(channel);
    }
}

} // namespace tracksmith::player
