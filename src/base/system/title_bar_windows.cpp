#include <windows.h>

#include "base/system/title_bar.h"

namespace tracksmith::system {
namespace {

// The attribute's number, and the one it had in early versions of Windows 10.
constexpr DWORD kDarkGround = 20;
constexpr DWORD kEarlyDarkGround = 19;

using SetAttribute = HRESULT(WINAPI*)(HWND, DWORD, const void*, DWORD);

SetAttribute FindSetAttribute() {
    const HMODULE library = LoadLibraryExW(L"dwmapi.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr) {
        return nullptr;
    }
    return reinterpret_cast<SetAttribute>(
        reinterpret_cast<void*>(GetProcAddress(library, "DwmSetWindowAttribute")));
}

} // namespace

void SetTitleBarDark(std::uintptr_t window, bool dark) noexcept {
    static const SetAttribute setAttribute = FindSetAttribute();
    const BOOL value = dark ? TRUE : FALSE;
    const HWND handle = reinterpret_cast<HWND>(window); // NOLINT(performance-no-int-to-ptr)
    if (setAttribute != nullptr &&
        FAILED(setAttribute(handle, kDarkGround, &value, sizeof value))) {
        setAttribute(handle, kEarlyDarkGround, &value, sizeof value);
    }
}

} // namespace tracksmith::system
