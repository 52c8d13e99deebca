#include "base/system/large_copy.h"

#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace tracksmith::system {

#ifdef __SSE2__

void CopyLarge(void* to, const void* from, std::size_t bytes) {
    constexpr std::size_t kStep = 64;
    auto* target = static_cast<std::byte*>(to);
    const auto* source = static_cast<const std::byte*>(from);
    // The streaming store needs an aligned target.
    const std::size_t misaligned = reinterpret_cast<std::uintptr_t>(target) % kStep;
    const std::size_t head = misaligned == 0 ? 0 : kStep - misaligned;
    if (bytes < head + kStep) {
        std::memcpy(to, from, bytes);
        return;
    }
    std::memcpy(target, source, head);
    std::size_t done = head;
    for (; bytes - done >= kStep; done += kStep) {
        _mm_prefetch(reinterpret_cast<const char*>(source + done) + 1024, _MM_HINT_T0);
        for (std::size_t i = 0; i < kStep; i += sizeof(__m128i)) {
            const __m128i piece =
                _mm_loadu_si128(reinterpret_cast<const __m128i*>(source + done + i));
            _mm_stream_si128(reinterpret_cast<__m128i*>(target + done + i), piece);
        }
    }
    _mm_sfence();
    std::memcpy(target + done, source + done, bytes - done);
}

#else

void CopyLarge(void* to, const void* from, std::size_t bytes) {
    std::memcpy(to, from, bytes);
}

#endif

} // namespace tracksmith::system
