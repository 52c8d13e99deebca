#include "midi/backends/winmm/driver.h"
#include "midi/backends/winmm/system_types.h"

namespace tracksmith::midi {
namespace {

HMIDIIN Input(DeviceHandle handle) {
    return reinterpret_cast<HMIDIIN>(handle);
}

} // namespace

std::uint32_t WinmmInputDriver::DeviceCount() {
    return midiInGetNumDevs();
}

ResultCode WinmmInputDriver::Capabilities(std::uint32_t device, DeviceCapabilities& capabilities) {
    MIDIINCAPSW caps = {};
    const ResultCode result = midiInGetDevCapsW(device, &caps, sizeof caps);
    if (result == kNoError) {
        capabilities = {.productName = Utf8(caps.szPname, std::size(caps.szPname)),
                        .driverVersion = caps.vDriverVersion,
                        .support = caps.dwSupport};
    }
    return result;
}

ResultCode WinmmInputDriver::Open(std::uint32_t device, DriverCallback callback, void* instance,
                                  DeviceHandle& handle) {
    HMIDIIN opened = nullptr;
    const ResultCode result = midiInOpen(&opened, device, SystemCallback(callback),
                                         reinterpret_cast<DWORD_PTR>(instance), CALLBACK_FUNCTION);
    handle = result == kNoError ? HandleNumber(opened) : DeviceHandle{0};
    return result;
}

ResultCode WinmmInputDriver::Close(DeviceHandle handle) {
    return midiInClose(Input(handle));
}

ResultCode WinmmInputDriver::Reset(DeviceHandle handle) {
    return midiInReset(Input(handle));
}

ResultCode WinmmInputDriver::PrepareHeader(DeviceHandle handle, MidiHeader& header) {
    return midiInPrepareHeader(Input(handle), SystemHeader(header), sizeof(MIDIHDR));
}

ResultCode WinmmInputDriver::AddBuffer(DeviceHandle handle, MidiHeader& header) {
    return midiInAddBuffer(Input(handle), SystemHeader(header), sizeof(MIDIHDR));
}

ResultCode WinmmInputDriver::UnprepareHeader(DeviceHandle handle, MidiHeader& header) {
    return midiInUnprepareHeader(Input(handle), SystemHeader(header), sizeof(MIDIHDR));
}

ResultCode WinmmInputDriver::Start(DeviceHandle handle) {
    return midiInStart(Input(handle));
}

ResultCode WinmmInputDriver::Stop(DeviceHandle handle) {
    return midiInStop(Input(handle));
}

std::string WinmmInputDriver::ErrorText(ResultCode code) {
    wchar_t text[kErrorTextLength] = {};
    const ResultCode result = midiInGetErrorTextW(code, text, kErrorTextLength);
    return result == kNoError ? Utf8(text, kErrorTextLength) : std::string();
}

} // namespace tracksmith::midi
