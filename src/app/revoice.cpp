#include "app/revoice.h"

#include <algorithm>
#include <array>
#include <map>
#include <tuple>
#include <utility>

#include "app/song_description.h"
#include "instruments/picker/patch_state.h"
#include "instruments/revoicer/bank_selects.h"
#include "song/drum_channels.h"

namespace tracksmith::app {
namespace {

using instruments::InstrumentId;
using instruments::VoiceNumbers;

// The common sets in the order in which numbers are looked up: XG, GM2, GS (as the SC-8850 has it).
constexpr std::array<InstrumentId, 3> kCommonSets{instruments::kXgSoundset,
                                                  instruments::kGm2Soundset, 4};

// General MIDI's name where no set has the numbers.
std::string CommonName(const instruments::VoiceTables& tables, bool isKit, VoiceNumbers numbers) {
    for (const InstrumentId set : kCommonSets) {
        const auto found = instruments::FindVoice(tables, set, isKit, numbers);
        if (found.match == instruments::VoiceMatch::Exact) {
            return std::string(found.voice->name);
        }
    }
    const auto found = instruments::FindVoice(tables, instruments::kGmSoundset, isKit, numbers);
    return found.voice == nullptr ? std::string() : std::string(found.voice->name);
}

// A voice that was made for the instrument; those of common sets are to be replaced by better ones.
bool IsOwnVoice(const VoiceInSong& voice, const instruments::VoiceTables& tables,
                InstrumentId instrument, const instruments::LookupOptions& options) {
    const auto found =
        instruments::FindVoice(tables, instrument, voice.isKit, voice.numbers, options);
    return found.match == instruments::VoiceMatch::Exact &&
           !instruments::IsCommonSet(found.voice->family);
}

} // namespace

std::vector<VoiceInSong> VoicesInSong(const song::Song& song,
                                      const instruments::VoiceTables& tables,
                                      const instruments::RevoiceRule& rule,
                                      const instruments::StartBanks& start) {
    const instruments::SongPatches patches(song, start);
    const auto drums = song::DrumChannels(song);
    std::map<std::tuple<bool, VoiceNumbers>, std::vector<std::size_t>> channelsOf;
    for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
        if (!rule.channels.test(channel)) {
            continue;
        }
        for (const instruments::VoiceChange& change : patches.Changes(channel)) {
            auto& channels = channelsOf[{drums.test(channel), change.state.Numbers()}];
            if (channels.empty() || channels.back() != channel) {
                channels.push_back(channel);
            }
        }
    }
    std::vector<VoiceInSong> voices;
    for (auto& [key, channels] : channelsOf) {
        const auto& [isKit, numbers] = key;
        voices.push_back({isKit, numbers, CommonName(tables, isKit, numbers), std::move(channels)});
    }
    return voices;
}

std::vector<VoiceSuggestion> SuggestVoices(std::span<const VoiceInSong> voices,
                                           const instruments::VoiceTables& tables,
                                           InstrumentId instrument,
                                           const instruments::LookupOptions& options,
                                           std::size_t most) {
    const instruments::VoiceSuggester suggester(tables, instrument, options);
    std::vector<VoiceSuggestion> suggestions;
    for (const VoiceInSong& voice : voices) {
        if (IsOwnVoice(voice, tables, instrument, options)) {
            continue;
        }
        auto found = suggester.Suggest({voice.isKit, voice.numbers.program, voice.name}, most);
        std::erase_if(found, [&](const instruments::SuggestedVoice& each) {
            return each.voice->Numbers() == voice.numbers;
        });
        if (!found.empty()) {
            suggestions.push_back({voice, std::move(found)});
        }
    }
    return suggestions;
}

instruments::RevoiceEntry EntryFor(const VoiceInSong& source, const instruments::Voice& target) {
    return {target.Numbers(), std::string(target.name), source.numbers, source.name};
}

std::vector<instruments::RevoiceEntry> FirstEntries(std::span<const VoiceSuggestion> suggestions) {
    std::vector<instruments::RevoiceEntry> entries;
    for (const VoiceSuggestion& each : suggestions) {
        entries.push_back(EntryFor(each.source, *each.voices.front().voice));
    }
    return entries;
}

instruments::Revoicing RevoiceSong(session::Session& session,
                                   std::span<const instruments::RevoiceEntry> entries,
                                   MessageHost& host) {
    const auto rule = instruments::RevoiceRuleOf(session.Work().outputs);
    instruments::Revoicing plan = instruments::PlanRevoicing(session.Song(), entries, rule);
    if (!plan.changes.empty()) {
        session.Change(kRevoice, host, [&](session::Workspace& work) {
            instruments::ApplyRevoicing(work.song, plan);
            return true;
        });
    }
    if (plan.missingLsb) {
        host.ShowMessage(instruments::MissingLsbText(*plan.missingLsb, host.CurrentLanguage()));
    }
    return plan;
}

RevoicedSong RevoiceBy(const RevoiceOrder& order, session::Session& session,
                       const instruments::VoiceTables& tables, MessageHost& host) {
    const session::Workspace& work = session.Work();
    const auto start = StartBanksOf(work, tables, DescribeSong(work), order.options);
    if (order.addBanks) {
        AddBankSelects(session, start, host);
    }
    RevoicedSong done;
    if (order.suggestions > 0) {
        const InstrumentId instrument = work.outputs.outputs.front().id;
        const auto rule = instruments::RevoiceRuleOf(work.outputs);
        done.suggestions = SuggestVoices(VoicesInSong(session.Song(), tables, rule, start), tables,
                                         instrument, order.options(instrument), order.suggestions);
        done.plan = RevoiceSong(session, FirstEntries(done.suggestions), host);
    } else {
        done.plan = RevoiceSong(session, order.entries, host);
    }
    return done;
}

std::size_t AddBankSelects(session::Session& session, const instruments::StartBanks& start,
                           MessageHost& host) {
    std::size_t added = 0;
    session.Change(kAddBankSelects, host, [&](session::Workspace& work) {
        added = instruments::AddMissingBankSelects(work.song,
                                                   instruments::RevoiceRuleOf(work.outputs), start);
        return added > 0;
    });
    return added;
}

} // namespace tracksmith::app
