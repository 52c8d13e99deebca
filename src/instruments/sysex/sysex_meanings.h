#pragma once

#include <cstdint>

#include "base/text.h"

#include "instruments/sysex/sysex_patterns.h"

/// What published messages mean, as tables.
namespace tracksmith::instruments {

/// Whom an address is for.
enum class AddressTarget : std::uint8_t { Whole, GsPart, XgPart, DrumKey };

/// Meaning of an address.
struct AddressMeaning {
    Text words;
    AddressTarget target = AddressTarget::Whole;
};

/// Meaning of a universal message (data without F0; MIDI 1.0, MIDI Show Control, RP-002 to
/// RP-037); null for one that is not listed.
const Text* UniversalMeaning(SysexBytes data);

/// Meaning of a message (data without F0) that the program itself inserts or looks for on
/// instruments whose messages are not published in general; null for any other.
const Text* SetUpMeaning(SysexBytes data);

/// Meaning of a GS address; null for one that is not listed. Source: Roland's MIDI implementations
/// of the Sound Canvas series.
const AddressMeaning* GsMeaning(const ParameterMessage& message);

/// Meaning of an XG address; null for one that is not listed. Source: Yamaha's MIDI data formats.
const AddressMeaning* XgMeaning(const ParameterMessage& message);

/// Name of the Roland model that a message other than GS is for; empty for one that is not listed.
std::string_view RolandModel(SysexBytes data);

} // namespace tracksmith::instruments
