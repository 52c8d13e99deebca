#include "player/chase_messages.h"

namespace tracksmith::player {
namespace {

/// Sends the messages of one channel, unknown values left out.
class ChannelMessages {
public:
    ChannelMessages(std::size_t channel, const EventSender& sender)
        : channel_(channel), sender_(sender) {}

    void Controller(std::uint8_t controller, std::uint8_t value) const {
        if (value != kUnknown) {
            sender_.SendChannel(channel_, song::kControlChange, controller, value);
        }
    }
    void Message(std::uint8_t command, std::uint8_t data1, std::uint8_t data2 = 0) const {
        if (data1 != kUnknown && data2 != kUnknown) {
            sender_.SendChannel(channel_, command, data1, data2);
        }
    }
    void Bank(const BankSelect& bank) const {
        Controller(0, bank.msb);
        Controller(32, bank.lsb);
    }
    void Selection(const ParameterValue& parameter) const {
        Controller(parameter.registered ? 101 : 99, parameter.msb);
        Controller(parameter.registered ? 100 : 98, parameter.lsb);
    }

private:
    std::size_t channel_;
    const EventSender& sender_;
};

void SendVoice(const ChannelChase& chase, const ChannelMessages& messages) {
    if (chase.program == kUnknown) {
        messages.Bank(chase.bank);
        return;
    }
    messages.Bank(chase.programBank);
    messages.Message(song::kProgramChange, chase.program);
    // Chosen since, for a program change that is still to come.
    if (chase.bank != chase.programBank) {
        messages.Bank(chase.bank);
    }
}

void SendParameters(const ChannelChase& chase, const ChannelMessages& messages) {
    for (const ParameterValue& parameter : chase.parameters) {
        messages.Selection(parameter);
        messages.Controller(6, parameter.dataMsb);
        messages.Controller(38, parameter.dataLsb);
    }
    messages.Selection(chase.selected);
}

} // namespace

void SendSetUp(const ChaseMemory& memory, const EventSender& sender) {
    for (const song::ConstEventLink event : memory.setUp) {
        sender.SendSysex(*event);
    }
}

void SendChannelChase(const ChannelChase& chase, std::size_t channel, const EventSender& sender) {
    const ChannelMessages messages(channel, sender);
    SendVoice(chase, messages);
    for (std::size_t controller = 0; controller < chase.values.size(); ++controller) {
        messages.Controller(static_cast<std::uint8_t>(controller), chase.values[controller]);
    }
    SendParameters(chase, messages);
    messages.Message(song::kPitchBend, chase.bendLow, chase.bendHigh);
    messages.Message(song::kChannelPressure, chase.pressure);
}

} // namespace tracksmith::player
