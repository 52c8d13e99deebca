#pragma once

#include <cstdint>

/// What tests and the loop-back driver agree on. The driver has two pairs of devices of the same
/// number, each looping its output to its input: the first is the one to test, the second is never
/// at fault and takes the steering messages, which a test sends with midiOutMessage.
namespace wineloop {

inline constexpr std::uint32_t kDevices = 2;
inline constexpr std::uint32_t kTestDevice = 0;
inline constexpr std::uint32_t kSteeringDevice = 1;

/// Names of the devices; the first has a character outside ASCII.
inline constexpr wchar_t kTestName[] = L"Loop Fl\u00FCgel";
inline constexpr wchar_t kSteeringName[] = L"Loop Steering";
inline constexpr std::uint32_t kDriverVersion = 0x0203;

/// When a long message is given back to its sender. Its bytes reach the input in any case.
enum class Completion : std::uint32_t {
    Prompt, ///< by the driver's thread, as soon as it is delivered
    Inside, ///< before the call that sends it returns
    Held,   ///< by Release or a reset
    Late,   ///< some time after it was sent; a reset does not hurry it
    Lost    ///< never
};

/// Numbers of the steering messages.
enum Steering : std::uint32_t {
    kFirstSteering = 0x4100,
    /// Ends all faults, sets prompt completion and the misuse count to 0.
    kRestore = kFirstSteering,
    /// The next call that sends the driver message param1 to the test device does nothing (closing
    /// alone is done) and returns the code param2.
    kFailNext,
    /// Sets the Completion param1, with a delay of param2 ms when late.
    kComplete,
    /// Gives held messages back.
    kRelease,
    /// The next long message to the input is told as broken.
    kNextLongIsBroken,
    /// Stores in the std::uint32_t at param1 how often the driver was used wrongly: called from
    /// inside a callback, given headers that are unprepared, queued or of a wrong size, or closed
    /// with headers under way.
    kMisuseCount,
    /// Stores in the std::uint32_t at param1 how many buffers the test device's input has.
    kBufferCount,
    kLastSteering = kBufferCount
};

} // namespace wineloop
