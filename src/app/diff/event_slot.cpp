#include "app/diff/event_slot.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string_view>

namespace tracksmith::diff {
namespace {

using song::MidiEvent;

Item NoteItem(const MidiEvent& event) {
    const bool begins = event.IsNoteOn() && event.data2 != 0;
    const std::uint16_t control = begins ? event.data1 : kEndOfNote + event.data1;
    const std::uint8_t release = event.IsNoteOn() ? 64 : event.data2; // as MIDI has it for these
    return {{Kind::Note, event.Channel(), control}, begins ? event.data2 : release, &event};
}

Item ControllerItem(const MidiEvent& event) {
    const bool bank = event.data1 == song::kBankMsb || event.data1 == song::kBankLsb;
    return {
        {bank ? Kind::Voice : Kind::Controller, event.Channel(), event.data1}, event.data2, &event};
}

Item ChannelItem(const MidiEvent& event) {
    constexpr std::uint16_t kProgram = 128;
    switch (event.Command()) {
        case song::kNoteOff:
        case song::kNoteOn:
            return NoteItem(event);
        case song::kControlChange:
            return ControllerItem(event);
        case song::kProgramChange:
            return {{Kind::Voice, event.Channel(), kProgram}, event.data1, &event};
        case song::kPitchBend:
            return {{Kind::Controller, event.Channel(), kBend},
                    static_cast<std::uint64_t>((event.data2 << 7) | event.data1),
                    &event};
        case song::kChannelPressure:
            return {{Kind::Controller, event.Channel(), kChannelPressure}, event.data1, &event};
        default:
            return {{Kind::Controller, event.Channel(),
                     static_cast<std::uint16_t>(kPolyPressure + event.data1)},
                    event.data2,
                    &event};
    }
}

std::uint64_t HashOf(std::span<const std::uint8_t> bytes) {
    return std::hash<std::string_view>{}(
        {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

// The first bytes, most significant first; what a short payload lacks is zero.
std::uint64_t NumberOf(const MidiEvent& event) {
    constexpr std::size_t kBytes = 4;
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < kBytes; ++i) {
        number = (number << 8U) | (i < event.Payload().size() ? event.Payload()[i] : 0U);
    }
    return event.metaType == song::kMetaTempo ? number >> 8U : number;
}

} // namespace

std::optional<Item> ItemOf(const MidiEvent& event) {
    if (event.length == 0) {
        return std::nullopt;
    }
    if (event.IsChannelMessage()) {
        return ChannelItem(event);
    }
    if (event.status != song::kMeta) {
        return Item{{Kind::Message, kWholeSong, event.status}, HashOf(event.Payload()), &event};
    }
    switch (event.metaType) {
        case song::kMetaEndOfTrack:
        case song::kMetaPort:
            return std::nullopt;
        case song::kMetaTempo:
        case song::kMetaTimeSignature:
        case song::kMetaKeySignature:
            return Item{{Kind::Tempo, kWholeSong, event.metaType}, NumberOf(event), &event};
        default:
            return Item{{Kind::Text, kWholeSong, event.metaType}, HashOf(event.Payload()), &event};
    }
}

} // namespace tracksmith::diff
