#include "app/connection_test.h"

#include <algorithm>
#include <utility>

#include "song/midi_numbers.h"

namespace tracksmith::app {
namespace {

constexpr std::uint8_t kMiddleC = 60;
constexpr std::uint8_t kVelocity = 100;

std::optional<PlayedKey> KeyOf(const midi::TMyMidiEvent& event) {
    const auto command = static_cast<std::uint8_t>(event.MidiMessage & 0xF0U);
    if (event.SysexLength > 0 || (command != song::kNoteOn && command != song::kNoteOff)) {
        return std::nullopt;
    }
    const bool begins = command == song::kNoteOn;
    return PlayedKey{.channel = static_cast<std::uint8_t>(event.MidiMessage & 0x0FU),
                     .key = static_cast<std::uint8_t>(event.Data1 & 0x7FU),
                     .velocity = static_cast<std::uint8_t>(begins ? event.Data2 & 0x7FU : 0)};
}

} // namespace

ConnectionTest::~ConnectionTest() {
    EndNote();
    EndListening();
}

bool ConnectionTest::Listen(const std::string& output, const std::string& input,
                            Listener listener) {
    EndListening();
    const std::string name = FindInput(player_, input, output);
    if (name.empty()) {
        return false;
    }
    player_.SetInputListener(this, [tell = std::move(listener)](const midi::TMyMidiEvent& event) {
        if (const auto key = KeyOf(event)) {
            tell(*key);
        }
    });
    return input_.Borrow(name);
}

void ConnectionTest::EndListening() {
    player_.SetInputListener(this, nullptr);
    input_.Return();
}

bool ConnectionTest::BeginNote(const std::string& output) {
    EndNote();
    const auto outputs = player_.OutputDevices();
    const auto found = std::ranges::find(outputs, output, &player::OutputDevice::productName);
    if (found == outputs.end() || !player_.OpenPort(found->port) ||
        !player_.SendMidiData(found->port, song::kNoteOn, kMiddleC, kVelocity)) {
        return false;
    }
    sounding_ = found->port;
    return true;
}

void ConnectionTest::EndNote() {
    if (sounding_) {
        player_.SendMidiData(*std::exchange(sounding_, std::nullopt), song::kNoteOff, kMiddleC, 0);
    }
}

} // namespace tracksmith::app
