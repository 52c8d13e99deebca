#include <utility>

#include "player/player.h"

// The input port of the player.

namespace tracksmith::player {

void TMidiPlayer::SelectInput(const std::string& productName) {
    DisconnectMidiInPort();
    input_.Select(productName);
}

bool TMidiPlayer::ConnectMidiInPort() {
    return input_.Connect();
}

void TMidiPlayer::DisconnectMidiInPort() {
    thru_.ReleaseKeys();
    input_.Disconnect();
}

void TMidiPlayer::SetMidiThru(bool on) {
    thruOn_ = on;
    if (!on) {
        thru_.ReleaseKeys();
    }
}

void TMidiPlayer::SetInputListener(const void* owner, InputListener listener) {
    if (listener) {
        inputListeners_[owner] = std::move(listener);
    } else {
        inputListeners_.erase(owner);
    }
}

void TMidiPlayer::MidiInputXMidiInput(const midi::TMyMidiEvent& event) {
    if (thruOn_) {
        thru_.Forward(event);
    }
    for (const auto& [owner, listener] : inputListeners_) {
        listener(event);
    }
}

} // namespace tracksmith::player
