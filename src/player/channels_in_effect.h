#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "player/routing.h"
#include "song/channel_state.h"

namespace tracksmith::player {

/// What is in effect on each source channel at the play position. The playback thread keeps it up
/// to date while it plays, the owner's thread while no pass runs; any thread may read. Allocates
/// nothing.
class ChannelsInEffect {
public:
    /// A value in effect.
    struct Effect {
        /// As it was when its event passed; song::kUnset where nothing has set it.
        std::uint16_t value = song::kUnset;
        /// The event that has set it, whose data bytes may be changed by song::WriteShared; null
        /// where nothing or Reset All Controllers has.
        song::EventLink event;
    };

    ChannelsInEffect();

    /// Controllers 0 to 119.
    Effect Controller(std::size_t channel, std::size_t controller) const {
        return Read(channel, controller);
    }
    Effect Program(std::size_t channel) const { return Read(channel, kProgram); }
    /// The bank that was selected when the program in effect was.
    Effect ProgramBankMsb(std::size_t channel) const { return Read(channel, kProgramBankMsb); }
    Effect ProgramBankLsb(std::size_t channel) const { return Read(channel, kProgramBankLsb); }
    Effect Bend(std::size_t channel) const { return Read(channel, kBend); }
    Effect Pressure(std::size_t channel) const { return Read(channel, kPressure); }

    /// A channel message has passed.
    void Take(song::ConstEventLink event) noexcept;
    /// The position has moved.
    void Set(std::size_t channel, const song::ChannelControls& controls) noexcept;

private:
    // Places behind those of the controllers.
    static constexpr std::size_t kProgram = song::kControllers;
    static constexpr std::size_t kProgramBankMsb = kProgram + 1;
    static constexpr std::size_t kProgramBankLsb = kProgram + 2;
    static constexpr std::size_t kBend = kProgram + 3;
    static constexpr std::size_t kPressure = kProgram + 4;
    static constexpr std::size_t kPlaces = kProgram + 5;

    Effect Read(std::size_t channel, std::size_t place) const;
    void Publish(std::size_t channel, std::size_t place, const song::Setting& setting) noexcept;
    void PublishAll(std::size_t channel) noexcept;

    std::array<song::ChannelControls, kChannels> controls_;
    // For readers: the value in the upper half, the event in the lower.
    std::array<std::array<std::atomic<std::uint64_t>, kPlaces>, kChannels> published_{};
};

} // namespace tracksmith::player
