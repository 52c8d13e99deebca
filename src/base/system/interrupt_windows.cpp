#include <atomic>
#include <windows.h>

#include "base/system/interrupt.h"

namespace tracksmith::system {
namespace {

// As long as Windows waits for a program whose window is closed (milliseconds).
constexpr DWORD kClosingTime = 5000;

std::atomic<bool> requested = false;

BOOL WINAPI OnControl(DWORD event) {
    const bool again = requested.exchange(true);
    if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT) {
        return again ? FALSE : TRUE;
    }
    // The program is ended as soon as this returns.
    Sleep(kClosingTime);
    return FALSE;
}

} // namespace

InterruptWatch::InterruptWatch() {
    requested = false;
    SetConsoleCtrlHandler(&OnControl, TRUE);
}

InterruptWatch::~InterruptWatch() {
    SetConsoleCtrlHandler(&OnControl, FALSE);
}

bool InterruptWatch::Requested() noexcept {
    return requested;
}

void InterruptWatch::Request() noexcept {
    requested = true;
}

int InterruptWatch::Descriptor() noexcept {
    return -1;
}

} // namespace tracksmith::system
