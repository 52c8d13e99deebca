#include "midi/backends/winmm/system_types.h"

#include <type_traits>

namespace tracksmith::midi {

static_assert(sizeof(MidiHeader) == 112 && sizeof(MIDIHDR) == sizeof(MidiHeader));
static_assert(offsetof(MidiHeader, data) == offsetof(MIDIHDR, lpData));
static_assert(offsetof(MidiHeader, bufferLength) == offsetof(MIDIHDR, dwBufferLength));
static_assert(offsetof(MidiHeader, bytesRecorded) == offsetof(MIDIHDR, dwBytesRecorded));
static_assert(offsetof(MidiHeader, user) == offsetof(MIDIHDR, dwUser));
static_assert(offsetof(MidiHeader, flags) == offsetof(MIDIHDR, dwFlags));
static_assert(offsetof(MidiHeader, next) == offsetof(MIDIHDR, lpNext));
static_assert(offsetof(MidiHeader, reserved) == offsetof(MIDIHDR, reserved));
static_assert(offsetof(MidiHeader, offset) == offsetof(MIDIHDR, dwOffset));
static_assert(offsetof(MidiHeader, reservedBlock) == offsetof(MIDIHDR, dwReserved));
static_assert(MidiHeader::kDone == MHDR_DONE && MidiHeader::kPrepared == MHDR_PREPARED &&
              MidiHeader::kInQueue == MHDR_INQUEUE);

static_assert(kNoError == MMSYSERR_NOERROR && kUnspecifiedError == MMSYSERR_ERROR &&
              kBadDeviceId == MMSYSERR_BADDEVICEID && kAllocated == MMSYSERR_ALLOCATED &&
              kInvalidHandle == MMSYSERR_INVALHANDLE && kNoDriver == MMSYSERR_NODRIVER &&
              kNoMemory == MMSYSERR_NOMEM && kNotSupported == MMSYSERR_NOTSUPPORTED &&
              kInvalidFlag == MMSYSERR_INVALFLAG && kInvalidParameter == MMSYSERR_INVALPARAM);
static_assert(kUnprepared == MIDIERR_UNPREPARED && kStillPlaying == MIDIERR_STILLPLAYING &&
              kNotReady == MIDIERR_NOTREADY && kNoDevice == MIDIERR_NODEVICE &&
              kBadOpenMode == MIDIERR_BADOPENMODE);
static_assert(kInputData == MM_MIM_DATA && kInputLongData == MM_MIM_LONGDATA &&
              kInputLongError == MM_MIM_LONGERROR && kOutputDone == MM_MOM_DONE);
static_assert(DeviceCapabilities::kVolume == MIDICAPS_VOLUME &&
              DeviceCapabilities::kStereoVolume == MIDICAPS_LRVOLUME &&
              DeviceCapabilities::kCache == MIDICAPS_CACHE &&
              DeviceCapabilities::kStream == MIDICAPS_STREAM);

// 64-bit Windows has one calling convention, so a callback may be handed over as it is as long as
// each of its parameters has the size of the system's: handle, number, instance and two words.
static_assert(sizeof(DeviceHandle) == sizeof(HMIDIOUT) && sizeof(DeviceHandle) == sizeof(HMIDIIN) &&
              sizeof(std::uint32_t) == sizeof(UINT) && sizeof(void*) == sizeof(DWORD_PTR) &&
              std::is_same_v<std::uintptr_t, DWORD_PTR>);

MIDIHDR* SystemHeader(MidiHeader& header) {
    return reinterpret_cast<MIDIHDR*>(&header);
}

DWORD_PTR SystemCallback(DriverCallback callback) {
    return reinterpret_cast<DWORD_PTR>(callback);
}

DeviceHandle HandleNumber(void* handle) {
    return reinterpret_cast<DeviceHandle>(handle);
}

std::string Utf8(const wchar_t* text, std::size_t capacity) {
    const int length = static_cast<int>(wcsnlen(text, capacity));
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, length, result.data(), bytes, nullptr, nullptr);
    return result;
}

} // namespace tracksmith::midi
