#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "app/settings/settings_store.h"
#include "instruments/voices/voice.h"

namespace tracksmith::instruments {

/// What a voice is remembered by.
struct VoiceKey {
    bool isKit = false;
    VoiceNumbers numbers;

    friend bool operator==(const VoiceKey&, const VoiceKey&) = default;
};

inline VoiceKey KeyOf(const Voice& voice) {
    return {voice.IsKit(), voice.Numbers()};
}

/// The user's favourite voices of one instrument and those that he used last, kept in the settings
/// of the instrument. Broken settings count as none. Reads once and writes with every change; not
/// for the playback thread.
class VoiceMemory {
public:
    static constexpr std::size_t kMostFavourites = 500;
    static constexpr std::size_t kMostLastUsed = 20;

    /// `store` must outlive the object.
    VoiceMemory(settings::SettingsStore& store, std::string instrumentName);

    /// In the order in which they were chosen.
    const std::vector<VoiceKey>& Favourites() const { return favourites_; }
    bool IsFavourite(const VoiceKey& key) const;
    /// Makes the voice a favourite or takes that back; returns false when it could not be stored or
    /// there are kMostFavourites already.
    bool ToggleFavourite(const VoiceKey& key);

    /// The last one first.
    const std::vector<VoiceKey>& LastUsed() const { return lastUsed_; }
    /// Returns false when it could not be stored.
    bool AddLastUsed(const VoiceKey& key);

private:
    settings::SettingsStore& store_;
    std::string instrument_;
    std::vector<VoiceKey> favourites_;
    std::vector<VoiceKey> lastUsed_;
};

} // namespace tracksmith::instruments
