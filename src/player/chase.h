#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "player/controllers_in_effect.h"
#include "player/routing.h"
#include "song/song.h"

namespace tracksmith::player {

/// A value that is not known.
inline constexpr std::uint8_t kUnknown = 0xFF;

/// A registered or non-registered parameter (MIDI 1.0) and the value that was entered for it.
struct ParameterValue {
    bool registered = true;
    std::uint8_t msb = kUnknown;
    std::uint8_t lsb = kUnknown;
    std::uint8_t dataMsb = kUnknown;
    std::uint8_t dataLsb = kUnknown;

    bool SameParameter(const ParameterValue& other) const {
        return registered == other.registered && msb == other.msb && lsb == other.lsb;
    }
};

/// Bank select: both numbers, kUnknown where nothing was sent.
struct BankSelect {
    std::uint8_t msb = kUnknown;
    std::uint8_t lsb = kUnknown;
    friend bool operator==(const BankSelect&, const BankSelect&) = default;
};

/// What the events before a place have set on one channel.
struct ChannelChase {
    ChannelChase() {
        values.fill(kUnknown);
        events.fill({});
    }

    /// The last bank select, and the one that was in force at the last program change.
    BankSelect bank;
    BankSelect programBank;
    std::uint8_t program = kUnknown;
    /// Controller values, without bank select, parameters and mode messages.
    std::array<std::uint8_t, 128> values{};
    /// The last event of every controller.
    std::array<song::ConstEventLink, 128> events;
    /// Parameters in the order in which they were last entered.
    std::vector<ParameterValue> parameters;
    /// The parameter that data entry goes to.
    ParameterValue selected;
    std::uint8_t bendLow = kUnknown;
    std::uint8_t bendHigh = kUnknown;
    std::uint8_t pressure = kUnknown;

    /// Takes a channel message that is not a note.
    void Remember(song::ConstEventLink event);

private:
    void RememberController(std::uint8_t controller, std::uint8_t value);
    void EnterData(std::uint8_t controller, std::uint8_t value);
    void ResetControllers();
};

/// What the events before a place have set: the memory of a seek.
struct ChaseMemory {
    std::array<ChannelChase, kChannels> channels;
    /// System-exclusive messages that come before the song's first note.
    std::vector<song::ConstEventLink> setUp;
};

/// When an event of the track is played, in milliseconds of the play position.
inline std::int64_t DueMs(const song::Track& track, const song::MidiEvent& event) {
    return std::int64_t{event.timeMs} - track.timeShiftMs;
}

/// The first event of the track that is not due before `ms`; null when all are.
song::EventLink FirstDue(song::Track& track, std::int64_t ms);

/// Puts the play cursor of every track on its first event that is not due before `ms`.
void SeekCursors(song::Song& song, std::int64_t ms);

/// What the events before the play cursors have set, in the order of playing; muted tracks are left
/// out. Throws std::bad_alloc.
ChaseMemory CollectChase(const song::Song& song);

} // namespace tracksmith::player
