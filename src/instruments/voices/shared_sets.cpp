#include "instruments/voices/shared_sets.h"

#include <algorithm>
#include <array>
#include <span>

#include "instruments/capabilities.h"
#include "song/midi_numbers.h"

namespace tracksmith::instruments {
namespace {

// Those that play in GM2 mode after their set-up: General MIDI 2 itself, Korg's Pa instruments and
// Kronos, fantom XR, SD-50, DoX-1.
constexpr auto kGm2Mode = std::to_array<InstrumentId>(
    {14, 16, 25, 36, 37, 42, 43, 48, 52, 61, 63, 64, 75, 78, 82, 90, 91, 103});

// Those that have the set in a mode of their own: Yamaha's arrangers since the Tyros, Roland's
// SC-8820, SC-8850, SC-D70, Sonic Cell, Juno-Stage and Integra-7.
constexpr auto kGm2Beside = std::to_array<InstrumentId>(
    {3, 4, 9, 17, 18, 31, 41, 45, 54, 59, 62, 68, 70, 71, 74, 80, 87, 97, 106, 108});

bool IsIn(std::span<const InstrumentId> list, InstrumentId instrument) {
    return std::ranges::find(list, instrument) != list.end();
}

} // namespace

bool HasXgSet(InstrumentId instrument) {
    const Instrument* entry = FindInstrument(instrument);
    return entry != nullptr && entry->xg;
}

bool HasGm2Set(InstrumentId instrument) {
    return IsIn(kGm2Mode, instrument) || IsIn(kGm2Beside, instrument);
}

bool HasTe200Option(InstrumentId instrument) {
    const Instrument* entry = FindInstrument(instrument);
    return entry != nullptr && HasCapability(entry->name, Capability::LimexTe200);
}

bool IsKitBank(InstrumentId instrument, std::uint8_t msb) {
    const bool isXgKit = msb == song::kXgDrumBank || msb == song::kXgEffectKitBank;
    return (isXgKit && HasXgSet(instrument)) ||
           (msb == song::kGm2DrumBank && HasGm2Set(instrument));
}

VoiceNumbers NumbersInForce(InstrumentId instrument, bool kits, std::optional<std::uint8_t> msb,
                            std::optional<std::uint8_t> lsb, std::uint8_t program) {
    std::uint8_t start = 0;
    if (IsIn(kGm2Mode, instrument)) {
        start = kits ? song::kGm2DrumBank : song::kGm2MelodyBank;
    } else if (kits && HasXgSet(instrument)) {
        start = song::kXgDrumBank;
    }
    return {msb.value_or(start), lsb.value_or(std::uint8_t{0}), program};
}

} // namespace tracksmith::instruments
