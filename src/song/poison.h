#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#define TRACKSMITH_POISONING 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TRACKSMITH_POISONING 1
#endif
#endif

// The sanitizer's own entry points, declared here because its header is no standard one.
#ifdef TRACKSMITH_POISONING
extern "C" void __asan_poison_memory_region(void const volatile* address, std::size_t bytes);
extern "C" void __asan_unpoison_memory_region(void const volatile* address, std::size_t bytes);
#endif

namespace tracksmith::song {

/// Makes memory unreadable where AddressSanitizer is built in, so that it finds a use after free in
/// memory that is reused and never given back; nothing elsewhere.
inline void Poison([[maybe_unused]] const void* address, [[maybe_unused]] std::size_t bytes) {
#ifdef TRACKSMITH_POISONING
    __asan_poison_memory_region(address, bytes);
#endif
}

/// Makes memory readable again.
inline void Unpoison([[maybe_unused]] const void* address, [[maybe_unused]] std::size_t bytes) {
#ifdef TRACKSMITH_POISONING
    __asan_unpoison_memory_region(address, bytes);
#endif
}

} // namespace tracksmith::song
