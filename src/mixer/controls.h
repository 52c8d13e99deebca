#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

/// The controls of the mixer's strips.
namespace tracksmith::mixer {

/// A slider of a strip. Each stands for one controller of MIDI 1.0 or of the Sound Controllers
/// (RP-021); the order is that of the strips.
enum class Control : std::uint8_t {
    Volume,
    Pan,
    Expression,
    Reverb,
    Chorus,
    Harmonic,
    Release,
    Attack,
    Brightness,
    Variation
};

inline constexpr std::size_t kControls = 10;

/// Every control in order.
inline constexpr std::array<Control, kControls> kAllControls{
    Control::Volume,     Control::Pan,      Control::Expression, Control::Reverb,
    Control::Chorus,     Control::Harmonic, Control::Release,    Control::Attack,
    Control::Brightness, Control::Variation};

/// The place of a control in arrays of all controls.
constexpr std::size_t IndexOf(Control control) {
    return static_cast<std::size_t>(control);
}

/// The number of its controller.
constexpr std::uint8_t ControllerOf(Control control) {
    constexpr std::array<std::uint8_t, kControls> kNumbers{7, 10, 11, 91, 93, 71, 72, 73, 74, 94};
    return kNumbers[IndexOf(control)];
}

/// The control of a controller (0-127); none for controllers that no strip has.
constexpr std::optional<Control> ControlOf(std::uint8_t controller) {
    for (const Control control : kAllControls) {
        if (ControllerOf(control) == controller) {
            return control;
        }
    }
    return std::nullopt;
}

/// The value that instruments start with (GM level 1, RP-003, and RP-023 for the sends); shown
/// where the song sets none.
constexpr std::uint8_t UsualValue(Control control) {
    constexpr std::array<std::uint8_t, kControls> kValues{100, 64, 127, 40, 0, 64, 64, 64, 64, 0};
    return kValues[IndexOf(control)];
}

/// The control moves something to both sides of a middle at 64.
constexpr bool IsBipolar(Control control) {
    return UsualValue(control) == 64;
}

} // namespace tracksmith::mixer
