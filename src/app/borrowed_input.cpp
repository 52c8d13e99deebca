#include "app/borrowed_input.h"

#include <algorithm>
#include <utility>

#include "midi/port_name.h"

namespace tracksmith::app {

std::string FindInput(const player::TMidiPlayer& player, const std::string& wanted,
                      const std::string& output) {
    const auto& inputs = player.InputDevices();
    const std::string& name = wanted.empty() ? output : wanted;
    const auto exact = std::ranges::find(inputs, name, &player::InputDevice::productName);
    if (exact != inputs.end()) {
        return exact->productName;
    }
    const auto similar = std::ranges::find_if(inputs, [&](const player::InputDevice& input) {
        return midi::NormalisedPortName(input.productName) == midi::NormalisedPortName(name);
    });
    if (similar != inputs.end()) {
        return similar->productName;
    }
    return wanted.empty() && inputs.size() == 1 ? inputs.front().productName : std::string();
}

bool BorrowedInput::Borrow(const std::string& name) {
    Return();
    const auto selected = player_.SelectedInput();
    if (!selected || player_.InputDevices()[*selected].productName != name) {
        former_ = player_.ChosenInput();
        borrowed_ = name;
        player_.SelectInput(name);
    }
    return player_.ConnectMidiInPort();
}

void BorrowedInput::Return() {
    if (!former_) {
        return;
    }
    const std::string former = *std::exchange(former_, std::nullopt);
    if (player_.ChosenInput() != borrowed_) {
        return;
    }
    player_.SelectInput(former);
    if (!former.empty()) {
        player_.ConnectMidiInPort();
    }
}

} // namespace tracksmith::app
