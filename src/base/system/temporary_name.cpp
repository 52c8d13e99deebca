#include "base/system/temporary_name.h"

#include <cstdint>
#include <random>

namespace tracksmith::system {
namespace {

constexpr std::string_view kBegin = ".tracksmith-";
constexpr std::string_view kEnd = ".tmp";

} // namespace

std::string RandomTemporaryName() {
    constexpr std::string_view kDigits = "0123456789abcdefghijklmnopqrstuv";
    constexpr int kCharacters = 12;
    constexpr int kBitsPerCharacter = 5;
    std::random_device random;
    std::uint64_t bits = (std::uint64_t{random()} << 32) | random();
    std::string name(kBegin);
    for (int i = 0; i < kCharacters; ++i) {
        name += kDigits[bits % kDigits.size()];
        bits >>= kBitsPerCharacter;
    }
    return name.append(kEnd);
}

bool IsTemporaryName(std::string_view name) {
    return name.size() > kBegin.size() + kEnd.size() && name.starts_with(kBegin) &&
           name.ends_with(kEnd);
}

} // namespace tracksmith::system
