#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "app/revoice.h"
#include "app/settings/settings_store.h"
#include "instruments/picker/patch_state.h"
#include "instruments/revoicer/revoicer_table.h"

namespace tracksmith::app {

/// The auto revoicer at work: the table of the first output's instrument beside the voices of the
/// song in memory. Every change of the table is stored at once. Owner's thread of the session.
class RevoicerDesk {
public:
    /// Where a line of the table comes from.
    enum class Origin : std::uint8_t {
        Table,     ///< stored before, or chosen by the user
        Suggested, ///< put in by SuggestMissing since the desk was opened
        Imported   ///< read from a file since the desk was opened
    };

    /// What the window shows of a voice: its place in the song, in the table, or in both.
    struct Row {
        VoiceInSong source;
        /// Program changes of the song that select it.
        std::size_t programChanges = 0;
        /// Its line in the table; none for a voice of the song that is not replaced yet.
        std::optional<std::size_t> line;
        Origin origin = Origin::Table;
        bool ticked = false;
        instruments::VoiceNumbers target;
        std::string targetName;
    };

    /// `session`, `tables` and `store` must outlive the object.
    RevoicerDesk(session::Session& session, const instruments::VoiceTables& tables,
                 settings::SettingsStore& store, LookupOptionsOf options);

    instruments::InstrumentId Instrument() const { return instrument_; }
    std::string InstrumentName() const;
    /// The instrument has voices that can be suggested.
    bool CanSuggest() const { return tables_.HasOwnTable(instrument_); }

    /// Looks at the song, the first output's instrument and its stored table anew.
    void Refresh();
    /// The voices of the song, and all lines of the table that are entries.
    const std::vector<Row>& ThisSong() const { return thisSong_; }
    std::vector<Row> WholeTable() const;
    /// Lines of the table that are entries.
    std::size_t TableSize() const;
    /// What applying the table to the song would do.
    const instruments::Revoicing& Plan() const { return plan_; }
    /// What the channel (0-15) plays at `tick` once the table is applied; nothing where that
    /// changes nothing.
    std::optional<instruments::VoiceNumbers> NewVoiceAt(std::size_t channel,
                                                        std::int32_t tick) const;

    /// The voices of the instrument that come nearest, the best first.
    std::vector<instruments::SuggestedVoice> Suggestions(const VoiceInSong& source,
                                                         std::size_t most);
    /// How near `target` comes to the voice, 0 to 1; nothing where the instrument has no such
    /// voice.
    std::optional<double> NearnessOf(const VoiceInSong& source, instruments::VoiceNumbers target);
    /// Puts the first suggestion into the table for each voice of the song that is not in it.
    /// Returns how many; the table must be saved then.
    std::size_t SuggestMissing();
    /// Changes of the table; each is stored, false when that failed or the table is full.
    bool Put(const VoiceInSong& source, const instruments::Voice& target);
    bool Tick(std::size_t line, bool on);
    bool Delete(std::size_t line);
    /// Puts the entries of a text into the table. Returns the number of the first line (from 1)
    /// that is no entry; nothing is changed then. `stored` tells whether it could be stored.
    std::optional<std::size_t> Import(std::string_view text, bool& stored);
    std::string ExportText() const { return table_.Text(); }
    bool Save();

    /// Applies the ticked entries to the song, see RevoiceSong.
    instruments::Revoicing Apply(MessageHost& host);
    /// Gives each program change bank selects of its own; returns how many got some.
    std::size_t AddBanks(MessageHost& host);

private:
    void CollectRows();
    void FillFromLine(Row& row, std::size_t line) const;
    Origin OriginOf(const instruments::RevoiceEntry& entry) const;
    const instruments::VoiceSuggester& Suggester();

    session::Session& session_;
    const instruments::VoiceTables& tables_;
    settings::SettingsStore& store_;
    LookupOptionsOf options_;
    instruments::InstrumentId instrument_ = instruments::kGmSoundset;
    instruments::RevoicerTable table_;
    instruments::RevoiceRule rule_;
    instruments::StartBanks start_{};
    instruments::SongPatches patches_;
    instruments::Revoicing plan_;
    // The new voice of each program change that is replaced, by its place in memory.
    std::unordered_map<std::uint32_t, instruments::VoiceNumbers> newVoices_;
    std::vector<Row> thisSong_;
    std::vector<instruments::RevoiceEntry> suggested_;
    std::vector<instruments::RevoiceEntry> imported_;
    std::optional<instruments::VoiceSuggester> suggester_;
};

} // namespace tracksmith::app
