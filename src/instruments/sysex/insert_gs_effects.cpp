#include "instruments/sysex/insert_gs_effects.h"

#include <algorithm>
#include <array>
#include <vector>

#include "instruments/sysex/gs_ticks.h"
#include "instruments/sysex/insert_message.h"
#include "instruments/sysex/sysex_edit.h"
#include "instruments/sysex/sysex_patterns.h"
#include "instruments/sysex/sysex_templates.h"

namespace tracksmith::instruments {
namespace {

using song::SysexPlace;

// Effect settings have the address 40 01 xx; this is the place of the xx.
constexpr std::size_t kAddressByte = 6;
constexpr std::size_t kMostAddresses = 11;
constexpr std::uint8_t kEffects = 0x01;
constexpr std::int32_t kReverbDelay = kEffectDelay;
constexpr std::int32_t kDelayDelay = kEffectDelay + kTicksApart;

// Settings of a device at some addresses.
struct EffectSettings {
    SysexBytes prefix;
    SysexBytes addresses;
    std::int32_t delay; // ticks behind the reset
};

constexpr auto kDelayAddresses =
    std::to_array<std::uint8_t>({0x50, 0x51, 0x52, 0x53, 0x54, 0x55, 0x56, 0x57, 0x58, 0x59, 0x5A});
constexpr auto kReverbTime = std::to_array<std::uint8_t>({templates::kGsReverb[7]});
constexpr auto kMp11Addresses = std::to_array<std::uint8_t>(
    {templates::kDelayTime00.back(), templates::kDelayFeedback00.back()});

constexpr EffectSettings kDelay10{templates::kGsPrefix, kDelayAddresses, kDelayDelay};
constexpr EffectSettings kReverb10{templates::kGsPrefix, kReverbTime, kReverbDelay};
constexpr EffectSettings kDelay00{templates::kGsPrefix00, kMp11Addresses, kDelayDelay};

bool Sets(const EffectSettings& settings, SysexBytes data) {
    return data.size() > kAddressByte && StartsWith(data, DataOf(settings.prefix)) &&
           data[kAddressByte - 1] == kEffects &&
           std::ranges::find(settings.addresses, data[kAddressByte]) != settings.addresses.end();
}

std::int32_t LastTick(const song::Song& song, const SysexSession& session) {
    return SearchEnd(song, session.insertionTick + kDelayDelay +
                               kTicksApart * static_cast<std::int32_t>(kMostAddresses));
}

// The last message of each address, in the order of these.
std::vector<SysexPlace> LastOfEach(const std::vector<SysexPlace>& places) {
    std::array<std::size_t, 128> last{};
    const auto addressOf = [](const SysexPlace& place) {
        return place.event->data[kAddressByte] & 0x7FU;
    };
    for (std::size_t i = 0; i < places.size(); ++i) {
        last.at(addressOf(places[i])) = i;
    }
    std::vector<SysexPlace> kept;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (last.at(addressOf(places[i])) == i) {
            kept.push_back(places[i]);
        }
    }
    return kept;
}

void MoveBehindReset(song::Song& song, SysexSession& session, std::int32_t tick,
                     const std::vector<SysexPlace>& undone) {
    song::Track& track = song.tracks[static_cast<std::size_t>(session.sysexTrack)];
    std::vector<SysexPlace> kept;
    WithMemory(session, [&] { kept = LastOfEach(undone); });
    const auto last = tick + kTicksApart * static_cast<std::int32_t>(kept.size());
    if (track.last->tick <= last) {
        return;
    }
    for (const SysexPlace& place : undone) {
        RemoveMessage(session, place);
    }
    for (const SysexPlace& place : kept) {
        InsertMessage(song, session, {session.sysexTrack, tick, track.first},
                      place.event->data.Bytes());
        tick += kTicksApart;
    }
}

// Returns whether the song has such settings.
bool KeepSettings(song::Song& song, SysexSession& session, const EffectSettings& settings) {
    const std::int32_t reset = session.insertionTick;
    std::vector<SysexPlace> undone;
    bool any = false;
    VisitEach(song, session, LastTick(song, session), [&](const SysexPlace& place) {
        if (Sets(settings, Live(place))) {
            any = true;
            if (place.event->tick <= reset) {
                WithMemory(session, [&] { undone.push_back(place); });
            }
        }
    });
    if (session.resetInserted && !undone.empty()) {
        std::ranges::stable_sort(undone, {},
                                 [](const SysexPlace& place) { return place.event->tick; });
        MoveBehindReset(song, session, reset + settings.delay, undone);
    }
    return any;
}

} // namespace

void InsertGSDelaySysex(song::Song& song, SysexSession& session) {
    KeepSettings(song, session, kDelay10);
}

void InsertGSReverbSysex(song::Song& song, SysexSession& session) {
    if (!KeepSettings(song, session, kReverb10)) {
        InsertSetUp(song, session, session.insertionTick + kReverbDelay, templates::kGsReverb);
    }
}

void InsertMP11DelaySysex(song::Song& song, SysexSession& session) {
    KeepSettings(song, session, kDelay00);
}

} // namespace tracksmith::instruments
