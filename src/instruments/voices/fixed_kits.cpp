#include "instruments/voices/fixed_kits.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "instruments/voices/shared_sets.h"
#include "song/midi_numbers.h"

namespace tracksmith::instruments {
namespace {

constexpr InstrumentId kTyros5 = 74;
constexpr auto kKorgPa =
    std::to_array<InstrumentId>({14, 36, 42, 43, 48, 52, 63, 64, 75, 82, 90, 91, 103});

constexpr Voice Kit(std::uint8_t msb, std::uint8_t program, std::string_view name,
                    std::string_view category) {
    return {
        .msb = msb, .name = name, .program = program, .family = kDrumsFamily, .category = category};
}

constexpr auto kTyros5Kits =
    std::to_array<Voice>({Kit(song::kXgEffectKitBank, 43, "PopLatin Kit 1 (Live!)", "SFX Kits"),
                          Kit(song::kXgEffectKitBank, 75, "New Arabic Kit 1 (Live!)", "SFX Kits"),
                          Kit(song::kXgEffectKitBank, 86, "AlpenFX (Live!)", "SFX Kits"),
                          Kit(song::kXgEffectKitBank, 118, "Brazil Kit 2 (Live!)", "SFX Kits")});

constexpr Voice kKorgSfxKit = Kit(song::kGm2DrumBank, 56, "GM2 SFZ", "GM2 Drum Sets");

} // namespace

const Voice* FixedKit(InstrumentId instrument, VoiceNumbers numbers) {
    if (instrument != kTyros5) {
        return nullptr;
    }
    const auto* kit = std::ranges::find_if(kTyros5Kits, [numbers](const Voice& each) {
        return each.msb == numbers.msb && each.program == numbers.program;
    });
    return kit == kTyros5Kits.end() ? nullptr : kit;
}

std::vector<const Voice*> FixedKits(InstrumentId instrument) {
    std::vector<const Voice*> kits;
    if (instrument == kTyros5) {
        std::ranges::transform(kTyros5Kits, std::back_inserter(kits),
                               [](const Voice& kit) { return &kit; });
    }
    return kits;
}

const Voice* RespeltKit(InstrumentId instrument, VoiceNumbers numbers) {
    const bool isKorg = std::ranges::find(kKorgPa, instrument) != kKorgPa.end();
    return isKorg && numbers == kKorgSfxKit.Numbers() ? &kKorgSfxKit : nullptr;
}

} // namespace tracksmith::instruments
