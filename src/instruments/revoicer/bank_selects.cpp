#include "instruments/revoicer/bank_selects.h"

#include <array>
#include <cstdint>
#include <unordered_map>

#include "song/event_chain.h"

namespace tracksmith::instruments {
namespace {

using song::EventLink;

// The bank in force at each program change, by its place in memory.
using BanksInForce = std::unordered_map<std::uint32_t, VoiceNumbers>;

BanksInForce CollectBanks(const song::Song& song, const RevoiceRule& rule,
                          const StartBanks& start) {
    const SongPatches patches(song, start);
    BanksInForce banks;
    for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
        if (rule.channels.test(channel)) {
            for (const VoiceChange& change : patches.Changes(channel)) {
                banks.emplace(change.state.programEvent.Unit(), change.state.Numbers());
            }
        }
    }
    return banks;
}

/// Adds what is missing on one track.
class BankAdder {
public:
    BankAdder(song::Song& song, song::Track& track, const BanksInForce& banks)
        : song_(song), track_(track), banks_(banks) {}

    std::size_t Run() {
        std::size_t added = 0;
        for (EventLink event = track_.first; event; event = event->next) {
            if (event->kind == song::kShortMessage && event->length > 0 &&
                event->IsChannelMessage()) {
                added += Take(event) ? 1U : 0U;
            }
        }
        return added;
    }

private:
    struct Own {
        bool msb = false;
        bool lsb = false;
    };

    bool Take(EventLink event) {
        Own& own = own_[event->Channel()];
        if (event->Command() == song::kControlChange) {
            own.msb = own.msb || event->data1 == song::kBankMsb;
            own.lsb = own.lsb || event->data1 == song::kBankLsb;
            return false;
        }
        if (event->Command() != song::kProgramChange) {
            return false;
        }
        const Own found = own;
        own = {};
        const auto bank = banks_.find(event.Unit());
        if (bank == banks_.end() || (found.msb && found.lsb)) {
            return false;
        }
        if (!found.msb) {
            Add(event, song::kBankMsb, bank->second.msb);
        }
        Add(event, song::kBankLsb, bank->second.lsb); // behind the MSB, as instruments expect it
        return true;
    }

    void Add(EventLink program, std::uint8_t controller, std::uint8_t value) {
        const auto status = static_cast<std::uint8_t>(song::kControlChange | program->Channel());
        const EventLink event =
            song::NewShortEvent(song_.pool, program->tick, status, controller, value);
        event->timeMs = program->timeMs;
        song::InsertAfter(track_, program->prev, event);
    }

    song::Song& song_;
    song::Track& track_;
    const BanksInForce& banks_;
    std::array<Own, song::kMidiChannels> own_{};
};

} // namespace

std::size_t AddMissingBankSelects(song::Song& song, const RevoiceRule& rule,
                                  const StartBanks& start) {
    const BanksInForce banks = CollectBanks(song, rule, start);
    std::size_t added = 0;
    for (song::Track& track : song.tracks) {
        added += BankAdder(song, track, banks).Run();
    }
    return added;
}

} // namespace tracksmith::instruments
