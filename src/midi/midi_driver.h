#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace tracksmith::midi {

/// Result of a driver call, with the numbers of the Windows multimedia system.
using ResultCode = std::uint32_t;

inline constexpr ResultCode kNoError = 0;
inline constexpr ResultCode kUnspecifiedError = 1;
inline constexpr ResultCode kBadDeviceId = 2;
inline constexpr ResultCode kAllocated = 4;
inline constexpr ResultCode kInvalidHandle = 5;
inline constexpr ResultCode kNoDriver = 6;
inline constexpr ResultCode kNoMemory = 7;
inline constexpr ResultCode kNotSupported = 8;
inline constexpr ResultCode kInvalidFlag = 10;
inline constexpr ResultCode kInvalidParameter = 11;
inline constexpr ResultCode kUnprepared = 64;
inline constexpr ResultCode kStillPlaying = 65;
inline constexpr ResultCode kNotReady = 67;
inline constexpr ResultCode kNoDevice = 68;
inline constexpr ResultCode kBadOpenMode = 70;

/// Messages that a driver sends to a DriverCallback.
inline constexpr std::uint32_t kInputData = 963;
inline constexpr std::uint32_t kInputLongData = 964;
inline constexpr std::uint32_t kInputLongError = 966;
inline constexpr std::uint32_t kOutputDone = 969;

/// An open port of a driver; 0 is none.
using DeviceHandle = std::uintptr_t;

#pragma pack(push, 1)
/// A buffer for a long message, laid out like the system's own header on 64-bit Windows (112 bytes
/// without gaps), so that the driver there can pass it on as it is. Lent to the driver from
/// PrepareHeader to UnprepareHeader.
struct alignas(alignof(void*)) MidiHeader {
    static constexpr std::uint32_t kDone = 1;
    static constexpr std::uint32_t kPrepared = 2;
    static constexpr std::uint32_t kInQueue = 4;

    std::uint8_t* data = nullptr;
    /// Size of `data` in bytes; for output the length of the message.
    std::uint32_t bufferLength = 0;
    /// Bytes that an input driver stored.
    std::uint32_t bytesRecorded = 0;
    /// Free for the owner of the header.
    void* user = nullptr;
    std::uint32_t flags = 0;
    /// For the driver.
    MidiHeader* next = nullptr;
    std::uintptr_t reserved = 0;
    std::uint32_t offset = 0;
    std::array<std::uintptr_t, 8> reservedBlock{};
};
#pragma pack(pop)

/// What a driver tells of a port.
struct DeviceCapabilities {
    static constexpr std::uint32_t kVolume = 1;
    static constexpr std::uint32_t kStereoVolume = 2;
    static constexpr std::uint32_t kCache = 4;
    static constexpr std::uint32_t kStream = 8;

    /// Product name (UTF-8), by which ports are chosen and remembered.
    std::string productName;
    /// High byte the major, low byte the minor version.
    std::uint32_t driverVersion = 0;
    /// Output only: 1 MIDI port, 2 synthesizer, 3 square wave, 4 FM, 5 mapper; 0 unknown.
    std::uint16_t technology = 0;
    std::uint16_t voices = 0;
    std::uint16_t notes = 0;
    /// One bit for each channel that the port answers to.
    std::uint16_t channelMask = 0xFFFF;
    /// Sum of the bits above.
    std::uint32_t support = 0;
};

/// Called by a driver, on a thread of its own or inside a call: `message` is one of kInputData (the
/// short message packed in `param1`, milliseconds since the input was started in `param2`),
/// kInputLongData and kInputLongError (a MidiHeader* in `param1`, milliseconds in `param2`),
/// kOutputDone (a MidiHeader* in `param1`). Must not block, throw or call the driver.
using DriverCallback = void (*)(DeviceHandle handle, std::uint32_t message, void* instance,
                                std::uintptr_t param1, std::uintptr_t param2);

