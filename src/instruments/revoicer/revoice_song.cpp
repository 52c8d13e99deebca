#include "instruments/revoicer/revoice_song.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>

#include "instruments/revoicer/texts.h"

namespace tracksmith::instruments {
namespace {

using song::ConstEventLink;
using song::MidiEvent;

// What a track's events so far have left of a channel.
struct ChannelBank {
    std::uint8_t msb = 0;
    std::uint8_t lsb = 0;
    ConstEventLink msbEvent;
    ConstEventLink lsbEvent;
    // No program change since the bank select.
    bool msbIsNew = false;
    bool lsbIsNew = false;
};

// The entries by what they are compared by, the first of several.
class EntryIndex {
public:
    EntryIndex(std::span<const RevoiceEntry> entries, bool comparesLsb)
        : entries_(entries), comparesLsb_(comparesLsb) {
        for (std::size_t i = 0; i < entries.size(); ++i) {
            index_.try_emplace(KeyOf(entries[i].source), i);
        }
    }

    std::optional<std::size_t> Find(VoiceNumbers source) const {
        const auto found = index_.find(KeyOf(source));
        return found == index_.end() ? std::nullopt : std::optional(found->second);
    }
    const RevoiceEntry& operator[](std::size_t entry) const { return entries_[entry]; }

private:
    std::uint32_t KeyOf(VoiceNumbers numbers) const {
        const std::uint32_t lsb = comparesLsb_ ? numbers.lsb : 0U;
        return (std::uint32_t{numbers.msb} << 16U) | (lsb << 8U) | numbers.program;
    }

    std::span<const RevoiceEntry> entries_;
    bool comparesLsb_;
    std::unordered_map<std::uint32_t, std::size_t> index_;
};

/// Walks over the tracks one after the other and collects for each channel by itself.
class Planner {
public:
    Planner(const EntryIndex& entries, const RevoiceRule& rule) : entries_(entries), rule_(rule) {}

    void Walk(const song::Track& track, std::size_t index) {
        track_ = index;
        banks_.fill({});
        for (ConstEventLink link = track.first; link; link = link->next) {
            if (link->kind == song::kShortMessage && link->length > 0 && link->IsChannelMessage() &&
                rule_.channels.test(link->Channel())) {
                Take(link);
            }
        }
    }

    // Channel after channel, up to the first that lacks a bank select.
    Revoicing Result() {
        Revoicing plan;
        for (std::size_t channel = 0; channel < found_.size(); ++channel) {
            const Found& found = found_[channel];
            plan.programChanges += found.programChanges;
            plan.withoutBank += found.withoutBank;
            plan.sharingBank += found.sharingBank;
            if (!plan.missingLsb) {
                plan.changes.insert(plan.changes.end(), found.changes.begin(), found.changes.end());
                plan.missingLsb = found.stops ? std::optional(channel) : std::nullopt;
            }
        }
        return plan;
    }

private:
    struct Found {
        std::vector<RevoiceChange> changes;
        bool stops = false;
        std::size_t programChanges = 0;
        std::size_t withoutBank = 0;
        std::size_t sharingBank = 0;
    };

    void Take(ConstEventLink event) {
        ChannelBank& bank = banks_[event->Channel()];
        if (event->Command() == song::kProgramChange) {
            TakeProgram(event, bank, found_[event->Channel()]);
            bank.msbIsNew = bank.lsbIsNew = false;
        } else if (event->Command() == song::kControlChange && event->data1 == song::kBankMsb) {
            bank.msb = event->data2;
            bank.msbEvent = event;
            bank.msbIsNew = true;
        } else if (event->Command() == song::kControlChange && event->data1 == song::kBankLsb) {
            bank.lsb = event->data2;
            bank.lsbEvent = event;
            bank.lsbIsNew = true;
        }
    }

    void TakeProgram(ConstEventLink event, ChannelBank& bank, Found& found) {
        ++found.programChanges;
        found.withoutBank += bank.msbEvent ? 0U : 1U;
        if (!bank.msbEvent || found.stops) {
            return;
        }
        if (!bank.lsbEvent) {
            found.stops = true;
            return;
        }
        found.sharingBank += bank.msbIsNew && bank.lsbIsNew ? 0U : 1U;
        const VoiceNumbers from{bank.msb, bank.lsb, event->data1};
        const auto entry = entries_.Find(from);
        if (entry) {
            const VoiceNumbers to = entries_[*entry].target;
            found.changes.push_back({event->Channel(), track_, event->tick, from, to, *entry,
                                     bank.msbEvent, bank.lsbEvent, event});
            bank.msb = to.msb; // as whoever comes next in the track will find it
            bank.lsb = to.lsb;
        }
    }

    const EntryIndex& entries_;
    const RevoiceRule& rule_;
    std::size_t track_ = 0;
    std::array<ChannelBank, song::kMidiChannels> banks_;
    std::array<Found, song::kMidiChannels> found_;
};

void Write(ConstEventLink link, std::uint8_t MidiEvent::*byte, std::uint8_t value) {
    // Whoever may change the song may change its events.
    (*song::EventLink(link.Unit())).*byte = value;
}

} // namespace

RevoiceRule RevoiceRuleOf(const OutputTable& outputs) {
    const OutputAssignment& first = outputs.outputs.front();
    RevoiceRule rule;
    for (std::size_t channel = 0; channel < OutputTable::kChannels; ++channel) {
        rule.channels.set(channel, outputs.InstrumentOfChannel(channel) == first.id);
    }
    const Instrument* instrument = FindInstrument(first.id);
    rule.comparesLsb = instrument == nullptr || !instrument->name.starts_with("Roland SC-");
    return rule;
}

Revoicing PlanRevoicing(const song::Song& song, std::span<const RevoiceEntry> entries,
                        const RevoiceRule& rule) {
    const EntryIndex index(entries, rule.comparesLsb);
    Planner planner(index, rule);
    for (std::size_t track = 0; track < song.tracks.size(); ++track) {
        planner.Walk(song.tracks[track], track);
    }
    return planner.Result();
}

void ApplyRevoicing(song::Song& /*song*/, const Revoicing& plan) {
    for (const RevoiceChange& change : plan.changes) {
        Write(change.bankMsbEvent, &MidiEvent::data2, change.to.msb);
        Write(change.bankLsbEvent, &MidiEvent::data2, change.to.lsb);
        Write(change.programEvent, &MidiEvent::data1, change.to.program);
    }
}

std::string MissingLsbText(std::size_t channel, Language language) {
    return std::string(texts::kProgramName) + std::string(texts::kMissingLsbChannel.In(language)) +
           std::to_string(channel + 1) + std::string(texts::kMissingLsb.In(language));
}

} // namespace tracksmith::instruments
