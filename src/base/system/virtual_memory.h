#pragma once

#include <cstddef>
#include <cstdint>

namespace tracksmith::system {

/// Reserves `bytes` of address space without any memory behind it. Null when the system does not
/// grant that much.
void* ReserveAddressRange(std::size_t bytes);

/// Gives a range of ReserveAddressRange back.
void ReleaseAddressRange(void* range, std::size_t bytes);

/// Gives memory to a page-aligned piece of a reserved range; it reads as zero until written.
/// False when the system has none to give.
bool CommitMemory(void* address, std::size_t bytes);

/// Takes the memory away again; the address range stays reserved.
void DecommitMemory(void* address, std::size_t bytes);

/// Bytes of main memory in this machine; 1 GiB when the system does not tell.
std::uint64_t PhysicalMemoryBytes();

} // namespace tracksmith::system
