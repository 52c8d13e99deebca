#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "base/text.h"

namespace tracksmith::song {

/// Numbers behind those of the controllers (0-127) for what else is set like them.
inline constexpr std::uint16_t kBendControl = 128;
inline constexpr std::uint16_t kPressureControl = 129;

struct ControlNameText {
    std::uint16_t control = 0;
    Text name{Both{""}};
};

/// Names of controllers (MIDI 1.0, control change messages) as musicians say them.
inline constexpr std::array<ControlNameText, 20> kControlNames{{
    {1, Text{Both{"Modulation"}}},
    {5, Text{De{"Portamentozeit"}, En{"Portamento time"}}},
    {6, Text{De{"Parameterwert"}, En{"Parameter value"}}},
    {7, Text{De{"Lautstärke"}, En{"Volume"}}},
    {10, Text{De{"Panorama"}, En{"Pan"}}},
    {11, Text{De{"Expression"}, En{"Expression"}}},
    {64, Text{De{"Haltepedal"}, En{"Sustain pedal"}}},
    {65, Text{Both{"Portamento"}}},
    {66, Text{Both{"Sostenuto"}}},
    {67, Text{De{"Leisepedal"}, En{"Soft pedal"}}},
    {71, Text{De{"Resonanz"}, En{"Harmonic content"}}},
    {72, Text{De{"Ausklingzeit"}, En{"Release time"}}},
    {73, Text{De{"Einschwingzeit"}, En{"Attack time"}}},
    {74, Text{De{"Helligkeit"}, En{"Brightness"}}},
    {91, Text{De{"Hall"}, En{"Reverb"}}},
    {93, Text{De{"Chorus"}, En{"Chorus"}}},
    {94, Text{Both{"Variation"}}},
    {kBendControl, Text{De{"Tonhöhenrad"}, En{"Pitch bend"}}},
    {kPressureControl, Text{De{"Kanaldruck"}, En{"Channel pressure"}}},
    {121, Text{De{"Alle Controller zurück"}, En{"Reset all controllers"}}},
}};
inline constexpr Text kOtherControl{Both{"Controller "}};

/// Name of a controller, or of kBendControl or kPressureControl; "Controller 3" where it has none.
inline std::string ControlName(std::uint16_t control, Language language) {
    const auto* found = std::ranges::find(kControlNames, control, &ControlNameText::control);
    return found != kControlNames.end()
               ? std::string(found->name.In(language))
               : std::string(kOtherControl.In(language)) + std::to_string(control);
}

} // namespace tracksmith::song