/// The output side of a MIDI system, shaped after the calls of the Windows multimedia system.
/// Devices are numbered from 0 and may come and go; what is open stays valid until Close. Calls on
/// different handles may come from different threads; on one handle ShortMessage, PrepareHeader and
/// LongMessage may come from another thread than the rest. Nothing throws.
class MidiOutputDriver {
public:
    virtual ~MidiOutputDriver() = default;

    /// Number of output devices now present.
    virtual std::uint32_t DeviceCount() = 0;
    virtual ResultCode Capabilities(std::uint32_t device, DeviceCapabilities& capabilities) = 0;
    /// Opens a device; `callback` is called with `instance` until Close has returned.
    virtual ResultCode Open(std::uint32_t device, DriverCallback callback, void* instance,
                            DeviceHandle& handle) = 0;
    virtual ResultCode Close(DeviceHandle handle) = 0;
    /// Ends all notes and gives back every header that is under way, each with kOutputDone.
    virtual ResultCode Reset(DeviceHandle handle) = 0;
    /// Sends a short message: status in the low byte, then the two data bytes.
    virtual ResultCode ShortMessage(DeviceHandle handle, std::uint32_t packed) = 0;
    virtual ResultCode PrepareHeader(DeviceHandle handle, MidiHeader& header) = 0;
    /// Sends a prepared header; its end is told by kOutputDone, which may come before the return.
    virtual ResultCode LongMessage(DeviceHandle handle, MidiHeader& header) = 0;
    virtual ResultCode UnprepareHeader(DeviceHandle handle, MidiHeader& header) = 0;
    /// Volume of a device, left in the high and right in the low 16 bits.
    virtual ResultCode GetVolume(std::uint32_t device, std::uint32_t& volume) = 0;
    virtual ResultCode SetVolume(std::uint32_t device, std::uint32_t volume) = 0;
    virtual ResultCode CachePatches(DeviceHandle handle, std::uint32_t bank,
                                    std::span<const std::uint16_t, 128> patches,
                                    std::uint32_t operation) = 0;
    virtual ResultCode CacheDrumPatches(DeviceHandle handle, std::uint32_t patch,
                                        std::span<const std::uint16_t, 128> keys,
                                        std::uint32_t operation) = 0;
    /// Passes a driver-specific message through.
    virtual ResultCode Message(DeviceHandle handle, std::uint32_t message, std::uintptr_t param1,
                               std::uintptr_t param2) = 0;
    /// The system's text for a code (UTF-8), empty when it has none.
    virtual std::string ErrorText(ResultCode code) = 0;
};

/// The input side, under the same rules as MidiOutputDriver.
class MidiInputDriver {
public:
    virtual ~MidiInputDriver() = default;

    /// Number of input devices now present.
    virtual std::uint32_t DeviceCount() = 0;
    virtual ResultCode Capabilities(std::uint32_t device, DeviceCapabilities& capabilities) = 0;
    virtual ResultCode Open(std::uint32_t device, DriverCallback callback, void* instance,
                            DeviceHandle& handle) = 0;
    virtual ResultCode Close(DeviceHandle handle) = 0;
    /// Ends receiving and gives back every buffer, each with kInputLongData.
    virtual ResultCode Reset(DeviceHandle handle) = 0;
    virtual ResultCode PrepareHeader(DeviceHandle handle, MidiHeader& header) = 0;
    /// Lends a prepared buffer for the next system-exclusive message.
    virtual ResultCode AddBuffer(DeviceHandle handle, MidiHeader& header) = 0;
    virtual ResultCode UnprepareHeader(DeviceHandle handle, MidiHeader& header) = 0;
    virtual ResultCode Start(DeviceHandle handle) = 0;
    virtual ResultCode Stop(DeviceHandle handle) = 0;
    virtual std::string ErrorText(ResultCode code) = 0;
};

} // namespace tracksmith::midi
