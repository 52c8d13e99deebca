#include "midi/errors.h"
#include "player/player.h"

// The input port of the player.

namespace tracksmith::player {

void TMidiPlayer::FindInputs(const PlayerSetup& setup) {
    if (setup.input == nullptr) {
        return;
    }
    input_ = std::make_unique<midi::TMidiInput>(*setup.input);
    input_->SetOnMidiInput([this](midi::TMidiInput& sender) { MidiInputXMidiInput(sender); });
    for (std::uint32_t device = 0; device < input_->NumDevs(); ++device) {
        midi::DeviceCapabilities capabilities;
        if (setup.input->Capabilities(device, capabilities) == midi::kNoError) {
            if (capabilities.productName == setup.storedInputName && !selectedInput_) {
                selectedInput_ = inputDevices_.size();
            }
            inputDevices_.push_back({device, capabilities.productName});
        }
    }
}

void TMidiPlayer::SelectInput(std::size_t index) {
    DisconnectMidiInPort();
    if (index < inputDevices_.size()) {
        selectedInput_ = index;
    }
}

bool TMidiPlayer::ConnectMidiInPort() {
    if (!selectedInput_) {
        return false;
    }
    try {
        if (input_->State() == midi::MidiInputState::misClosed) {
            input_->SetProductName(inputDevices_[*selectedInput_].productName);
        }
        return input_->OpenAndStart();
    } catch (const midi::EMidiInputError& error) {
        host_->ShowMessage(error.what());
        return false;
    }
}

void TMidiPlayer::DisconnectMidiInPort() {
    thru_.ReleaseKeys();
    try {
        if (input_) {
            input_->StopAndClose();
        }
    } catch (const midi::EMidiInputError&) {
        // The port is closed all the same.
    }
}

void TMidiPlayer::SetMidiThru(bool on) {
    thruOn_ = on;
    if (!on) {
        thru_.ReleaseKeys();
    }
}

void TMidiPlayer::MidiInputXMidiInput(midi::TMidiInput& sender) {
    try {
        while (const auto event = sender.GetMidiEvent()) {
            if (thruOn_) {
                thru_.Forward(*event);
            }
        }
    } catch (const midi::EMidiInputError& error) {
        host_->ShowMessage(error.what());
    }
}

} // namespace tracksmith::player
