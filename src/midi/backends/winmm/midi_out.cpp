#include <algorithm>
#include <array>

#include "midi/backends/winmm/driver.h"
#include "midi/backends/winmm/system_types.h"

namespace tracksmith::midi {
namespace {

HMIDIOUT Output(DeviceHandle handle) {
    return reinterpret_cast<HMIDIOUT>(handle);
}

// Some functions take a device number in place of a handle.
HMIDIOUT OutputNumber(std::uint32_t device) {
    return reinterpret_cast<HMIDIOUT>(std::uintptr_t{device});
}

std::uint16_t KnownTechnology(WORD technology) {
    if (technology == MOD_WAVETABLE || technology == MOD_SWSYNTH) {
        return MOD_SYNTH;
    }
    return technology <= MOD_MAPPER ? technology : std::uint16_t{0};
}

// The system wants arrays that it may write to.
std::array<WORD, 128> Copy(std::span<const std::uint16_t, 128> entries) {
    std::array<WORD, 128> copy;
    std::ranges::copy(entries, copy.begin());
    return copy;
}

} // namespace

std::uint32_t WinmmOutputDriver::DeviceCount() {
    return midiOutGetNumDevs();
}

ResultCode WinmmOutputDriver::Capabilities(std::uint32_t device, DeviceCapabilities& capabilities) {
    MIDIOUTCAPSW caps = {};
    const ResultCode result = midiOutGetDevCapsW(device, &caps, sizeof caps);
    if (result == kNoError) {
        capabilities = {.productName = Utf8(caps.szPname, std::size(caps.szPname)),
                        .driverVersion = caps.vDriverVersion,
                        .technology = KnownTechnology(caps.wTechnology),
                        .voices = caps.wVoices,
                        .notes = caps.wNotes,
                        .channelMask = caps.wChannelMask,
                        .support = caps.dwSupport};
    }
    return result;
}

ResultCode WinmmOutputDriver::Open(std::uint32_t device, DriverCallback callback, void* instance,
                                   DeviceHandle& handle) {
    HMIDIOUT opened = nullptr;
    const ResultCode result = midiOutOpen(&opened, device, SystemCallback(callback),
                                          reinterpret_cast<DWORD_PTR>(instance), CALLBACK_FUNCTION);
    handle = result == kNoError ? HandleNumber(opened) : DeviceHandle{0};
    return result;
}

ResultCode WinmmOutputDriver::Close(DeviceHandle handle) {
    return midiOutClose(Output(handle));
}

ResultCode WinmmOutputDriver::Reset(DeviceHandle handle) {
    return midiOutReset(Output(handle));
}

ResultCode WinmmOutputDriver::ShortMessage(DeviceHandle handle, std::uint32_t packed) {
    return midiOutShortMsg(Output(handle), packed);
}

ResultCode WinmmOutputDriver::PrepareHeader(DeviceHandle handle, MidiHeader& header) {
    return midiOutPrepareHeader(Output(handle), SystemHeader(header), sizeof(MIDIHDR));
}

ResultCode WinmmOutputDriver::LongMessage(DeviceHandle handle, MidiHeader& header) {
    return midiOutLongMsg(Output(handle), SystemHeader(header), sizeof(MIDIHDR));
}

ResultCode WinmmOutputDriver::UnprepareHeader(DeviceHandle handle, MidiHeader& header) {
    return midiOutUnprepareHeader(Output(handle), SystemHeader(header), sizeof(MIDIHDR));
}

ResultCode WinmmOutputDriver::GetVolume(std::uint32_t device, std::uint32_t& volume) {
    DWORD word = 0;
    const ResultCode result = midiOutGetVolume(OutputNumber(device), &word);
    if (result == kNoError) {
        volume = word;
    }
    return result;
}

ResultCode WinmmOutputDriver::SetVolume(std::uint32_t device, std::uint32_t volume) {
    return midiOutSetVolume(OutputNumber(device), volume);
}

ResultCode WinmmOutputDriver::CachePatches(DeviceHandle handle, std::uint32_t bank,
                                           std::span<const std::uint16_t, 128> patches,
                                           std::uint32_t operation) {
    return midiOutCachePatches(Output(handle), bank, Copy(patches).data(), operation);
}

ResultCode WinmmOutputDriver::CacheDrumPatches(DeviceHandle handle, std::uint32_t patch,
                                               std::span<const std::uint16_t, 128> keys,
                                               std::uint32_t operation) {
    return midiOutCacheDrumPatches(Output(handle), patch, Copy(keys).data(), operation);
}

ResultCode WinmmOutputDriver::Message(DeviceHandle handle, std::uint32_t message,
                                      std::uintptr_t param1, std::uintptr_t param2) {
    return midiOutMessage(Output(handle), message, param1, param2);
}

std::string WinmmOutputDriver::ErrorText(ResultCode code) {
    wchar_t text[kErrorTextLength] = {};
    const ResultCode result = midiOutGetErrorTextW(code, text, kErrorTextLength);
    return result == kNoError ? Utf8(text, kErrorTextLength) : std::string();
}

} // namespace tracksmith::midi
