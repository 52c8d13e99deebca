#include <atomic>
#include <windows.h>

#include "base/system/interrupt.h"

namespace tracksmith::system {
namespace {

// As long as Windows waits for a program whose window is closed (milliseconds).
constexpr DWORD kClosingTime = 5000;

std::atomic<bool> requested = false;
std::atomic<HANDLE> event = nullptr;

bool NoteRequest() noexcept {
    const bool before = requested.exchange(true);
    if (event != nullptr) {
        SetEvent(event);
    }
    return before;
}

BOOL WINAPI OnControl(DWORD kind) {
    const bool again = NoteRequest();
    if (kind == CTRL_C_EVENT || kind == CTRL_BREAK_EVENT) {
        return again ? FALSE : TRUE;
    }
    // The program is ended as soon as this returns.
    Sleep(kClosingTime);
    return FALSE;
}

} // namespace

InterruptWatch::InterruptWatch() {
    requested = false;
    event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    SetConsoleCtrlHandler(&OnControl, TRUE);
}

InterruptWatch::~InterruptWatch() {
    SetConsoleCtrlHandler(&OnControl, FALSE);
    CloseHandle(event.exchange(nullptr));
}

bool InterruptWatch::Requested() noexcept {
    return requested;
}

void InterruptWatch::Request() noexcept {
    NoteRequest();
}

int InterruptWatch::Descriptor() noexcept {
    return -1;
}

void* InterruptWatch::Event() noexcept {
    return event;
}

} // namespace tracksmith::system
