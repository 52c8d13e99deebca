#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/text.h"

#include "instruments/catalogue.h"
#include "instruments/output_assignment.h"
#include "instruments/revoicer/revoice_entry.h"
#include "song/midi_numbers.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// What is revoiced and how entries are looked up.
struct RevoiceRule {
    /// The channels (0-15) that may change.
    std::bitset<song::kMidiChannels> channels;
    /// Whether an entry's source LSB counts.
    bool comparesLsb = true;
};

/// The rule for the outputs: the channels whose instrument is that of the first output. Roland SC
/// instruments select the sound map by the LSB, so only MSB and program are compared there.
RevoiceRule RevoiceRuleOf(const OutputTable& outputs);

/// A program change that becomes another one, with its bank selects.
struct RevoiceChange {
    std::size_t channel = 0;
    std::size_t track = 0;
    std::int32_t tick = 0;
    VoiceNumbers from;
    VoiceNumbers to;
    /// Index of the entry that says so.
    std::size_t entry = 0;
    song::ConstEventLink bankMsbEvent;
    song::ConstEventLink bankLsbEvent;
    song::ConstEventLink programEvent;
};

/// What revoicing a song does, in the order in which it does it.
struct Revoicing {
    std::vector<RevoiceChange> changes;
    /// The channel (0-15) at whose program change it ends early: there is a bank select MSB but no
    /// LSB before it in its track.
    std::optional<std::size_t> missingLsb;
    /// Program changes of the channels.
    std::size_t programChanges = 0;
    /// Those of them without any bank select MSB before them in their track: never changed.
    std::size_t withoutBank = 0;
    /// Those whose bank selects have an earlier program change between: what that becomes changes
    /// their bank too.
    std::size_t sharingBank = 0;
};

/// What applying the entries would do, channel after channel and track after track: each program
/// change whose last bank selects before it in its track and whose program are the source of an
/// entry, the first that fits. Linear in the events. Links hold until the song's structure changes.
Revoicing PlanRevoicing(const song::Song& song, std::span<const RevoiceEntry> entries,
                        const RevoiceRule& rule);

/// Writes what was planned for this song into its events.
void ApplyRevoicing(song::Song& song, const Revoicing& plan);

/// What the user is told where revoicing ended early, by the channel (0-15).
std::string MissingLsbText(std::size_t channel, Language language);

} // namespace tracksmith::instruments
