#include "player/event_sender.h"

#include <algorithm>
#include <array>

#include "song/shared_byte.h"

namespace tracksmith::player {
namespace {

// Of the notes that the player ends itself.
constexpr std::uint8_t kReleaseVelocity = 64;

bool IsNote(std::uint8_t command) {
    return command == song::kNoteOn || command == song::kNoteOff;
}

// What selects the voice of a channel.
bool IsVoice(std::uint8_t command, std::uint8_t data1) {
    return command == song::kProgramChange ||
           (command == song::kControlChange &&
            (data1 == song::kBankMsb || data1 == song::kBankLsb));
}

} // namespace

bool EventSender::Send(song::Track& track, song::EventLink event, PassState& pass) noexcept {
    if (event->length <= 0) {
        return true;
    }
    if (event->IsChannelMessage()) {
        return SendChannelEvent(track, event, pass);
    }
    if (song::ReadShared(track.muted) != 0 || !MayBeSent(*event)) {
        return true;
    }
    keeper_.PassSysex(*event);
    return ports_.SendSysexNow(routing_.Port(0), event->status, event->Payload(), pass);
}

bool EventSender::MayBeSent(const song::MidiEvent& sysex) const noexcept {
    const bool kind = sysex.status == song::kSystemExclusive || sysex.status == song::kEscape;
    return kind && !suppressSysex_ && !sysex.Payload().empty();
}

ChaseRules EventSender::Rules() const noexcept {
    ChaseRules rules{!suppressSysex_, 0};
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        if (routing_.Port(channel) == routing_.Port(0)) {
            rules.channels |= 1U << channel;
        }
    }
    return rules;
}

bool EventSender::Withheld(std::size_t channel) const noexcept {
    const std::size_t port = routing_.Port(channel);
    return port < withheld_.size() && withheld_[port];
}

bool EventSender::SendSetUp(const song::MidiEvent& event, const PortSet& ports,
                            PassState* pass) const noexcept {
    for (std::size_t port = 0; MayBeSent(event) && port < ports_.Count(); ++port) {
        if (!ports[port]) {
            continue;
        }
        keeper_.SentSysex(port, event);
        if (pass == nullptr) {
            ports_.SendSysex(port, event.status, event.Payload());
        } else if (!ports_.SendSysexNow(port, event.status, event.Payload(), *pass)) {
            return false;
        }
    }
    return true;
}

// Everything is composed before the first driver is called.
bool EventSender::BringChannel(std::size_t channel, Extent extent, PassState* pass) const noexcept {
    const bool trial = trials_.Of(channel).has_value();
    for (const ChannelMessage& message : keeper_.Bring(channel, extent)) {
        if (trial && IsVoice(message.command, message.data1)) {
            continue;
        }
        keeper_.Sent(channel, message);
        if (!Put(channel, message.command, message.data1, message.data2, pass) && pass != nullptr) {
            return false;
        }
    }
    return SendTrialVoice(channel, pass);
}

bool EventSender::SendTrialVoice(std::size_t channel, PassState* pass) const noexcept {
    const std::optional<TrialVoice> voice = trials_.Of(channel);
    if (!voice) {
        return true;
    }
    const std::array<ChannelMessage, 3> messages{
        {{song::kControlChange, song::kBankMsb, voice->bankMsb},
         {song::kControlChange, song::kBankLsb, voice->bankLsb},
         {song::kProgramChange, voice->program, 0}}};
    return std::ranges::all_of(messages, [&](const ChannelMessage& message) {
        keeper_.Sent(channel, message);
        return Put(channel, message.command, message.data1, message.data2, pass) || pass == nullptr;
    });
}

bool EventSender::BringPorts(const PortSet& ports, Extent extent, PassState* pass) const noexcept {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        const std::size_t port = routing_.Port(channel);
        if (port < ports.size() && ports[port] && !BringChannel(channel, extent, pass)) {
            return false;
        }
    }
    return true;
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
        keeper_.Pass(event);
    }
    bool audible = trackAudible && routing_.Audible(channel) && !Withheld(channel);
    if (IsNote(command)) {
        const auto note = NoteToSend(channel, command, data1, data2, audible);
        audible = note.has_value();
        data1 = note.value_or(data1);
    }
    if (!audible) {
        return true;
    }
    const bool sets = command >= song::kControlChange;
    if ((sets || (command == song::kNoteOn && data2 > 0)) && keeper_.Stale(channel) &&
        !BringChannel(channel, Extent::Difference, &pass)) {
        return false;
    }
    if (sets && IsVoice(command, data1) && trials_.Of(channel)) {
        return command != song::kProgramChange || SendTrialVoice(channel, &pass);
    }
    if (sets) {
        keeper_.Sent(channel, {command, data1, data2});
    }
    return Put(channel, command, data1, data2, &pass);
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

void EventSender::EndSoundingNotes(std::size_t channel) noexcept {
    for (std::uint8_t key = 0; key < 128; ++key) {
        while (activity_.Sounding(channel, key) > 0) {
            activity_.NoteOff(channel, key);
            Put(channel, song::kNoteOff, key, kReleaseVelocity, nullptr);
        }
    }
}

void EventSender::EndNote(std::size_t channel, std::uint8_t key) noexcept {
    if (const auto note = NoteToSend(channel, song::kNoteOff, key, kReleaseVelocity, false)) {
        Put(channel, song::kNoteOff, *note, kReleaseVelocity, nullptr);
    }
}

bool EventSender::SendChannel(std::size_t channel, std::uint8_t command, std::uint8_t data1,
                              std::uint8_t data2) const noexcept {
    keeper_.Touch(channel);
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
