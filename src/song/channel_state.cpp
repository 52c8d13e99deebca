#include "song/channel_state.h"

#include "song/shared_byte.h"

namespace tracksmith::song {
namespace {

bool SetsValue(std::uint8_t controller) {
    return controller < kFirstModeMessage && controller != kDataIncrement &&
           controller != kDataDecrement;
}

// A value that was never set need not be put back.
void PutBack(Setting& setting, std::uint16_t value) {
    if (setting.Known()) {
        setting = {value, {}};
    }
}

} // namespace

void ChannelControls::Take(ConstEventLink event) {
    if (event->length > 0) {
        Take(event->Command(), ReadShared(event->data1) & 0x7F, ReadShared(event->data2) & 0x7F,
             event);
    }
}

void ChannelControls::Take(std::uint8_t command, std::uint8_t data1, std::uint8_t data2,
                           ConstEventLink event) {
    switch (command) {
        case kControlChange:
            TakeController(event, data1, data2);
            break;
        case kProgramChange:
            program = {data1, event};
            programBankMsb = controllers[kBankMsb];
            programBankLsb = controllers[kBankLsb];
            break;
        case kChannelPressure:
            pressure = {data1, event};
            break;
        case kPitchBend:
            bend = {static_cast<std::uint16_t>(data1 | (data2 << 7)), event};
            break;
        default:
            break;
    }
}

void ChannelControls::TakeController(ConstEventLink event, std::uint8_t controller,
                                     std::uint8_t value) {
    if (SetsValue(controller)) {
        controllers.at(controller) = {value, event};
    }
    if (controller == kResetAllControllers) {
        ResetControllers();
    } else if (controller >= kNonRegisteredLsb && controller <= kRegisteredMsb) {
        registered = controller >= kRegisteredLsb;
    }
}

// As MIDI's recommended practice RP-015 says: bank, volume, pan, sound and effect controllers and
// the values of parameters stay.
void ChannelControls::ResetControllers() {
    for (const std::uint8_t controller :
         {kModulation, kSustain, kPortamento, kSostenuto, kSoftPedal}) {
        PutBack(controllers.at(controller), 0);
    }
    PutBack(controllers[kExpression], 127);
    for (const std::uint8_t controller :
         {kNonRegisteredLsb, kNonRegisteredMsb, kRegisteredLsb, kRegisteredMsb}) {
        PutBack(controllers.at(controller), kNoParameter);
    }
    PutBack(bend, kBendCentre);
    PutBack(pressure, 0);
}

ParameterNumber ChannelControls::Selected() const {
    const Setting& msb = controllers[registered ? kRegisteredMsb : kNonRegisteredMsb];
    const Setting& lsb = controllers[registered ? kRegisteredLsb : kNonRegisteredLsb];
    if (!msb.Known() || !lsb.Known()) {
        return {};
    }
    return {registered, static_cast<std::uint8_t>(msb.value), static_cast<std::uint8_t>(lsb.value)};
}

void ChannelState::Take(ConstEventLink event) {
    if (event->length > 0) {
        Take(event->Command(), ReadShared(event->data1) & 0x7F, ReadShared(event->data2) & 0x7F,
             event);
    }
}

void ChannelState::Take(std::uint8_t command, std::uint8_t data1, std::uint8_t data2,
                        ConstEventLink event) {
    ChannelControls::Take(command, data1, data2, event);
    const bool dataEntry = data1 == kDataMsb || data1 == kDataLsb;
    const ParameterNumber selected = Selected();
    if (command == kControlChange && dataEntry && selected.Selects()) {
        parameters.Enter(selected, data1 == kDataMsb, controllers.at(data1));
    }
}

void ChannelState::Clear() {
    static_cast<ChannelControls&>(*this) = {};
    parameters.Clear();
}

} // namespace tracksmith::song
