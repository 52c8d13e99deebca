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

void TMidiPlayer::MidiInputXMidiInput(const midi::TMyMidiEvent& event) {
    if (thruOn_) {
        thru_.Forward(event);
    }
}

} // namespace tracksmith::player
