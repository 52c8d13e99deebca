#include <windows.h>

#include "base/system/virtual_memory.h"

namespace tracksmith::system {

void* ReserveAddressRange(std::size_t bytes) {
    return VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS);
}

void ReleaseAddressRange(void* range, std::size_t /*bytes*/) {
    VirtualFree(range, 0, MEM_RELEASE);
}

bool CommitMemory(void* address, std::size_t bytes) {
    return VirtualAlloc(address, bytes, MEM_COMMIT, PAGE_READWRITE) != nullptr;
}

void DecommitMemory(void* address, std::size_t bytes) {
    VirtualFree(address, bytes, MEM_DECOMMIT);
}

std::uint64_t PhysicalMemoryBytes() {
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof(status);
    return GlobalMemoryStatusEx(&status) != 0 ? status.ullTotalPhys : 1ULL << 30;
}

} // namespace tracksmith::system
