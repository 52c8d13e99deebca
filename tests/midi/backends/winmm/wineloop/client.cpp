#include "midi/backends/winmm/wineloop/client.h"

// Exported by the multimedia system for its drivers, declared in no header.
extern "C" BOOL WINAPI DriverCallback(DWORD_PTR callback, UINT flags, HDRVR device, UINT message,
                                      DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR param2);

namespace wineloop {
namespace {

thread_local bool insideCallback = false;

} // namespace

void Client::Connect(const MIDIOPENDESC& description, DWORD flags) {
    description_ = description;
    flags_ = flags;
    connected_ = true;
}

void Client::Notify(UINT message, DWORD_PTR param1, DWORD_PTR param2) const {
    insideCallback = true;
    DriverCallback(description_.dwCallback, HIWORD(flags_),
                   reinterpret_cast<HDRVR>(description_.hMidi), message, description_.dwInstance,
                   param1, param2);
    insideCallback = false;
}

bool Client::InsideCallback() {
    return insideCallback;
}

} // namespace wineloop
