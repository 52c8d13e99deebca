#include "midi/midi_output.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "midi/abandoned.h"
#include "midi/driver_callback.h"
#include "midi/errors.h"
#include "midi/texts.h"

namespace tracksmith::midi {
namespace {

/// Longest time that Close waits for headers to come back.
constexpr std::chrono::milliseconds kLongestWait{500};
/// Length of the longest message whose header every driver takes.
constexpr std::size_t kLongestMessage = 65'535;

} // namespace

TMidiOutput::TMidiOutput(MidiOutputDriver& driver)
    : driver_(driver),
      numDevs_(driver.DeviceCount()),
      window_(
          std::make_unique<PortWindow>([this](std::uint32_t message) { MidiOutput(message); })) {}

TMidiOutput::~TMidiOutput() {
    try {
        TMidiOutput::Close();
    } catch (const std::exception&) {
        // The port is closed all the same
    }
    for (auto& header : inFlight_.TakeAll()) {
        Abandon(std::move(header));
    }
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
    if (ctlInfo_ == nullptr) {
        ctlInfo_ = MakeCtlInfo();
    }
    ctlInfo_->hWindow = window_.get();
    DeviceHandle handle = 0;
    Check(OutputOperation::Other,
          driver_.Open(deviceId_, &DriverNotification, ctlInfo_.get(), handle));
    handle_ = handle;
    state_ = MidiOutputState::mosOpen;
    return true;
}

bool TMidiOutput::Close() {
    if (state_ == MidiOutputState::mosOpen) {
        const ResultCode ended = EndTransfers();
        const ResultCode closed = driver_.Close(handle_);
        state_ = MidiOutputState::mosClosed;
        handle_ = 0;
        if (closed != kNoError) {
            AbandonConnection();
        }
        Check(OutputOperation::Other, ended != kNoError ? ended : closed);
    }
    return true;
}

/// Silences the device if wanted and gets back the headers that the driver has. What it keeps is
/// left to it.
ResultCode TMidiOutput::EndTransfers() {
    ReleaseCompleted();
    if (!useFullReset_ && inFlight_.Empty()) {
        return kNoError;
    }
    const ResultCode result = driver_.Reset(handle_);
    const auto deadline = std::chrono::steady_clock::now() + kLongestWait;
    ReleaseCompleted();
    while (!inFlight_.Empty() && window_->WaitForCompleted(deadline)) {
        ReleaseCompleted();
    }
    for (auto& header : inFlight_.TakeAll()) {
        Abandon(std::move(header));
    }
    return result;
}

/// A driver that could not close may still call back: it keeps what it was given, and the next Open
/// starts afresh.
void TMidiOutput::AbandonConnection() {
    auto window =
        std::make_unique<PortWindow>([this](std::uint32_t message) { MidiOutput(message); });
    window_->Detach();
    Abandon(std::exchange(window_, std::move(window)));
    Abandon(std::shared_ptr<TMidiCtlInfo>(std::move(ctlInfo_)));
}

void TMidiOutput::PutShort(std::uint8_t midiMessage, std::uint8_t data1, std::uint8_t data2) {
    RequireOpen(texts::kShortNotOpen.english);
    const std::uint32_t packed =
        midiMessage | std::uint32_t{data1} << 8 | std::uint32_t{data2} << 16;
    Check(OutputOperation::ShortMessage, driver_.ShortMessage(handle_, packed));
}

void TMidiOutput::PutLong(const std::uint8_t* theSysex, std::uint16_t msgLength) {
    RequireOpen(texts::kLongNotOpen.english);
    auto header = std::make_unique<TMyMidiHdr>(msgLength);
    std::copy_n(theSysex, msgLength, header->sysexPointer);
    Submit(std::move(header));
}

void TMidiOutput::PutLong(std::span<const std::uint8_t> theSysex) {
    if (theSysex.size() > kLongestMessage) {
        RequireOpen(texts::kLongNotOpen.english);
        Check(OutputOperation::PrepareHeader, kInvalidParameter);
    }
    PutLong(theSysex.data(), static_cast<std::uint16_t>(theSysex.size()));
}

void TMidiOutput::Submit(std::unique_ptr<TMyMidiHdr> header) {
    MidiHeader& lent = header->Header();
    Check(OutputOperation::PrepareHeader, driver_.PrepareHeader(handle_, lent));
    // From a success on the header may be released at any moment by the port's own thread
    const TMyMidiHdr* listed = header.get();
    inFlight_.Add(std::move(header));
    const ResultCode result = driver_.LongMessage(handle_, lent);
    if (result != kNoError) {
        driver_.UnprepareHeader(handle_, lent);
        inFlight_.Take(listed);
    }
    Check(OutputOperation::LongMessage, result);
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
    Check(OutputOperation::Caching, driver_.CachePatches(handle_, bank, patchArray, operationFlag));
    return true;
}

bool TMidiOutput::CacheDrumPatches(std::uint16_t patch,
                                   std::span<const std::uint16_t, 128> keyArray,
                                   std::uint32_t operationFlag) {
    Check(OutputOperation::Caching,
          driver_.CacheDrumPatches(handle_, patch, keyArray, operationFlag));
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
    return driver_.Message(handle_, msg, param1, param2);
}

/// The port's own thread: something came back from the driver.
void TMidiOutput::MidiOutput(std::uint32_t message) {
    if (message != kOutputDone) {
        return;
    }
    for (std::size_t count = ReleaseCompleted(); count > 0; --count) {
        if (onMidiOutput_) {
            onMidiOutput_(*this);
        }
    }
}

/// Frees the headers that came back; returns their number.
std::size_t TMidiOutput::ReleaseCompleted() {
    std::size_t count = 0;
    while (TMyMidiHdr* completed = window_->TakeCompleted()) {
        auto header = inFlight_.Take(completed);
        if (header == nullptr) {
            continue;
        }
        const ResultCode result = driver_.UnprepareHeader(handle_, header->Header());
        if (result != kNoError) {
            error_ = result;
        }
        if (result == kStillPlaying) {
            Abandon(std::move(header));
        }
        ++count;
    }
    return count;
}

} // namespace tracksmith::midi
