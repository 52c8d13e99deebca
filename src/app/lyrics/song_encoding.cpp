#include "app/lyrics/song_encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "base/code_pages.h"

namespace tracksmith::lyrics {
namespace {

using Counts = std::array<std::int64_t, 128>;

// The first 32 places are Windows-1252's punctuation, the rest Latin-1: letters from 0xC0 on.
bool IsWesternLetter(std::uint32_t code) {
    constexpr std::array<std::uint32_t, 3> kMarks{0x2019, 0x201C, 0x201E}; // quotation marks
    return (code >= 0xC0 && code <= 0xFF && code != 0xD7 && code != 0xF7) ||
           std::ranges::find(kMarks, code) != kMarks.end();
}

// Capitals and rare letters count less: wrong readings are full of them.
std::int64_t WeightOf(std::uint32_t code) {
    constexpr std::u32string_view kUsual = U"äöüßéèêàâçñáíóúìòùåæøëïôîû";
    if (kUsual.find(static_cast<char32_t>(code)) != std::u32string_view::npos) {
        return 3;
    }
    return IsWesternLetter(code) ? 1 : -2;
}

std::uint32_t Latin1(std::size_t place) {
    // Of the lower 32 only the quotation marks matter here.
    constexpr std::size_t kApostrophe = 0x12;
    constexpr std::size_t kOpening = 0x04;
    constexpr std::size_t kClosing = 0x13;
    switch (place) {
        case kApostrophe:
            return 0x2019;
        case kOpening:
            return 0x201E;
        case kClosing:
            return 0x201C;
        default:
            return static_cast<std::uint32_t>(place + 0x80);
    }
}

template <typename Page>
std::int64_t Score(const Counts& counts, Page&& page) {
    std::int64_t score = 0;
    for (std::size_t place = 0; place < counts.size(); ++place) {
        score += counts.at(place) == 0 ? 0 : counts.at(place) * WeightOf(page(place));
    }
    return score;
}

} // namespace

TextEncoding LikelyEncoding(std::span<const std::string_view> texts) {
    if (std::ranges::all_of(texts, IsUtf8)) {
        return TextEncoding::Utf8;
    }
    Counts counts{};
    for (const std::string_view text : texts) {
        for (const char sign : text) {
            const auto byte = static_cast<std::uint8_t>(sign);
            if (byte >= 0x80) {
                ++counts.at(byte - 0x80U);
            }
        }
    }
    const std::int64_t windows = Score(counts, Latin1);
    const std::int64_t dos = Score(counts, [](std::size_t place) { return kDos850.at(place); });
    const std::int64_t mac = Score(counts, [](std::size_t place) { return kMacRoman.at(place); });
    if (windows >= std::max(dos, mac)) {
        return TextEncoding::Windows1252;
    }
    return dos >= mac ? TextEncoding::Dos850 : TextEncoding::MacRoman;
}

} // namespace tracksmith::lyrics
