#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "midi/ctl_info.h"
#include "midi/input_queue.h"
#include "midi/midi_driver.h"
#include "midi/my_midi_event.h"
#include "midi/my_midi_hdr.h"
#include "midi/port_window.h"

namespace tracksmith::midi {

/// Where an input port is in its life.
enum class MidiInputState { misOpen, misClosed, misCreating, misDestroying };

/// Messages that an input port can keep out of its queue.
enum class TMidiMsg { msgActiveSensing, msgMidiTimeCode };
using TMidiMsgs = std::set<TMidiMsg>;

/// Receives from one input port of a driver into a queue.
///
/// Belongs to the thread that creates it: everything runs there, also the events. Every failing
/// call keeps its code in Error and raises EMidiInputError.
class TMidiInput {
public:
    /// Called on the creating thread with the port it comes from; must not throw.
    using TNotifyEvent = std::function<void(TMidiInput& sender)>;

    /// A closed port on the first device, when there is one. The driver must outlive it.
    explicit TMidiInput(MidiInputDriver& driver);
    TMidiInput(const TMidiInput&) = delete;
    TMidiInput& operator=(const TMidiInput&) = delete;
    /// Closes the port; failures are not told.
    ~TMidiInput();

    /// Opens the selected device and lends it the buffers; receiving begins with Start. True.
    bool Open();
    /// Begins and ends receiving; without effect on a closed port.
    void Start();
    void Stop();
    /// Closes the port and drops what is queued; it is closed afterwards even when this raises.
    void Close();
    /// Open, then Start. True.
    bool OpenAndStart();
    /// Stop, then Close.
    void StopAndClose();
    /// Closes the port, selects another device and, if wanted, opens and starts it. True when it is
    /// open.
    bool ChangeDevice(std::uint32_t newDeviceID, bool openAndStartAfterChange);

    /// Takes the oldest message; null when none waits or the port is closed. A system-exclusive
    /// message that is longer than a buffer comes in several parts. Raises, and the message is
    /// lost, when its buffer cannot be lent again.
    std::unique_ptr<TMyMidiEvent> GetMidiEvent();
    /// Drops what is queued.
    void FlushQueue();

    /// The system's text for a result code.
    std::string MidiInErrorString(ResultCode wError);

    /// Number of input devices now present.
    std::uint32_t DeviceCount();
    /// Number of input devices when the port was created.
    std::uint32_t NumDevs() const { return numDevs_; }

    std::uint32_t DeviceID() const { return deviceId_; }
    /// Selects a device and reads what it tells of itself. Raises when the port is open or there is
    /// no such device.
    void SetDeviceID(std::uint32_t deviceID);
    /// Product name of the selected device (UTF-8).
    const std::string& ProductName() const { return capabilities_.productName; }
    /// Selects the first device of that name. Raises when the port is open or there is none.
    void SetProductName(const std::string& name);
    /// High byte the major, low byte the minor version of the selected device's driver.
    std::uint32_t DriverVersion() const { return capabilities_.driverVersion; }

    /// Messages that the queue holds; 1024 at the start. A change counts from the next Open on.
    std::uint16_t Capacity() const { return capacity_; }
    void SetCapacity(std::uint16_t capacity) { capacity_ = capacity; }
    /// Bytes in each buffer for system-exclusive messages; 4096 at the start. Raises when open.
    std::uint16_t SysexBufferSize() const { return sysexBufferSize_; }
    void SetSysexBufferSize(std::uint16_t bytes);
    /// Number of these buffers; 16 at the start. Raises when open.
    std::uint16_t SysexBufferCount() const { return sysexBufferCount_; }
    void SetSysexBufferCount(std::uint16_t count);
    /// Whether short messages are dropped; false at the start. A change counts from the next Open
    /// on.
    bool SysexOnly() const { return sysexOnly_; }
    void SetSysexOnly(bool sysexOnly) { sysexOnly_ = sysexOnly; }
    /// Messages that are dropped: msgMidiTimeCode stands for the timing clock (0xF8),
    /// msgActiveSensing for 0xFE; both at the start. A change counts from the next Open on.
    const TMidiMsgs& FilteredMessages() const { return filteredMessages_; }
    void SetFilteredMessages(TMidiMsgs messages) { filteredMessages_ = std::move(messages); }

    /// Messages that wait in the queue.
    std::uint16_t MessageCount() const { return queue_ != nullptr ? queue_->MessageCount() : 0; }
    /// The buffers lent to the driver; none when closed.
    const std::vector<std::unique_ptr<TMyMidiHdr>>& MidiHdrs() const { return midiHdrs_; }
    /// The driver's handle, 0 when closed.
    DeviceHandle MIDIHandle() const { return handle_; }
    MidiInputState State() const { return state_; }
    /// Result code of the last driver call.
    std::uint16_t Error() const { return error_; }

    /// Called when messages wait; the handler should call GetMidiEvent until it returns null.
    void SetOnMidiInput(TNotifyEvent handler) { onMidiInput_ = std::move(handler); }
    /// Called when messages were lost because the queue was full.
    void SetOnOverflow(TNotifyEvent handler) { onOverflow_ = std::move(handler); }
    /// Called after a device has been selected.
    void SetOnDeviceChanged(TNotifyEvent handler) { onDeviceChanged_ = std::move(handler); }

private:
    bool IsOpen() const { return state_ == MidiInputState::misOpen; }
    void Check(ResultCode code);
    void RequireClosed(std::string_view text) const;
    void FillCtlInfo();
    void LendBuffers();
    ResultCode Disconnect();
    ResultCode ReleaseBuffers();
    void AbandonConnection();
    void ReadLong(MidiHeader& header, TMyMidiEvent& event);
    void MidiInput(std::uint32_t message);
    std::unique_ptr<PortWindow> MakeWindow();

    MidiInputDriver& driver_;
    MidiInputState state_ = MidiInputState::misCreating;
    std::uint32_t numDevs_ = 0;
    std::uint32_t deviceId_ = 0;
    DeviceCapabilities capabilities_;
    std::uint16_t capacity_ = 1024;
    std::uint16_t sysexBufferSize_ = 4096;
    std::uint16_t sysexBufferCount_ = 16;
    bool sysexOnly_ = false;
    TMidiMsgs filteredMessages_{TMidiMsg::msgActiveSensing, TMidiMsg::msgMidiTimeCode};
    DeviceHandle handle_ = 0;
    std::uint16_t error_ = 0;
    std::unique_ptr<PortWindow> window_;
    std::unique_ptr<InputQueue> queue_;
    CtlInfoPointer ctlInfo_;
    std::vector<std::unique_ptr<TMyMidiHdr>> midiHdrs_;
    TNotifyEvent onMidiInput_;
    TNotifyEvent onOverflow_;
    TNotifyEvent onDeviceChanged_;
};

} // namespace tracksmith::midi
