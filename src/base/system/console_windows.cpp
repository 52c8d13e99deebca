#include <windows.h>
// Needs the types of windows.h.
#include <cstdio>

#include "base/system/console.h"

namespace tracksmith::system {
namespace {

bool GoesNowhere(DWORD stream) {
    return GetFileType(GetStdHandle(stream)) == FILE_TYPE_UNKNOWN;
}

} // namespace

// Output that goes to a file or a pipe stays there.
void JoinParentConsole() {
    const bool output = GoesNowhere(STD_OUTPUT_HANDLE);
    const bool error = GoesNowhere(STD_ERROR_HANDLE);
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) {
        return;
    }
    SetConsoleOutputCP(CP_UTF8);
    if (output && std::freopen("CONOUT$", "w", stdout) == nullptr) {
        return; // the console has gone again
    }
    if (error && std::freopen("CONOUT$", "w", stderr) == nullptr) {
        return;
    }
}

} // namespace tracksmith::system
