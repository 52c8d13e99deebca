#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "base/message_host.h"

#include "app/picker_task.h"
#include "app/session/session.h"
#include "instruments/revoicer/revoice_song.h"
#include "instruments/revoicer/suggest_voices.h"

namespace tracksmith::app {

/// Replacing voices by a table.
inline constexpr session::ChangeKind kRevoice{
    .name = Text{De{"Klänge ersetzen"}, En{"Revoicing"}}, .takeBack = true, .playsOn = true};
/// Giving program changes bank selects of their own.
inline constexpr session::ChangeKind kAddBankSelects{
    .name = Text{De{"Bankwahlen ergänzen"}, En{"Adding Bank Selects"}},
    .takeBack = true,
    .playsOn = true};

/// A voice that a song selects, by its numbers.
struct VoiceInSong {
    bool isKit = false;
    instruments::VoiceNumbers numbers;
    /// In the common set that the numbers belong to (General MIDI, GM2, GS or XG).
    std::string name;
    /// Channels (0-15) that select it, ascending.
    std::vector<std::size_t> channels;
};

/// A voice of the song with voices of the target in its place, the best first.
struct VoiceSuggestion {
    VoiceInSong source;
    std::vector<instruments::SuggestedVoice> voices;
};

/// The voices that the channels of `rule` select in the song, in the order of their numbers,
/// melodic ones before kits. `start` are the banks before any bank select.
std::vector<VoiceInSong> VoicesInSong(const song::Song& song,
                                      const instruments::VoiceTables& tables,
                                      const instruments::RevoiceRule& rule,
                                      const instruments::StartBanks& start);

/// At most `most` voices of the instrument for each voice of the song that is not one of its own
/// already; voices without any are left out.
std::vector<VoiceSuggestion> SuggestVoices(std::span<const VoiceInSong> voices,
                                           const instruments::VoiceTables& tables,
                                           instruments::InstrumentId instrument,
                                           const instruments::LookupOptions& options,
                                           std::size_t most);

/// The entry that puts `target` in the place of `source`.
instruments::RevoiceEntry EntryFor(const VoiceInSong& source, const instruments::Voice& target);

/// The first suggestion of each voice as a table.
std::vector<instruments::RevoiceEntry> FirstEntries(std::span<const VoiceSuggestion> suggestions);

/// Applies the entries to the song as one change and returns what was done. Where a program change
/// lacks its bank select LSB, revoicing ends there, which is also shown through `host`; what was
/// changed stays. Raises EMidiError like Session::Change.
instruments::Revoicing RevoiceSong(session::Session& session,
                                   std::span<const instruments::RevoiceEntry> entries,
                                   MessageHost& host);

/// How a song is to be revoiced.
struct RevoiceOrder {
    /// The table; not used where voices are suggested.
    std::vector<instruments::RevoiceEntry> entries;
    /// So many suggestions for each voice, of which the first is taken in place of the table; 0 for
    /// none.
    std::size_t suggestions = 0;
    /// Program changes get bank selects of their own first.
    bool addBanks = false;
    /// The user's choices about voices; any thread that revoices calls it.
    LookupOptionsOf options = [](instruments::InstrumentId) {
        return instruments::LookupOptions();
    };
};

/// What became of a song.
struct RevoicedSong {
    instruments::Revoicing plan;
    std::vector<VoiceSuggestion> suggestions;
};

/// Revoices the song for the instrument of the first output. Shows and raises what RevoiceSong
/// does.
RevoicedSong RevoiceBy(const RevoiceOrder& order, session::Session& session,
                       const instruments::VoiceTables& tables, MessageHost& host);

/// Gives every program change bank selects of its own; returns how many got some. Raises EMidiError
/// like Session::Change.
std::size_t AddBankSelects(session::Session& session, const instruments::StartBanks& start,
                           MessageHost& host);

} // namespace tracksmith::app
