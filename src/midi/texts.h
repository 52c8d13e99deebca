#pragma once

#include <array>
#include <string>

#include "base/text.h"

/// Texts of the MIDI ports. The wordings are fixed.
namespace tracksmith::midi::texts {

inline constexpr Text kErrorOutOfRange{Both{"Specified error number is out of range"}};

// Port states that forbid an operation.
inline constexpr Text kShortNotOpen{Both{"(Short Msg) Device not opened."}};
inline constexpr Text kLongNotOpen{Both{"(Long Msg) Device not opened."}};
inline constexpr Text kOutputNotOpen{Both{"MIDI Output device not open"}};
inline constexpr Text kDeviceIdOpen{Both{"Change to DeviceID while device was open"}};
inline constexpr Text kProductNameOpen{Both{"Change to ProductName while device was open"}};
inline constexpr Text kTechnologyOpen{Both{"Change to Product Technology while device was open"}};
inline constexpr Text kSysexBufferSizeOpen{Both{"Change to SysexBufferSize while device was open"}};
inline constexpr Text kSysexBufferCountOpen{
    Both{"Change to SysexBufferCount while device was open"}};

// Devices that are not there.
inline constexpr Text kInvalidDeviceId{Both{"Invalid device ID"}};
inline constexpr Text kOutputDevice{Both{"MIDI output Device "}};
inline constexpr Text kOutputTechnology{Both{"MIDI output technology "}};
inline constexpr Text kInputDevice{Both{"MIDI Input Device "}};
inline constexpr Text kNotInstalled{Both{" not installed"}};
// The input wording ends with a blank, unlike that of the output.
inline constexpr Text kInputNotInstalled{Both{" not installed "}};

/// A device of that name that was looked for and not found.
inline std::string OutputNotInstalled(std::string_view name) {
    return std::string(kOutputDevice.english).append(name).append(kNotInstalled.english);
}
/// A kind of device that was looked for and not found.
inline std::string TechnologyNotInstalled(std::string_view name) {
    return std::string(kOutputTechnology.english).append(name).append(kNotInstalled.english);
}
/// An input device of that name that was looked for and not found.
inline std::string InputNotInstalled(std::string_view name) {
    return std::string(kInputDevice.english).append(name).append(kInputNotInstalled.english);
}

// Kinds of output devices.
inline constexpr auto kTechnologyNames = std::to_array<Text>({
    Text{Both{"None"}},
    Text{Both{"MIDI Port"}},
    Text{Both{"Generic Synth"}},
    Text{Both{"Square Wave Synth"}},
    Text{Both{"FM Synth"}},
    Text{Both{"MIDI Mapper"}},
});

// Failures of an output's driver.
inline constexpr Text kCachingHandle{Both{"(Caching) The specified device handle is invalid."}};
inline constexpr Text kCachingMemory{
    Both{"(Caching) The device does not have enough memory to "
         "cache all of the requested patches."}};
inline constexpr Text kCachingUnsupported{
    Both{"(Caching) The specified device does not support patch caching."}};
inline constexpr Text kCachingFlag{Both{"(Caching) The flag specified by wFlags is invalid."}};
inline constexpr Text kCachingArray{
    Both{"(Caching) The array pointed to by lpPatchArray is invalid."}};
inline constexpr Text kShortHandle{Both{"(Short Msg) The specified device handle is invalid."}};
inline constexpr Text kShortBusy{Both{"(Short Msg) The hardware is busy with other data."}};
inline constexpr Text kShortMode{
    Both{"(Short Msg) The application sent a message without a status byte to a stream handle."}};
inline constexpr Text kLongHandle{Both{"(Long Msg) The specified device handle is invalid."}};
inline constexpr Text kLongPointer{
    Both{"(Long Msg) The specified pointer or structure is invalid."}};
inline constexpr Text kLongUnprepared{
    Both{"(Long Msg) The buffer pointed to by lpMidiOutHdr has not been prepared."}};
inline constexpr Text kLongBusy{Both{"(Long Msg) The hardware is busy with other data."}};
inline constexpr Text kPrepareHandle{Both{"(Prep Header) The specified device handle is invalid."}};
inline constexpr Text kPrepareMemory{
    Both{"(Prep Header) The system is unable to allocate or lock memory."}};
inline constexpr Text kPrepareAddress{
    Both{"(Prep Header) The specified address is invalid or the given stream buffer is greater "
         "than 64K."}};

// Codes of a driver where the system has no texts of its own.
inline constexpr Text kUnspecifiedError{Both{"The MIDI system reported a failure."}};
inline constexpr Text kBadDeviceId{Both{"There is no MIDI device of this number."}};
inline constexpr Text kAllocated{Both{"The MIDI device is in use by another program."}};
inline constexpr Text kInvalidHandle{Both{"The MIDI device is not open."}};
inline constexpr Text kNoDriver{Both{"The MIDI device is gone or its system does not run."}};
inline constexpr Text kNoMemory{Both{"There is not enough memory for the MIDI device."}};
inline constexpr Text kNotSupported{Both{"The MIDI device cannot do this."}};
inline constexpr Text kInvalidFlag{Both{"A flag is not known to the MIDI device."}};
inline constexpr Text kInvalidParameter{Both{"A value is not allowed for the MIDI device."}};
inline constexpr Text kUnprepared{Both{"A buffer has not been prepared for the MIDI device."}};
inline constexpr Text kStillPlaying{Both{"The MIDI device is still using a buffer."}};
inline constexpr Text kNotReady{Both{"The MIDI device is busy with other data."}};
inline constexpr Text kNoDevice{Both{"The MIDI port is not connected."}};
inline constexpr Text kBadOpenMode{Both{"A MIDI message has no status byte."}};

} // namespace tracksmith::midi::texts
