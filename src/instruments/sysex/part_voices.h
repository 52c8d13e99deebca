#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "instruments/sysex/operation_table.h"
#include "instruments/sysex/sysex_patterns.h"

namespace tracksmith::instruments {

/// What a channel plays.
struct PartVoice {
    bool drum = false;
    /// False for a bank that only some conventions take for drums while no reset says which holds.
    bool certain = true;
    std::uint8_t program = 0;
};

/// Follows which channels play drums, by the messages that an instrument is sent: an instrument of
/// a certain way, or one that does what the last reset asks (GM: channel 10; GM2: bank select MSB
/// 120 and 121; XG: MSB 126 and 127) and knows the part modes of GS and XG. Sources: RP-003,
/// RP-024, the MIDI implementations of Sound Canvas and MU series. One thread.
class PartVoices {
public:
    explicit PartVoices(std::optional<DrumWay> way) : way_(way) { Reset(ResetKind::None); }

    /// Takes a bank select or a program change; other events of channels do not matter.
    void Meet(const song::MidiEvent& event) {
        if (event.Command() == song::kProgramChange) {
            ChangeProgram(event.Channel(), event.data1 & 0x7FU);
        } else if (event.Command() == song::kControlChange && event.data1 == song::kBankMsb) {
            SelectBank(event.Channel(), event.data2 & 0x7FU);
        }
    }
    void Reset(ResetKind kind);
    void SetPart(const PartMode& mode);
    void SelectBank(std::size_t channel, std::uint8_t msb) { channels_.at(channel).bank = msb; }
    void ChangeProgram(std::size_t channel, std::uint8_t program);

    PartVoice& Of(std::size_t channel) { return channels_.at(channel).voice; }
    /// Whether the message makes another part of its channel, which then begins with its first
    /// voice.
    bool Changes(const PartMode& mode) const {
        return channels_.at(mode.channel).voice.drum != mode.drum;
    }

private:
    struct Channel {
        PartVoice voice;
        std::optional<std::uint8_t> bank; // as selected since the last reset
    };

    DrumWay WayInForce() const;

    std::optional<DrumWay> way_;
    ResetKind kind_ = ResetKind::None;
    std::array<Channel, song::kMidiChannels> channels_;
};

} // namespace tracksmith::instruments
