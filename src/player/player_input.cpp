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

void TMidiPlayer::SetInputListener(std::function<void(const midi::TMyMidiEvent&)> listener) {
    inputListener_ = std::move(listener);
}

void TMidiPlayer::MidiInputXMidiInput(const midi::TMyMidiEvent& event) {
    if (thruOn_) {
        thru_.Forward(event);
    }
    if (inputListener_) {
        inputListener_(event);
    }
}

} // namespace tracksmith::player
