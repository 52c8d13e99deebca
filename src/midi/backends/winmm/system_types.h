#pragma once

#include <windows.h>
// The multimedia header needs what the line above declares.
#include <mmsystem.h>
// A macro of the printing functions, which would rename our type.
#undef DeviceCapabilities

#include <string>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// Size that the system allots to an error text, in characters.
inline constexpr UINT kErrorTextLength = MAXERRORLENGTH;

/// The system's view of a header; the layouts are the same.
MIDIHDR* SystemHeader(MidiHeader& header);

/// The system's view of a callback; the calling conventions are the same.
DWORD_PTR SystemCallback(DriverCallback callback);

/// A system handle as the number that callers hold.
DeviceHandle HandleNumber(void* handle);

/// UTF-8 of a text that ends with a zero or, when it has none, after `capacity` characters. Halves
/// of surrogate pairs become U+FFFD.
std::string Utf8(const wchar_t* text, std::size_t capacity);

} // namespace tracksmith::midi
