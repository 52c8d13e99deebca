#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "app/settings/settings_store.h"
#include "player/player.h"

namespace tracksmith::session {

/// Where the song is played to: one output for all channels, and for each channel, where wanted,
/// another output and target channel. Remembered in the settings by product name, so that it holds
/// when devices come and go. Owner's thread of the player.
class OutputChoice {
public:
    /// Both must outlive the object.
    OutputChoice(player::TMidiPlayer& player, settings::SettingsStore& store)
        : player_(player), store_(store) {}

    /// Routes every channel as the settings say. An output that is not there is replaced by the
    /// built-in instrument, or by the first that is there. To be called at the start, and whenever
    /// ports have come or gone.
    void Apply();

    /// The stored name of the output that should play but is not there; empty when all are there.
    const std::string& MissingOutput() const { return missing_; }

    /// Product name of the output for all channels that is in force; empty without any device.
    std::string Output() const;
    /// Chooses it and remembers it.
    void ChooseOutput(const std::string& productName);

    /// Where one channel (0-15) goes.
    struct ChannelRoute {
        /// Empty for the output for all channels.
        std::string output;
        std::uint8_t target = 0;
    };
    ChannelRoute Route(std::size_t channel) const;
    /// Sets and remembers it.
    void SetRoute(std::size_t channel, const ChannelRoute& route);
    /// Sends every channel to the output for all, under its own number.
    void ResetRoutes();

private:
    std::optional<std::size_t> Find(const std::string& productName) const;
    std::size_t Default() const;
    std::size_t FindOrDefault(const std::string& productName);

    player::TMidiPlayer& player_;
    settings::SettingsStore& store_;
    std::string missing_;
};

} // namespace tracksmith::session
