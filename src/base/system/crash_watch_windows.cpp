#include <array>
#include <cwchar>
#include <exception>
#include <string>
#include <windows.h>
// Needs the types of windows.h.
#include <dbghelp.h>

#include "base/system/crash_watch.h"

namespace tracksmith::system {
namespace {

// For an end that the language asks for, such as an exception that nobody takes.
constexpr DWORD kTerminated = 0xE0545301;
// What is left for the record where the stack has overflowed.
constexpr ULONG kSpareStack = 64 * 1024;
constexpr DWORD kLongestWriting = 100'000;
constexpr std::size_t kMostPath = 1024;

using WriteDump = decltype(&MiniDumpWriteDump);

// Everything is found before, since little works in a program that has failed.
struct Readiness {
    WriteDump writeDump = nullptr;
    std::wstring folder;
    std::array<wchar_t, kMostPath> file{};
    LPTOP_LEVEL_EXCEPTION_FILTER formerFilter = nullptr;
    std::terminate_handler formerTerminate = nullptr;
};

Readiness& Ready() {
    static Readiness readiness;
    return readiness;
}

struct Fault {
    EXCEPTION_POINTERS* pointers;
    DWORD thread;
};

void NameFile(Readiness& ready) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    std::swprintf(ready.file.data(), ready.file.size(), L"%ls\\crash-%04u%02u%02u-%02u%02u%02u.dmp",
                  ready.folder.c_str(), now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute,
                  now.wSecond);
}

// On a thread of its own, which has a whole stack.
DWORD WINAPI WriteRecord(void* parameter) {
    const auto& fault = *static_cast<const Fault*>(parameter);
    Readiness& ready = Ready();
    NameFile(ready);
    CreateDirectoryW(ready.folder.substr(0, ready.folder.find_last_of(L"\\/")).c_str(), nullptr);
    CreateDirectoryW(ready.folder.c_str(), nullptr);
    HANDLE file = CreateFileW(ready.file.data(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return 1;
    }
    MINIDUMP_EXCEPTION_INFORMATION about{};
    about.ThreadId = fault.thread;
    about.ExceptionPointers = fault.pointers;
    const auto kind =
        static_cast<MINIDUMP_TYPE>(MiniDumpWithThreadInfo | MiniDumpWithIndirectlyReferencedMemory);
    ready.writeDump(GetCurrentProcess(), GetCurrentProcessId(), file, kind, &about, nullptr,
                    nullptr);
    CloseHandle(file);
    return 0;
}

LONG WINAPI OnFault(EXCEPTION_POINTERS* pointers) {
    static volatile LONG begun = 0;
    if (InterlockedExchange(&begun, 1) == 0) {
        Fault fault{pointers, GetCurrentThreadId()};
        HANDLE writer = CreateThread(nullptr, 0, &WriteRecord, &fault, 0, nullptr);
        if (writer != nullptr) {
            WaitForSingleObject(writer, kLongestWriting);
        }
    }
    return EXCEPTION_EXECUTE_HANDLER;
}

[[noreturn]] void OnTerminate() {
    RaiseException(kTerminated, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    TerminateProcess(GetCurrentProcess(), kTerminated);
    for (;;) {
    }
}

} // namespace

CrashWatch::CrashWatch(const std::filesystem::path& folder) {
    Readiness& ready = Ready();
    const HMODULE library = LoadLibraryExW(L"dbghelp.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr || folder.empty()) {
        return;
    }
    ready.writeDump = reinterpret_cast<WriteDump>(
        reinterpret_cast<void*>(GetProcAddress(library, "MiniDumpWriteDump")));
    if (ready.writeDump == nullptr) {
        return;
    }
    ready.folder = folder.native();
    ULONG spare = kSpareStack;
    SetThreadStackGuarantee(&spare);
    ready.formerFilter = SetUnhandledExceptionFilter(&OnFault);
    ready.formerTerminate = std::set_terminate(&OnTerminate);
}

CrashWatch::~CrashWatch() {
    Readiness& ready = Ready();
    if (ready.writeDump != nullptr) {
        SetUnhandledExceptionFilter(ready.formerFilter);
        std::set_terminate(ready.formerTerminate);
        ready.writeDump = nullptr;
    }
}

} // namespace tracksmith::system
