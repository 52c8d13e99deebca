#include "player/event_sender.h"

#include "song/shared_byte.h"

namespace tracksmith::player {
namespace {

bool IsNote(std::uint8_t command) {
    return command == song::kNoteOn || command == song::kNoteOff;
}

} // namespace

bool EventSender::Send(song::Track& track, song::EventLink event, PassState& pass) noexcept {
    if (event->length <= 0) {
        return true;
    }
    if (event->IsChannelMessage()) {
        return SendChannelEvent(track, event, pass);
    }
    return song::ReadShared(track.muted) != 0 || !MayBeSent(*event) ||
           ports_.SendSysexNow(routing_.Port(0), event->status, event->Payload(), pass);
}

bool EventSender::MayBeSent(const song::MidiEvent& sysex) const noexcept {
    const bool kind = sysex.status == song::kSystemExclusive || sysex.status == song::kEscape;
    return kind && !suppressSysex_ && !sysex.Payload().empty();
}

void EventSender::SendSysex(const song::MidiEvent& event) const noexcept {
    if (MayBeSent(event)) {
        ports_.SendSysex(routing_.Port(0), event.status, event.Payload());
    }
}

bool EventSender::SendChannelEvent(song::Track& track, song::EventLink event,
                                   PassState& pass) noexcept {
    const std::size_t channel = event->Channel();
    const std::uint8_t command = event->Command();
    std::uint8_t data1 = song::ReadShared(event->data1) & 0x7F;
    const std::uint8_t data2 = song::ReadShared(event->data2) & 0x7F;
    const bool trackAudible = song::ReadShared(track.muted) == 0;
    if (command >= song::kControlChange && trackAudible) {
        inEffect_.Take(event);
    }
    bool audible = trackAudible && routing_.Audible(channel);
    if (IsNote(command)) {
        const auto note = NoteToSend(channel, command, data1, data2, audible);
        audible = note.has_value();
        data1 = note.value_or(data1);
    }
    return !audible || Put(channel, command, data1, data2, &pass);
}

// A note that began before its channel or track was muted still ends.
std::optional<std::uint8_t> EventSender::NoteToSend(std::size_t channel, std::uint8_t command,
                                                    std::uint8_t key, std::uint8_t velocity,
                                                    bool audible) noexcept {
    const std::optional<std::uint8_t> sounding =
        drumNotes_.Sounding(static_cast<std::uint8_t>(channel), key);
    const bool on = command == song::kNoteOn && velocity > 0;
    if (!sounding || (!audible && (on || activity_.Sounding(channel, *sounding) == 0))) {
        return std::nullopt;
    }
    if (on) {
        activity_.NoteOn(channel, *sounding, velocity);
    } else {
        activity_.NoteOff(channel, *sounding);
    }
    return sounding;
}

void EventSender::EndNote(std::size_t channel, std::uint8_t key) noexcept {
    constexpr std::uint8_t kReleaseVelocity = 64;
    if (const auto note = NoteToSend(channel, song::kNoteOff, key, kReleaseVelocity, false)) {
        SendChannel(channel, song::kNoteOff, *note, kReleaseVelocity);
    }
}

bool EventSender::SendChannel(std::size_t channel, std::uint8_t command, std::uint8_t data1,
                              std::uint8_t data2) const noexcept {
    return Put(channel, command, data1, data2, nullptr);
}

// Without a pass false when the port does not take it; else when the pass was given up.
bool EventSender::Put(std::size_t channel, std::uint8_t command, std::uint8_t data1,
                      std::uint8_t data2, PassState* pass) const noexcept {
    const auto status = static_cast<std::uint8_t>((command & 0xF0) | routing_.Target(channel));
    const bool oneByte =
        (command & 0xF0) == song::kProgramChange || (command & 0xF0) == song::kChannelPressure;
    const auto first = static_cast<std::uint8_t>(data1 & 0x7F);
    const auto second = static_cast<std::uint8_t>(oneByte ? 0 : data2 & 0x7F);
    const std::size_t port = routing_.Port(channel);
    return pass == nullptr ? ports_.SendShort(port, status, first, second)
                           : ports_.SendShortNow(port, status, first, second, *pass);
}

bool EventSender::Silence(std::size_t channel, PassState* pass) noexcept {
    activity_.Clear(channel);
    const bool allOff = Put(channel, song::kControlChange, song::kAllSoundOff, 0, pass);
    return (allOff || pass == nullptr) &&
           Put(channel, song::kControlChange, song::kAllNotesOff, 0, pass);
}

bool EventSender::SilenceAll(PassState* pass) noexcept {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        if (!Silence(channel, pass) && pass != nullptr) {
            return false;
        }
    }
    return true;
}

bool EventSender::SwitchLocalControlOn(PassState* pass) const noexcept {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        const std::size_t port = routing_.Port(channel);
        if (port < ports_.Count() && !ports_.At(port).SoftwareInstrument() &&
            !Put(channel, song::kControlChange, song::kLocalControl, 127, pass) &&
            pass != nullptr) {
            return false;
        }
    }
    return true;
}

} // namespace tracksmith::player
