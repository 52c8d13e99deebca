#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "instruments/sysex/sysex_templates.h"
#include "song/mode_message.h"

/// Recognises kinds of messages. All functions take the data without F0, of any length, and read
/// nothing behind it.
namespace tracksmith::instruments {

/// Manufacturer numbers (MIDI Association).
inline constexpr std::uint8_t kKetronId = 0x26;
inline constexpr std::uint8_t kRolandId = 0x41;
inline constexpr std::uint8_t kKorgId = 0x42;
inline constexpr std::uint8_t kYamahaId = 0x43;
inline constexpr std::uint8_t kTechnicsId = 0x50;
inline constexpr std::uint8_t kUniversalNonRealTime = 0x7E;
inline constexpr std::uint8_t kUniversalRealTime = 0x7F;

bool StartsWith(SysexBytes data, SysexBytes prefix);

/// Byte `index`, -1 behind the end.
int ByteAt(SysexBytes data, std::size_t index);

/// Address and values of a parameter message.
struct ParameterMessage {
    /// Device number: 0-1F for Roland, 0-F for Yamaha.
    std::uint8_t device = 0;
    std::uint8_t high = 0;
    std::uint8_t middle = 0;
    std::uint8_t low = 0;
    /// What is set, without checksum and F7.
    SysexBytes values;
    /// The checksum is right, or the kind of message has none.
    bool checksumRight = true;
};

/// A GS data set message (41 dd 42 12 address values checksum F7) of any device; empty for others.
/// Source: the MIDI implementations that Roland publishes for the Sound Canvas series.
std::optional<ParameterMessage> GsMessage(SysexBytes data);

/// An XG parameter change (43 1n 4C address values F7) of any device; empty for others. Source: the
/// MIDI data formats that Yamaha publishes for its XG instruments.
std::optional<ParameterMessage> XgMessage(SysexBytes data);

/// The checksum of Roland: what brings the sum of address and values to a multiple of 128.
std::uint8_t RolandChecksum(SysexBytes addressAndValues);

/// An XG message that sets the master equaliser (address 02 40).
bool IsXgMasterEq(SysexBytes data);

/// A message for the vocal harmony of Yamaha arrangers: XG address 04, and the additional
/// parameters 43 73 01 11 0n 50 that the data lists of PSR-S900, PSR-S970 and PSR-SX900 print.
bool IsVocalHarmony(SysexBytes data);

/// A message for organ flutes (drawbars) of Yamaha arrangers: the bulk dump 43 73 mm 06 0B that the
/// data lists of PSR-2100 and CVP-210 print.
bool IsOrganFlute(SysexBytes data);

/// The convention that a reset puts an instrument under.
enum class ResetKind : std::uint8_t { None, Gm, Gm2, Gs, Xg, Own };

/// Which reset of all channels a message is, of any device: GM System On and Off (RP-003), GM2
/// System On (RP-024), GS Reset and the system mode set of the SC-88, XG System On and All
/// Parameter Reset, and the set-up messages of Ketron and Technics instruments, of which it is not
/// published what else they reset (Own). None for any other message, also one with another value
/// or a wrong Roland checksum.
ResetKind ResetKindOf(SysexBytes data);

/// A channel that is made a drum part or a melody part.
using PartMode = song::RhythmPart;

/// GS "use for rhythm part" (40 1x 15) with the right checksum and XG part mode (08 pp 07), of any
/// device; empty for any other message.
std::optional<PartMode> PartModeOf(SysexBytes data);

/// GS "use for rhythm part" without its F0: makes a channel (0-15) melody (0) or drums of map 1 or
/// 2. Source: Roland's MIDI implementation of the SC-55.
std::array<std::uint8_t, 10> GsPartMessage(std::uint8_t device, std::size_t channel,
                                           std::uint8_t value);

/// Channel index (0-15) of a GS part number from an address nibble: part 0 is channel 10.
std::size_t GsChannel(std::uint8_t nibble);

} // namespace tracksmith::instruments
