#include "instruments/picker/voice_memory.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>

namespace tracksmith::instruments {
namespace {

constexpr std::string_view kFavourites = "FavouriteVoices";
constexpr std::string_view kLastUsed = "LastUsedVoices";
constexpr char kKitMark = 'k';

// "8.34.0 k127.0.25": bank MSB, LSB and program as they are sent, a kit with a mark.
std::string TextOf(const std::vector<VoiceKey>& keys) {
    std::string text;
    for (const VoiceKey& key : keys) {
        text.append(text.empty() ? "" : " ").append(key.isKit ? 1 : 0, kKitMark);
        text += std::to_string(key.numbers.msb) + '.' + std::to_string(key.numbers.lsb) + '.' +
                std::to_string(key.numbers.program);
    }
    return text;
}

std::optional<VoiceKey> KeyOfText(std::string_view text) {
    VoiceKey key;
    if (text.starts_with(kKitMark)) {
        key.isKit = true;
        text.remove_prefix(1);
    }
    std::array<std::uint8_t, 3> numbers{};
    for (std::uint8_t& number : numbers) {
        const std::string_view part = text.substr(0, text.find('.'));
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), number);
        if (error != std::errc() || end != part.data() + part.size() || number > 127) {
            return std::nullopt;
        }
        text.remove_prefix(std::min(part.size() + 1, text.size()));
    }
    key.numbers = {numbers[0], numbers[1], numbers[2]};
    return text.empty() ? std::optional(key) : std::nullopt;
}

// Each once; what is not a voice is passed over.
std::vector<VoiceKey> KeysOfText(std::string_view text, std::size_t most) {
    std::vector<VoiceKey> keys;
    while (!text.empty() && keys.size() < most) {
        const std::string_view part = text.substr(0, text.find(' '));
        const auto key = KeyOfText(part);
        if (key && std::ranges::find(keys, *key) == keys.end()) {
            keys.push_back(*key);
        }
        text.remove_prefix(std::min(part.size() + 1, text.size()));
    }
    return keys;
}

} // namespace

VoiceMemory::VoiceMemory(settings::SettingsStore& store, std::string instrumentName)
    : store_(store),
      instrument_(std::move(instrumentName)),
      favourites_(KeysOfText(store_.ReadStrFromUserRegistrySubdir(instrument_, kFavourites, ""),
                             kMostFavourites)),
      lastUsed_(KeysOfText(store_.ReadStrFromUserRegistrySubdir(instrument_, kLastUsed, ""),
                           kMostLastUsed)) {}

bool VoiceMemory::IsFavourite(const VoiceKey& key) const {
    return std::ranges::find(favourites_, key) != favourites_.end();
}

bool VoiceMemory::ToggleFavourite(const VoiceKey& key) {
    if (std::erase(favourites_, key) == 0) {
        if (favourites_.size() == kMostFavourites) {
            return false;
        }
        favourites_.push_back(key);
    }
    return store_.WriteStrToUserRegistrySubdir(instrument_, kFavourites, TextOf(favourites_));
}

bool VoiceMemory::AddLastUsed(const VoiceKey& key) {
    std::erase(lastUsed_, key);
    lastUsed_.insert(lastUsed_.begin(), key);
    lastUsed_.resize(std::min(lastUsed_.size(), kMostLastUsed));
    return store_.WriteStrToUserRegistrySubdir(instrument_, kLastUsed, TextOf(lastUsed_));
}

} // namespace tracksmith::instruments
