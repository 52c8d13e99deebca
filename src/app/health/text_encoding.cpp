#include "app/health/text_encoding.h"

#include <algorithm>

#include "base/display_text.h"

namespace tracksmith::health {
namespace {

bool IsHigh(char sign) {
    return (static_cast<unsigned char>(sign) & 0x80U) != 0;
}

// Quotation marks, dashes, ellipsis, the euro and the letters S and Z with caron, OE and Y with
// diaeresis of Windows-1252; the rest of 80 to 9F is letters in other encodings.
bool IsUsualIn1252(char sign) {
    constexpr std::string_view kUsual =
        "\x80\x82\x84\x85\x8A\x8C\x8E\x91\x92\x93\x94\x95\x96\x97\x99\x9A\x9C\x9E\x9F";
    return (static_cast<unsigned char>(sign) & 0xE0U) != 0x80U ||
           kUsual.find(sign) != std::string_view::npos;
}

} // namespace

bool IsUnclearText(std::string_view bytes) {
    const auto high = std::ranges::count_if(bytes, IsHigh);
    if (high == 0 || IsUtf8(bytes)) {
        return false;
    }
    const auto plain = std::ranges::count_if(bytes, [](char sign) {
        return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z');
    });
    constexpr std::ptrdiff_t kFewHigh = 2; // a syllable may be one umlaut
    return !std::ranges::all_of(bytes, IsUsualIn1252) || (high > kFewHigh && high > plain);
}

} // namespace tracksmith::health
