#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "instruments/voices/voice.h"
#include "song/midi_numbers.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// What a channel plays at a place of the song, with the events that say so. A link is null where
/// the song has no such event for the place. Valid until the song's structure changes.
struct PatchState {
    std::uint8_t bankMsb = 0;
    std::uint8_t bankLsb = 0;
    std::uint8_t program = 0;
    song::ConstEventLink bankMsbEvent;
    song::ConstEventLink bankLsbEvent;
    song::ConstEventLink programEvent;

    VoiceNumbers Numbers() const { return {bankMsb, bankLsb, program}; }
};

/// A place where the song selects the voice of a channel: one of its program changes.
struct VoiceChange {
    /// What is in force from here on. The links to the bank selects are those that belong to this
    /// place alone: null where it keeps a bank that was selected before an earlier change, or none.
    PatchState state;
    std::int32_t tick = 0;
    /// Index of the track of the program change.
    std::size_t track = 0;
};

/// The bank that each channel is in before any bank select; the programs do not count.
using StartBanks = std::array<VoiceNumbers, song::kMidiChannels>;

/// Where and how a song selects the voices of its channels, collected in one walk over the tracks
/// that are not ignored. Holds links: collect it anew after a change of the song's structure.
class SongPatches {
public:
    /// An empty list for every channel.
    SongPatches() = default;
    explicit SongPatches(const song::Song& song, const StartBanks& start = {});

    /// The program changes of `channel` (0-15) in playing order.
    std::span<const VoiceChange> Changes(std::size_t channel) const { return changes_[channel]; }

    /// Index of the change in force at `tick`: the last not after it. The first change of a channel
    /// counts as in force from the song's start. The number of changes where there is none.
    std::size_t ChangeAt(std::size_t channel, std::int32_t tick) const;

    /// What the channel plays at `tick`; the start bank, program 0 and no links where the song
    /// selects no program.
    PatchState StateAt(std::size_t channel, std::int32_t tick) const;

private:
    StartBanks start_{};
    std::array<std::vector<VoiceChange>, song::kMidiChannels> changes_;
};

} // namespace tracksmith::instruments
