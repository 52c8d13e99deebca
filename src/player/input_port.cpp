#include "player/input_port.h"

#include <algorithm>
#include <utility>

#include "midi/errors.h"
#include "midi/port_name.h"
#include "player/texts.h"

namespace tracksmith::player {

void InputPort::Create(midi::MidiInputDriver& driver, const std::string& storedName,
                       MessageHost& host) {
    driver_ = &driver;
    host_ = &host;
    selected_ = storedName;
    input_ = std::make_unique<midi::TMidiInput>(driver);
    input_->SetOnMidiInput([this](midi::TMidiInput&) { Receive(); });
    List();
}

bool InputPort::List() {
    std::vector<InputDevice> devices;
    const std::uint32_t count = driver_->DeviceCount();
    for (std::uint32_t device = 0; device < count; ++device) {
        midi::DeviceCapabilities capabilities;
        if (driver_->Capabilities(device, capabilities) == midi::kNoError) {
            devices.push_back({device, std::move(capabilities.productName)});
        }
    }
    const bool same = std::ranges::equal(devices, devices_, {}, &InputDevice::productName,
                                         &InputDevice::productName);
    devices_ = std::move(devices);
    return !same;
}

// By its name, else by what is left of it without numbers that change from day to day.
std::optional<std::size_t> InputPort::Selected() const {
    const auto find = [this](auto&& fits) -> std::optional<std::size_t> {
        const auto found = std::ranges::find_if(devices_, fits, &InputDevice::productName);
        return found == devices_.end() ? std::nullopt : std::optional(found - devices_.begin());
    };
    if (selected_.empty()) {
        return std::nullopt;
    }
    const auto exact = find([this](const std::string& name) { return name == selected_; });
    return exact ? exact : find([this](const std::string& name) {
        return midi::NormalisedPortName(name) == midi::NormalisedPortName(selected_);
    });
}

void InputPort::Select(const std::string& productName) {
    Disconnect();
    selected_ = productName;
}

bool InputPort::IsOpen() const {
    return input_ != nullptr && input_->State() == midi::MidiInputState::misOpen;
}

// Raises when the device is there and cannot be opened.
void InputPort::Open() {
    const std::optional<std::size_t> selected = Selected();
    if (!IsOpen() && selected) {
        input_->SetDeviceID(devices_[*selected].device);
        input_->OpenAndStart();
    }
}

bool InputPort::Connect() {
    wanted_ = true;
    try {
        Open();
    } catch (const midi::EMidiInputError& error) {
        host_->ShowMessage(error.what());
    }
    return IsOpen();
}

void InputPort::Disconnect() {
    wanted_ = false;
    Close();
}

void InputPort::Close() {
    try {
        if (input_) {
            input_->Close();
        }
    } catch (const midi::EMidiInputError&) {
        // The port is closed all the same.
    }
}

bool InputPort::Check() {
    if (input_ == nullptr) {
        return false;
    }
    const bool changed = List();
    if (IsOpen() && !Selected()) {
        Close();
        host_->ShowMessage(texts::OfPort(texts::kInputLost, host_->CurrentLanguage(), selected_));
    } else if (wanted_) {
        try {
            Open();
        } catch (const midi::EMidiInputError&) {
            // Told when it was asked for; it is tried again.
        }
    }
    return changed;
}

void InputPort::Receive() {
    try {
        while (const auto event = input_->GetMidiEvent()) {
            onEvent_(*event);
        }
    } catch (const midi::EMidiInputError& error) {
        host_->ShowMessage(error.what());
    }
}

} // namespace tracksmith::player
