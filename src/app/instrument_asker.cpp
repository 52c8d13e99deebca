#include "app/instrument_asker.h"

#include <algorithm>

#include "song/midi_numbers.h"

namespace tracksmith::app {
namespace {

using instruments::IdentityQuestion;
using player::OutputDevice;

const OutputDevice* Find(const std::vector<OutputDevice>& outputs, const std::string& name) {
    const auto found = std::ranges::find(outputs, name, &OutputDevice::productName);
    return found == outputs.end() ? nullptr : &*found;
}

} // namespace

AskState InstrumentAsker::Begin(const std::string& output, const std::string& input, Time now) {
    Cancel();
    result_ = {.state = AskState::Asking, .output = output, .input = {}, .answers = {}};
    const AskState opened = OpenPorts(input);
    if (opened != AskState::Asking) {
        End(opened);
        return opened;
    }
    question_.emplace(table_);
    Listen();
    return Step(now);
}

void InstrumentAsker::Cancel() {
    if (result_.state == AskState::Asking) {
        End(AskState::Cancelled);
    }
}

void InstrumentAsker::Listen() {
    player_.SetInputListener(this, [this](const midi::TMyMidiEvent& event) {
        // Of a short message only the status byte matters: it ends a message, or does not.
        const bool isLong = event.SysexLength > 0;
        question_->Take(isLong ? instruments::MessageBytes(event.Sysex, event.SysexLength)
                               : instruments::MessageBytes(&event.MidiMessage, 1),
                        now_);
    });
}

AskState InstrumentAsker::OpenPorts(const std::string& wantedInput) {
    if (player_.Playing()) {
        return AskState::Playing;
    }
    const auto outputs = player_.OutputDevices();
    const OutputDevice* output = Find(outputs, result_.output);
    if (output == nullptr) {
        return AskState::NoOutput;
    }
    if (output->softwareInstrument) {
        return AskState::BuiltIn;
    }
    port_ = output->port;
    const AskState state = OpenInput(wantedInput);
    return state == AskState::Asking ? OpenOutput() : state;
}

AskState InstrumentAsker::OpenInput(const std::string& wanted) {
    result_.input = FindInput(player_, wanted, result_.output);
    if (result_.input.empty()) {
        return AskState::NoInput;
    }
    return input_.Borrow(result_.input) ? AskState::Asking : AskState::InputFails;
}

AskState InstrumentAsker::OpenOutput() {
    return player_.OpenPort(port_) ? AskState::Asking : AskState::OutputFails;
}

AskState InstrumentAsker::Send(std::span<const std::uint8_t> data) {
    return player_.SendSysex(port_, song::kSystemExclusive, data) ? AskState::Asking
                                                                  : AskState::OutputFails;
}

// What the answers, or their absence, mean at the end.
AskState InstrumentAsker::Outcome() const {
    if (!question_->Answers().empty()) {
        return AskState::Answered;
    }
    // A port that hangs has taken the message and keeps it.
    const auto outputs = player_.OutputDevices();
    const OutputDevice* output = Find(outputs, result_.output);
    const bool isSent = output != nullptr && output->state == player::PortState::Open;
    return isSent ? AskState::NoAnswer : AskState::OutputFails;
}

AskState InstrumentAsker::Step(Time now) {
    if (result_.state != AskState::Asking) {
        return result_.state;
    }
    now_ = now;
    AskState next = AskState::Asking;
    if (player_.Playing()) {
        next = question_->Answers().empty() ? AskState::Playing : AskState::Answered;
    } else {
        switch (question_->Next(now)) {
            case IdentityQuestion::Step::SendIdentityRequest:
                next = Send(instruments::kIdentityRequest);
                break;
            case IdentityQuestion::Step::SendXgModelRequest:
                next = Send(instruments::kXgModelRequest);
                break;
            case IdentityQuestion::Step::Wait:
                break;
            case IdentityQuestion::Step::End:
                next = Outcome();
                break;
        }
    }
    if (next != AskState::Asking) {
        End(next);
    }
    return result_.state;
}

void InstrumentAsker::End(AskState state) {
    result_.state = state;
    if (question_) {
        player_.SetInputListener(this, nullptr);
        result_.answers = question_->Answers();
        question_.reset();
    }
    input_.Return();
}

} // namespace tracksmith::app
