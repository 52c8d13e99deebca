// A MIDI driver for Wine that loops its outputs back to its inputs. Wine loads it in place of a
// sound driver and asks it for sound devices, of which it has none, and for MIDI devices.

#include <algorithm>
#include <array>
#include <iterator>

#include "midi/backends/winmm/wineloop/loop_output.h"

namespace wineloop {
namespace {

struct Driver {
    std::mutex lock;
    Faults faults;
    Schedule schedule{lock};
    std::array<LoopInput, kDevices> inputs{LoopInput(faults), LoopInput(faults)};
    std::array<LoopOutput, kDevices> outputs{LoopOutput(faults, inputs[0], schedule),
                                             LoopOutput(faults, inputs[1], schedule)};
};

// Never destroyed, because its thread uses it to the end of the program.
Driver& TheDriver() {
    static auto* driver = new Driver;
    return *driver;
}

template <std::size_t kCapacity>
void SetName(wchar_t (&name)[kCapacity], UINT device) {
    const std::wstring_view text = device == kTestDevice ? kTestName : kSteeringName;
    std::ranges::copy(text, std::begin(name));
}

// The steering device alone is a synthesizer with volume control; the other is a plain port.
DWORD OutputCapabilities(UINT device, DWORD_PTR destination, DWORD_PTR size) {
    MIDIOUTCAPSW caps = {};
    const bool synthesizer = device == kSteeringDevice;
    SetName(caps.szPname, device);
    caps.vDriverVersion = kDriverVersion;
    caps.wTechnology = synthesizer ? MOD_SWSYNTH : MOD_MIDIPORT;
    caps.wVoices = synthesizer ? 64 : 0;
    caps.wNotes = synthesizer ? 48 : 0;
    caps.wChannelMask = synthesizer ? 0x0FFF : 0xFFFF;
    caps.dwSupport = synthesizer ? MIDICAPS_VOLUME | MIDICAPS_LRVOLUME : 0;
    std::copy_n(reinterpret_cast<const char*>(&caps), std::min(size, sizeof caps),
                reinterpret_cast<char*>(destination));
    return MMSYSERR_NOERROR;
}

DWORD InputCapabilities(UINT device, DWORD_PTR destination, DWORD_PTR size) {
    MIDIINCAPSW caps = {};
    SetName(caps.szPname, device);
    caps.vDriverVersion = kDriverVersion;
    std::copy_n(reinterpret_cast<const char*>(&caps), std::min(size, sizeof caps),
                reinterpret_cast<char*>(destination));
    return MMSYSERR_NOERROR;
}

DWORD Steer(Driver& driver, UINT message, DWORD_PTR param1, DWORD_PTR param2) {
    Faults& faults = driver.faults;
    switch (message) {
        case kRestore:
            faults.Restore();
            break;
        case kFailNext:
            faults.codes[static_cast<UINT>(param1)] = static_cast<DWORD>(param2);
            break;
        case kComplete:
            faults.completion = static_cast<Completion>(param1);
            faults.delay = std::chrono::milliseconds(param2);
            break;
        case kRelease:
            driver.schedule.Add({}, [&driver] { driver.outputs[kTestDevice].Release(); });
            break;
        case kNextLongIsBroken:
            faults.nextLongIsBroken = true;
            break;
        case kMisuseCount:
            *reinterpret_cast<std::uint32_t*>(param1) = faults.misuse;
            break;
        default:
            *reinterpret_cast<std::uint32_t*>(param1) =
                static_cast<std::uint32_t>(driver.inputs[kTestDevice].BufferCount());
    }
    return MMSYSERR_NOERROR;
}

// The common part of both entry points.
template <typename Device>
DWORD Dispatch(Driver& driver, std::array<Device, kDevices>& devices, UINT device, UINT message,
               DWORD_PTR param1, DWORD_PTR param2) {
    if (Client::InsideCallback()) {
        return driver.faults.Misuse(MMSYSERR_ERROR);
    }
    const std::lock_guard hold(driver.lock);
    if (message >= kFirstSteering && message <= kLastSteering) {
        return Steer(driver, message, param1, param2);
    }
    const std::optional<DWORD> code =
        device == kTestDevice ? driver.faults.TakeCode(message) : std::nullopt;
    // The system frees the handle after a failed closing too.
    if (!code || message == MODM_CLOSE || message == MIDM_CLOSE) {
        const DWORD result = devices[device].Handle(message, param1, param2);
        return code.value_or(result);
    }
    return *code;
}

} // namespace
} // namespace wineloop

#define WINELOOP_EXPORT extern "C" __declspec(dllexport)

WINELOOP_EXPORT DWORD WINAPI modMessage(UINT device, UINT message, DWORD_PTR /*user*/,
                                        DWORD_PTR param1, DWORD_PTR param2) {
    using namespace wineloop;
    switch (message) {
        case DRVM_INIT:
        case DRVM_EXIT:
        case DRVM_ENABLE:
        case DRVM_DISABLE:
            return MMSYSERR_NOERROR;
        case MODM_GETNUMDEVS:
            return kDevices;
        case MODM_GETDEVCAPS:
            return OutputCapabilities(device, param1, param2);
        default:
            return Dispatch(TheDriver(), TheDriver().outputs, device, message, param1, param2);
    }
}

WINELOOP_EXPORT DWORD WINAPI midMessage(UINT device, UINT message, DWORD_PTR /*user*/,
                                        DWORD_PTR param1, DWORD_PTR param2) {
    using namespace wineloop;
    switch (message) {
        case DRVM_INIT:
        case DRVM_EXIT:
        case DRVM_ENABLE:
        case DRVM_DISABLE:
            return MMSYSERR_NOERROR;
        case MIDM_GETNUMDEVS:
            return kDevices;
        case MIDM_GETDEVCAPS:
            return InputCapabilities(device, param1, param2);
        default:
            return Dispatch(TheDriver(), TheDriver().inputs, device, message, param1, param2);
    }
}

WINELOOP_EXPORT LRESULT WINAPI DriverProc(DWORD_PTR /*id*/, HDRVR /*driver*/, UINT /*message*/,
                                          LPARAM /*param1*/, LPARAM /*param2*/) {
    return 1;
}

// The side that Wine asks for sound devices.
WINELOOP_EXPORT int WINAPI GetPriority() {
    return 3;
}

WINELOOP_EXPORT HRESULT WINAPI GetEndpointIDs(int /*flow*/, void** ids, void** guids, UINT* count,
                                              UINT* defaultIndex) {
    *ids = nullptr;
    *guids = nullptr;
    *count = 0;
    *defaultIndex = 0;
    return S_OK;
}

WINELOOP_EXPORT HRESULT WINAPI GetAudioEndpoint(void* /*guid*/, void* /*device*/, void** /*out*/) {
    return E_NOTIMPL;
}

WINELOOP_EXPORT HRESULT WINAPI GetAudioSessionManager(void* /*device*/, void** /*out*/) {
    return E_NOTIMPL;
}
