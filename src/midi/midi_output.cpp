#include "midi/midi_output.h"

#include <algorithm>
#include <new>
#include <utility>

#include "midi/errors.h"
#include "midi/texts.h"

namespace tracksmith::midi {
namespace {

/// Length of the longest message whose header every driver takes.
constexpr std::size_t kLongestMessage = 65'535;

} // namespace

TMidiOutput::TMidiOutput(MidiOutputDriver& driver)
    : driver_(driver), numDevs_(driver.DeviceCount()), link_(MakeLink()) {}

TMidiOutput::~TMidiOutput() {
    try {
        TMidiOutput::Close();
    } catch (const std::exception&) {
        // The port is closed all the same
    }
}

std::unique_ptr<OutputLink> TMidiOutput::MakeLink() {
    return std::make_unique<OutputLink>(driver_,
                                        [this](std::uint32_t message) { MidiOutput(message); });
}

void TMidiOutput::Check(OutputOperation operation, ResultCode code) {
    error_ = code;
    if (code != kNoError) {
        throw EMidiOutputError(OutputErrorText(operation, code, driver_));
    }
}

void TMidiOutput::RequireOpen(std::string_view text) const {
    if (state_ != MidiOutputState::mosOpen) {
        throw EMidiOutputError(std::string(text));
    }
}

void TMidiOutput::RequireClosed(std::string_view text) const {
    if (state_ == MidiOutputState::mosOpen) {
        throw EMidiOutputError(std::string(text));
    }
}

bool TMidiOutput::Open() {
    if (state_ == MidiOutputState::mosOpen) {
        return true;
    }
    Check(OutputOperation::Other, link_->Open(deviceId_));
    state_ = MidiOutputState::mosOpen;
    return true;
}

bool TMidiOutput::Close() {
    if (state_ == MidiOutputState::mosOpen) {
        const ResultCode result = link_->Close(useFullReset_);
        state_ = MidiOutputState::mosClosed;
        if (!link_->Reusable()) {
            link_ = MakeLink();
        }
        Check(OutputOperation::Other, result);
    }
    return true;
}

std::unique_ptr<OutputLink> TMidiOutput::Detach() {
    if (state_ == MidiOutputState::mosClosed) {
        return nullptr;
    }
    state_ = MidiOutputState::mosClosed;
    link_->StopPosting();
    return std::exchange(link_, MakeLink());
}

void TMidiOutput::PutShort(std::uint8_t midiMessage, std::uint8_t data1, std::uint8_t data2) {
    RequireOpen(texts::kShortNotOpen.english);
    Check(OutputOperation::ShortMessage, TryShort(midiMessage, data1, data2));
}

ResultCode TMidiOutput::TryShort(std::uint8_t midiMessage, std::uint8_t data1,
                                 std::uint8_t data2) noexcept {
    if (state_ != MidiOutputState::mosOpen) {
        return kInvalidHandle;
    }
    const std::uint32_t packed =
        midiMessage | std::uint32_t{data1} << 8 | std::uint32_t{data2} << 16;
    return driver_.ShortMessage(link_->Handle(), packed);
}

void TMidiOutput::PutLong(const std::uint8_t* theSysex, std::uint16_t msgLength) {
    RequireOpen(texts::kLongNotOpen.english);
    OutputOperation operation = OutputOperation::PrepareHeader;
    const ResultCode result = SendLong(std::span(theSysex, msgLength), operation);
    Check(operation, result);
}

void TMidiOutput::PutLong(std::span<const std::uint8_t> theSysex) {
    if (theSysex.size() > kLongestMessage) {
        RequireOpen(texts::kLongNotOpen.english);
        Check(OutputOperation::PrepareHeader, kInvalidParameter);
    }
    PutLong(theSysex.data(), static_cast<std::uint16_t>(theSysex.size()));
}

ResultCode TMidiOutput::TryLong(std::span<const std::uint8_t> theSysex) noexcept {
    if (state_ != MidiOutputState::mosOpen) {
        return kInvalidHandle;
    }
    try {
        OutputOperation operation = OutputOperation::PrepareHeader;
        return SendLong(theSysex, operation);
    } catch (const std::bad_alloc&) {
        return kNoMemory;
    }
}

/// `operation` says which call the result is from.
ResultCode TMidiOutput::SendLong(std::span<const std::uint8_t> bytes, OutputOperation& operation) {
    operation = OutputOperation::PrepareHeader;
    if (bytes.size() > kLongestMessage) {
        return kInvalidParameter;
    }
    auto header = std::make_unique<TMyMidiHdr>(static_cast<std::uint32_t>(bytes.size()));
    std::ranges::copy(bytes, header->sysexPointer);
    const ResultCode prepared = link_->Prepare(*header);
    if (prepared != kNoError) {
        return prepared;
    }
    operation = OutputOperation::LongMessage;
    return link_->Submit(std::move(header));
}

void TMidiOutput::PutMidiEvent(const TMyMidiEvent& theEvent) {
    RequireOpen(texts::kOutputNotOpen.english);
    if (theEvent.Sysex != nullptr) {
        PutLong(theEvent.Sysex, theEvent.SysexLength);
    } else {
        PutShort(theEvent.MidiMessage, theEvent.Data1, theEvent.Data2);
    }
}

void TMidiOutput::PutChannel(std::uint8_t status, std::uint8_t channel, std::uint8_t data1,
                             std::uint8_t data2) {
    PutShort(static_cast<std::uint8_t>(status | (channel & 0x0F)), data1, data2);
}

void TMidiOutput::NoteOn(std::uint8_t channel, std::uint8_t note, std::uint8_t dynamics) {
    PutChannel(0x90, channel, note, dynamics);
}

void TMidiOutput::NoteOff(std::uint8_t channel, std::uint8_t note, std::uint8_t dynamics) {
    PutChannel(0x80, channel, note, dynamics);
}

void TMidiOutput::NoteAftertouch(std::uint8_t channel, std::uint8_t note,
                                 std::uint8_t newDynamics) {
    PutChannel(0xA0, channel, note, newDynamics);
}

void TMidiOutput::ControllerChange(std::uint8_t channel, std::uint8_t newController,
                                   std::uint8_t value) {
    PutChannel(0xB0, channel, newController, value);
}

void TMidiOutput::ProgramChange(std::uint8_t channel, std::uint8_t newProgram) {
    PutChannel(0xC0, channel, newProgram, 0);
}

void TMidiOutput::ChannelAftertouch(std::uint8_t channel, std::uint8_t newDynamics) {
    PutChannel(0xD0, channel, newDynamics, 0);
}

void TMidiOutput::ChangeInstrument(std::uint8_t channel, TGMInstrumentPatch newInstrument) {
    ProgramChange(channel, static_cast<std::uint8_t>(newInstrument));
}

bool TMidiOutput::CachePatches(std::uint16_t bank, std::span<const std::uint16_t, 128> patchArray,
                               std::uint32_t operationFlag) {
    Check(OutputOperation::Caching,
          driver_.CachePatches(link_->Handle(), bank, patchArray, operationFlag));
    return true;
}

bool TMidiOutput::CacheDrumPatches(std::uint16_t patch,
                                   std::span<const std::uint16_t, 128> keyArray,
                                   std::uint32_t operationFlag) {
    Check(OutputOperation::Caching,
          driver_.CacheDrumPatches(link_->Handle(), patch, keyArray, operationFlag));
    return true;
}

void TMidiOutput::GetVolume(std::uint16_t& left, std::uint16_t& right) {
    std::uint32_t volume = 0;
    Check(OutputOperation::Other, driver_.GetVolume(deviceId_, volume));
    left = static_cast<std::uint16_t>(volume >> 16);
    right = SupportsStereoVolumeControl() ? static_cast<std::uint16_t>(volume) : left;
}

std::uint16_t TMidiOutput::GetVolume() {
    std::uint16_t left = 0;
    std::uint16_t right = 0;
    GetVolume(left, right);
    return left;
}

void TMidiOutput::SetVolume(std::uint16_t left, std::uint16_t right) {
    const std::uint16_t sent = SupportsStereoVolumeControl() ? right : left;
    Check(OutputOperation::Other,
          driver_.SetVolume(deviceId_, std::uint32_t{left} << 16 | std::uint32_t{sent}));
}

void TMidiOutput::SetVolume(std::uint16_t monoVolume) {
    SetVolume(monoVolume, monoVolume);
}

ResultCode TMidiOutput::DriverMidiMessage(std::uint32_t msg, std::uintptr_t param1,
                                          std::uintptr_t param2) {
    return driver_.Message(link_->Handle(), msg, param1, param2);
}

/// The port's own thread: something came back from the driver.
void TMidiOutput::MidiOutput(std::uint32_t message) {
    if (message != kOutputDone) {
        return;
    }
    ResultCode failure = kNoError;
    const std::size_t released = link_->ReleaseCompleted(failure);
    if (failure != kNoError) {
        error_ = failure;
    }
    for (std::size_t count = released; count > 0; --count) {
        if (onMidiOutput_) {
            onMidiOutput_(*this);
        }
    }
}

} // namespace tracksmith::midi
