#include "player/chase_messages.h"

namespace tracksmith::player {
namespace {

/// Sends the messages of one channel, values that nothing has set left out.
class ChannelMessages {
public:
    ChannelMessages(std::size_t channel, const EventSender& sender)
        : channel_(channel), sender_(sender) {}

    void Controller(std::uint8_t controller, const song::Setting& setting) const {
        if (setting.Known()) {
            Send(song::kControlChange, controller, setting.value);
        }
    }
    void Message(std::uint8_t command, const song::Setting& setting) const {
        if (setting.Known()) {
            Send(command, setting.value & 0x7FU, setting.value >> 7U);
        }
    }
    void Parameter(const song::ParameterSetting& parameter) const {
        const song::ParameterNumber& number = parameter.number;
        const bool registered = number.registered;
        Send(song::kControlChange, registered ? song::kRegisteredMsb : song::kNonRegisteredMsb,
             number.msb);
        Send(song::kControlChange, registered ? song::kRegisteredLsb : song::kNonRegisteredLsb,
             number.lsb);
        Controller(song::kDataMsb, parameter.dataMsb);
        Controller(song::kDataLsb, parameter.dataLsb);
    }

private:
    void Send(std::uint8_t command, unsigned data1, unsigned data2) const {
        sender_.SendChannel(channel_, command, static_cast<std::uint8_t>(data1),
                            static_cast<std::uint8_t>(data2));
    }

    std::size_t channel_;
    const EventSender& sender_;
};

// Controllers that are sent in an order of their own, or that act on the next note only.
bool IsSentAlone(std::uint8_t controller) {
    return controller != song::kBankMsb && controller != song::kBankLsb &&
           controller != song::kDataMsb && controller != song::kDataLsb &&
           controller != song::kPortamentoControl &&
           (controller < song::kNonRegisteredLsb || controller > song::kRegisteredMsb);
}

void SendVoice(const song::ChannelState& state, const ChannelMessages& messages) {
    const song::Setting& msb = state.controllers[song::kBankMsb];
    const song::Setting& lsb = state.controllers[song::kBankLsb];
    const bool program = state.program.Known();
    if (program) {
        messages.Controller(song::kBankMsb, state.programBankMsb);
        messages.Controller(song::kBankLsb, state.programBankLsb);
        messages.Message(song::kProgramChange, state.program);
    }
    // Chosen since, for a program change that is still to come.
    if (!program || msb.value != state.programBankMsb.value ||
        lsb.value != state.programBankLsb.value) {
        messages.Controller(song::kBankMsb, msb);
        messages.Controller(song::kBankLsb, lsb);
    }
}

void SendControllers(const song::ChannelState& state, const ChannelMessages& messages) {
    for (std::uint8_t controller = 0; controller < song::kFirstModeMessage; ++controller) {
        if (IsSentAlone(controller)) {
            messages.Controller(controller, state.controllers.at(controller));
        }
    }
}

void SendParameters(const song::ChannelState& state, const ChannelMessages& messages) {
    state.parameters.ForEach([&](const auto& parameter) { messages.Parameter(parameter); });
    for (const std::uint8_t controller :
         state.registered ? std::array{song::kRegisteredMsb, song::kRegisteredLsb}
                          : std::array{song::kNonRegisteredMsb, song::kNonRegisteredLsb}) {
        messages.Controller(controller, state.controllers.at(controller));
    }
}

} // namespace

void SendSetUp(const ChaseMemory& memory, const EventSender& sender) {
    for (const song::ConstEventLink event : memory.setUp) {
        sender.SendSysex(*event);
    }
}

void SendChannelChase(const song::ChannelState& state, std::size_t channel,
                      const EventSender& sender) {
    const ChannelMessages messages(channel, sender);
    SendVoice(state, messages);
    SendControllers(state, messages);
    SendParameters(state, messages);
    messages.Message(song::kPitchBend, state.bend);
    messages.Message(song::kChannelPressure, state.pressure);
}

} // namespace tracksmith::player
