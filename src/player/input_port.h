#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/message_host.h"

#include "midi/midi_input.h"

namespace tracksmith::player {

/// An input device in the list that the user chooses from.
struct InputDevice {
    std::uint32_t device = 0;
    std::string productName;
};

/// The input device that the user has chosen, known by its name: it may go and come back, or come
/// only later. Owner's thread.
class InputPort {
public:
    /// `onEvent` is called for every received message, on the owner's thread.
    explicit InputPort(std::function<void(const midi::TMyMidiEvent&)> onEvent)
        : onEvent_(std::move(onEvent)) {}

    /// Lists the devices. Driver and host must outlive the port; `storedName` is the device that
    /// was chosen last.
    void Create(midi::MidiInputDriver& driver, const std::string& storedName, MessageHost& host);

    /// The devices that are there.
    const std::vector<InputDevice>& Devices() const { return devices_; }
    /// The chosen one when it is there.
    std::optional<std::size_t> Selected() const;
    /// Chooses a device by its name, whether it is there or not, and disconnects the former one.
    void Select(const std::string& productName);
    /// The name last chosen; empty for none.
    const std::string& Chosen() const { return selected_; }

    /// Begins to receive from the chosen device, as soon as it is there and until Disconnect. True
    /// when it receives already; a device that is there and cannot be opened is told of.
    bool Connect();
    void Disconnect();
    /// Lists the devices anew, notices that the connected one has gone or is back and connects it
    /// again. True when something has changed.
    bool Check();

private:
    bool IsOpen() const;
    bool List();
    void Open();
    void Close();
    void Receive();

    std::function<void(const midi::TMyMidiEvent&)> onEvent_;
    midi::MidiInputDriver* driver_ = nullptr;
    MessageHost* host_ = nullptr;
    std::unique_ptr<midi::TMidiInput> input_;
    std::vector<InputDevice> devices_;
    std::string selected_;
    bool wanted_ = false;
};

} // namespace tracksmith::player
