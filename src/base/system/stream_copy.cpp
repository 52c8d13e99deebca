#include "base/system/stream_copy.h"

#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace tracksmith::system {

#ifdef __SSE2__
namespace {

constexpr std::size_t kLine = 64;
constexpr std::size_t kPage = 4'096;
constexpr std::size_t kStreams = 4;

// Past the caches, since so much will not be read again soon: an ordinary store would first read
// what it overwrites.
void StreamLine(std::byte* to, const std::byte* from) {
    for (std::size_t i = 0; i < kLine; i += sizeof(__m128i)) {
        const __m128i word = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
        _mm_stream_si128(reinterpret_cast<__m128i*>(to + i), word);
    }
}

} // namespace

// Several pages side by side, a line of each in turn: the processor fetches each of them ahead, and
// more of the memory's width is used than by one row of lines.
void CopyPastCaches(void* target, const void* source, std::size_t bytes) {
    auto* to = static_cast<std::byte*>(target);
    const auto* from = static_cast<const std::byte*>(source);
    constexpr std::size_t kBlock = kStreams * kPage;
    const bool aligned = reinterpret_cast<std::uintptr_t>(to) % alignof(__m128i) == 0;
    const std::size_t streamed = aligned ? bytes / kBlock * kBlock : 0;
    for (std::size_t block = 0; block < streamed; block += kBlock) {
        for (std::size_t line = block; line < block + kPage; line += kLine) {
            for (std::size_t place = line; place < block + kBlock; place += kPage) {
                StreamLine(to + place, from + place);
            }
        }
    }
    _mm_sfence();
    std::memcpy(to + streamed, from + streamed, bytes - streamed);
}
#else
void CopyPastCaches(void* to, const void* from, std::size_t bytes) {
    std::memcpy(to, from, bytes);
}
#endif

} // namespace tracksmith::system
