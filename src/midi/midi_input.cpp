#include "midi/midi_input.h"

#include <exception>
#include <utility>

#include "midi/abandoned.h"
#include "midi/driver_callback.h"
#include "midi/errors.h"

namespace tracksmith::midi {

TMidiInput::TMidiInput(MidiInputDriver& driver)
    : driver_(driver), numDevs_(driver.DeviceCount()), window_(MakeWindow()) {
    if (numDevs_ > 0) {
        SetDeviceID(0);
    }
    state_ = MidiInputState::misClosed;
}

TMidiInput::~TMidiInput() {
    try {
        Close();
    } catch (const std::exception&) {
        // The port is closed all the same
    }
    state_ = MidiInputState::misDestroying;
}

std::unique_ptr<PortWindow> TMidiInput::MakeWindow() {
    return std::make_unique<PortWindow>([this](std::uint32_t message) { MidiInput(message); });
}

void TMidiInput::Check(ResultCode code) {
    error_ = static_cast<std::uint16_t>(code);
    if (code != kNoError) {
        throw EMidiInputError(MidiInErrorString(code));
    }
}

void TMidiInput::RequireClosed(std::string_view text) const {
    if (IsOpen()) {
        throw EMidiInputError(std::string(text));
    }
}

bool TMidiInput::Open() {
    if (IsOpen()) {
        return true;
    }
    FillCtlInfo();
    Check(driver_.Open(deviceId_, &DriverNotification, ctlInfo_.get(), handle_));
    try {
        LendBuffers();
    } catch (...) {
        Disconnect();
        throw;
    }
    state_ = MidiInputState::misOpen;
    return true;
}

void TMidiInput::FillCtlInfo() {
    if (queue_ == nullptr) {
        queue_ = std::make_unique<InputQueue>(capacity_);
    }
    if (ctlInfo_ == nullptr) {
        ctlInfo_ = MakeCtlInfo();
    }
    ctlInfo_->PBuffer = queue_.get();
    ctlInfo_->hWindow = window_.get();
    ctlInfo_->SysexOnly = sysexOnly_ ? 1 : 0;
    ctlInfo_->FilterMTC = filteredMessages_.contains(TMidiMsg::msgMidiTimeCode) ? 1 : 0;
    ctlInfo_->FilterAS = filteredMessages_.contains(TMidiMsg::msgActiveSensing) ? 1 : 0;
}

void TMidiInput::LendBuffers() {
    for (std::uint16_t i = 0; i < sysexBufferCount_; ++i) {
        midiHdrs_.push_back(std::make_unique<TMyMidiHdr>(sysexBufferSize_));
        Check(driver_.PrepareHeader(handle_, midiHdrs_.back()->Header()));
    }
    for (const auto& header : midiHdrs_) {
        Check(driver_.AddBuffer(handle_, header->Header()));
    }
}

void TMidiInput::Start() {
    if (IsOpen()) {
        Check(driver_.Start(handle_));
    }
}

void TMidiInput::Stop() {
    if (IsOpen()) {
        Check(driver_.Stop(handle_));
    }
}

void TMidiInput::Close() {
    if (IsOpen()) {
        state_ = MidiInputState::misClosed;
        Check(Disconnect());
    }
}

/// Gives everything back that Open took, as far as the driver lets go of it. Returns the first
/// failure.
ResultCode TMidiInput::Disconnect() {
    const ResultCode reset = driver_.Reset(handle_);
    const ResultCode released = ReleaseBuffers();
    const ResultCode closed = driver_.Close(handle_);
    handle_ = 0;
    if (closed != kNoError) {
        AbandonConnection();
    }
    queue_.reset();
    if (reset != kNoError) {
        return reset;
    }
    return released != kNoError ? released : closed;
}

ResultCode TMidiInput::ReleaseBuffers() {
    ResultCode result = kNoError;
    for (auto& header : std::exchange(midiHdrs_, {})) {
        const ResultCode unprepared = driver_.UnprepareHeader(handle_, header->Header());
        if (unprepared == kStillPlaying) {
            Abandon(std::move(header));
        }
        result = result != kNoError ? result : unprepared;
    }
    return result;
}

/// A driver that could not close may still call back: it keeps what it was given, and the next Open
/// starts afresh.
void TMidiInput::AbandonConnection() {
    window_->Detach();
    Abandon(std::exchange(window_, MakeWindow()));
    Abandon(std::move(queue_));
    Abandon(std::shared_ptr<TMidiCtlInfo>(std::move(ctlInfo_)));
}

bool TMidiInput::OpenAndStart() {
    Open();
    Start();
    return true;
}

void TMidiInput::StopAndClose() {
    Stop();
    Close();
}

bool TMidiInput::ChangeDevice(std::uint32_t newDeviceID, bool openAndStartAfterChange) {
    if (state_ != MidiInputState::misClosed) {
        Close();
    }
    SetDeviceID(newDeviceID);
    return openAndStartAfterChange && OpenAndStart();
}

std::unique_ptr<TMyMidiEvent> TMidiInput::GetMidiEvent() {
    QueueEntry entry;
    if (!IsOpen() || !queue_->Take(entry)) {
        return nullptr;
    }
    auto event = std::make_unique<TMyMidiEvent>();
    event->Time = static_cast<std::uint32_t>(entry.time);
    if (entry.header != nullptr) {
        ReadLong(*entry.header, *event);
    } else {
        event->MidiMessage = static_cast<std::uint8_t>(entry.shortData);
        event->Data1 = static_cast<std::uint8_t>(entry.shortData >> 8);
        event->Data2 = static_cast<std::uint8_t>(entry.shortData >> 16);
    }
    return event;
}

/// Copies what a buffer received and lends the buffer again.
void TMidiInput::ReadLong(MidiHeader& header, TMyMidiEvent& event) {
    event.MidiMessage = 0xF0;
    event.SetSysex(header.data, static_cast<std::uint16_t>(header.bytesRecorded));
    header.bytesRecorded = 0;
    Check(driver_.PrepareHeader(handle_, header));
    Check(driver_.AddBuffer(handle_, header));
}

void TMidiInput::FlushQueue() {
    while (MessageCount() > 0) {
        GetMidiEvent();
    }
}

/// The port's own thread: something has been queued or lost.
void TMidiInput::MidiInput(std::uint32_t message) {
    if (!IsOpen()) {
        return;
    }
    if (message == kInputData && onMidiInput_ && MessageCount() > 0) {
        onMidiInput_(*this);
    } else if (message == kInputOverflow && onOverflow_) {
        onOverflow_(*this);
    }
}

} // namespace tracksmith::midi
