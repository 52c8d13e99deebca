#include "app/revoicer_desk.h"

#include <algorithm>
#include <utility>

#include "app/song_description.h"

namespace tracksmith::app {
namespace {

using instruments::RevoiceEntry;
using instruments::RevoicerTable;
using instruments::VoiceNumbers;

} // namespace

RevoicerDesk::RevoicerDesk(session::Session& session, const instruments::VoiceTables& tables,
                           settings::SettingsStore& store, LookupOptionsOf options)
    : session_(session), tables_(tables), store_(store), options_(std::move(options)) {
    Refresh();
}

std::string RevoicerDesk::InstrumentName() const {
    const instruments::Instrument* instrument = instruments::FindInstrument(instrument_);
    return instrument == nullptr ? std::string() : std::string(instrument->name);
}

void RevoicerDesk::Refresh() {
    const session::Workspace& work = session_.Work();
    const instruments::InstrumentId former = instrument_;
    instrument_ = work.outputs.outputs.front().id;
    if (instrument_ != former) {
        suggester_.reset();
        suggested_.clear();
        imported_.clear();
    }
    table_ = RevoicerTable::Load(store_, InstrumentName());
    rule_ = instruments::RevoiceRuleOf(work.outputs);
    start_ = StartBanksOf(work, tables_, DescribeSong(work), options_);
    CollectRows();
}

void RevoicerDesk::CollectRows() {
    const song::Song& song = session_.Song();
    plan_ = instruments::PlanRevoicing(song, table_.Applied(), rule_);
    patches_ = instruments::SongPatches(song, start_);
    newVoices_.clear();
    for (const instruments::RevoiceChange& change : plan_.changes) {
        newVoices_.emplace(change.programEvent.Unit(), change.to);
    }
    thisSong_.clear();
    for (VoiceInSong& voice : VoicesInSong(song, tables_, rule_, start_)) {
        Row row;
        for (const std::size_t channel : voice.channels) {
            row.programChanges += static_cast<std::size_t>(std::ranges::count_if(
                patches_.Changes(channel), [&](const instruments::VoiceChange& change) {
                    return change.state.Numbers() == voice.numbers;
                }));
        }
        const auto fits = [&](const RevoicerTable::Row& line) {
            VoiceNumbers source = line.entry ? line.entry->source : VoiceNumbers{};
            source.lsb = rule_.comparesLsb ? source.lsb : voice.numbers.lsb;
            return line.entry && source == voice.numbers;
        };
        const auto line = std::ranges::find_if(table_.Rows(), fits);
        if (line != table_.Rows().end()) {
            FillFromLine(row, static_cast<std::size_t>(line - table_.Rows().begin()));
        }
        row.source = std::move(voice);
        thisSong_.push_back(std::move(row));
    }
}

void RevoicerDesk::FillFromLine(Row& row, std::size_t line) const {
    const RevoicerTable::Row& from = table_.Rows()[line];
    row.line = line;
    row.origin = OriginOf(*from.entry);
    row.ticked = from.ticked;
    row.target = from.entry->target;
    row.targetName = from.entry->targetName;
}

RevoicerDesk::Origin RevoicerDesk::OriginOf(const RevoiceEntry& entry) const {
    const auto among = [&](const std::vector<RevoiceEntry>& entries) {
        return std::ranges::find(entries, entry) != entries.end();
    };
    if (among(suggested_)) {
        return Origin::Suggested;
    }
    return among(imported_) ? Origin::Imported : Origin::Table;
}

std::optional<VoiceNumbers> RevoicerDesk::NewVoiceAt(std::size_t channel, std::int32_t tick) const {
    const auto found = newVoices_.find(patches_.StateAt(channel, tick).programEvent.Unit());
    return found == newVoices_.end() ? std::nullopt : std::optional(found->second);
}

std::vector<RevoicerDesk::Row> RevoicerDesk::WholeTable() const {
    std::vector<Row> rows;
    for (std::size_t i = 0; i < table_.Rows().size(); ++i) {
        const RevoicerTable::Row& line = table_.Rows()[i];
        if (!line.entry) {
            continue;
        }
        const auto inSong = std::ranges::find(thisSong_, std::optional<std::size_t>(i), &Row::line);
        Row row;
        if (inSong != thisSong_.end()) {
            row = *inSong;
        } else {
            row.source = {false, line.entry->source, line.entry->sourceName, {}};
            FillFromLine(row, i);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::size_t RevoicerDesk::TableSize() const {
    return static_cast<std::size_t>(std::ranges::count_if(
        table_.Rows(), [](const RevoicerTable::Row& row) { return row.entry.has_value(); }));
}

const instruments::VoiceSuggester& RevoicerDesk::Suggester() {
    if (!suggester_) {
        suggester_.emplace(tables_, instrument_, options_(instrument_));
    }
    return *suggester_;
}

std::vector<instruments::SuggestedVoice> RevoicerDesk::Suggestions(const VoiceInSong& source,
                                                                   std::size_t most) {
    return Suggester().Suggest({source.isKit, source.numbers.program, source.name}, most);
}

std::optional<double> RevoicerDesk::NearnessOf(const VoiceInSong& source, VoiceNumbers target) {
    return Suggester().NearnessOf({source.isKit, source.numbers.program, source.name}, target);
}

std::size_t RevoicerDesk::SuggestMissing() {
    std::vector<VoiceInSong> missing;
    for (const Row& row : thisSong_) {
        if (!row.line) {
            missing.push_back(row.source);
        }
    }
    std::size_t put = 0;
    const auto suggestions = SuggestVoices(missing, tables_, instrument_, options_(instrument_), 1);
    for (const RevoiceEntry& entry : FirstEntries(suggestions)) {
        if (table_.Put(entry)) {
            suggested_.push_back(entry);
            ++put;
        }
    }
    return put;
}

bool RevoicerDesk::Save() {
    const bool saved = table_.Save(store_, InstrumentName());
    CollectRows();
    return saved;
}

bool RevoicerDesk::Put(const VoiceInSong& source, const instruments::Voice& target) {
    const RevoiceEntry entry = EntryFor(source, target);
    const bool put = table_.Put(entry);
    std::erase(suggested_, entry); // the user's own choice from now on
    std::erase(imported_, entry);
    return Save() && put;
}

bool RevoicerDesk::Tick(std::size_t line, bool on) {
    table_.Tick(line, on);
    return Save();
}

bool RevoicerDesk::Delete(std::size_t line) {
    table_.Delete(line);
    return Save();
}

std::optional<std::size_t> RevoicerDesk::Import(std::string_view text, bool& stored) {
    std::size_t badLine = 0;
    const auto read = RevoicerTable::FromText(text, badLine);
    if (!read) {
        return badLine;
    }
    stored = true;
    for (const RevoiceEntry& entry : read->Applied()) {
        stored = table_.Put(entry) && stored;
        imported_.push_back(entry);
    }
    stored = Save() && stored;
    return std::nullopt;
}

instruments::Revoicing RevoicerDesk::Apply(MessageHost& host) {
    return RevoiceSong(session_, table_.Applied(), host);
}

std::size_t RevoicerDesk::AddBanks(MessageHost& host) {
    return AddBankSelects(session_, start_, host);
}

} // namespace tracksmith::app
