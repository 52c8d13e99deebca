#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "instruments/sysex/sysex_templates.h"

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

/// Channel index (0-15) of a GS part number from an address nibble: part 0 is channel 10.
std::size_t GsChannel(std::uint8_t nibble);

} // namespace tracksmith::instruments
