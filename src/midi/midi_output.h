#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "midi/gm_instrument_patch.h"
#include "midi/midi_driver.h"
#include "midi/my_midi_event.h"
#include "midi/output_error_text.h"
#include "midi/output_link.h"

namespace tracksmith::midi {

/// Whether an output port is open.
enum class MidiOutputState { mosOpen, mosClosed };

/// Kind of an output device, in the order of the system's numbers.
enum class OutPortTech { opt_None, opt_MidiPort, opt_Synth, opt_SQSynth, opt_FMSynth, opt_Mapper };

/// The name under which a kind of device is shown, for example "Generic Synth".
std::string_view OutPortTechName(OutPortTech technology);

/// What an output device can do beside sending.
enum class TFeature { ftCaching, ftStreaming, ftVolume, ftStereoVolume };
using TFeatures = std::set<TFeature>;

/// Sends short and system-exclusive messages to one output port of a driver.
///
/// Belongs to the thread that creates it: everything runs there, also the events, except PutShort,
/// PutLong, PutMidiEvent and the channel operations, which the playback thread may call while the
/// port is open. Every failing call keeps its code in Error and raises EMidiOutputError.
class TMidiOutput {
public:
    /// Called on the creating thread with the port it comes from; must not throw.
    using TNotifyEvent = std::function<void(TMidiOutput& sender)>;

    /// A closed port, with no device selected. The driver must outlive it.
    explicit TMidiOutput(MidiOutputDriver& driver);
    TMidiOutput(const TMidiOutput&) = delete;
    TMidiOutput& operator=(const TMidiOutput&) = delete;
    /// Closes the port; failures are not told.
    virtual ~TMidiOutput();

    /// Opens the selected device. True when the port is open, also when it already was.
    virtual bool Open();
    /// Closes the port; it is closed afterwards even when this raises. System-exclusive messages
    /// that are under way are cut off; a driver that does not give them back within 500 ms is left
    /// with their memory. True when the driver reported no failure.
    virtual bool Close();
    /// Closes the port for its users at once. What the driver still has of it is handed over: its
    /// Close gets the messages under way back, which may take 500 ms, and closes the device, on any
    /// thread. Null when the port was closed already. FullResetOnClose is not looked at.
    std::unique_ptr<OutputLink> Detach();
    /// Sends a short message. Allocates nothing unless it raises.
    virtual void PutShort(std::uint8_t midiMessage, std::uint8_t data1, std::uint8_t data2);
    /// Sends `msgLength` bytes as they are; they are copied. Their memory is released on the
    /// creating thread, once the driver is done with them.
    virtual void PutLong(const std::uint8_t* theSysex, std::uint16_t msgLength);
    /// The same for a whole buffer; raises for more than 65,535 bytes and sends nothing then.
    void PutLong(std::span<const std::uint8_t> theSysex);
    /// The same two without raising: the result code says what went wrong, Error stays as it is.
    /// For threads that must go on. A closed port gives kInvalidHandle.
    ResultCode TryShort(std::uint8_t midiMessage, std::uint8_t data1, std::uint8_t data2) noexcept;
    ResultCode TryLong(std::span<const std::uint8_t> theSysex) noexcept;
    /// Sends a received message: the system-exclusive bytes when it has some, else the short form.
    void PutMidiEvent(const TMyMidiEvent& theEvent);

    /// Channel messages. `channel` 0-15; only its low four bits count.
    void NoteOn(std::uint8_t channel, std::uint8_t note, std::uint8_t dynamics);
    void NoteOff(std::uint8_t channel, std::uint8_t note, std::uint8_t dynamics);
    void NoteAftertouch(std::uint8_t channel, std::uint8_t note, std::uint8_t newDynamics);
    void ControllerChange(std::uint8_t channel, std::uint8_t newController, std::uint8_t value);
    void ProgramChange(std::uint8_t channel, std::uint8_t newProgram);
    void ChannelAftertouch(std::uint8_t channel, std::uint8_t newDynamics);
    /// Program change to a General MIDI melodic program.
    void ChangeInstrument(std::uint8_t channel, TGMInstrumentPatch newInstrument);

    /// Asks the device to hold patches of a bank ready; `operationFlag` as the system defines it.
    /// True, or raises.
    bool CachePatches(std::uint16_t bank, std::span<const std::uint16_t, 128> patchArray,
                      std::uint32_t operationFlag);
    /// The same for the keys of a drum patch.
    bool CacheDrumPatches(std::uint16_t patch, std::span<const std::uint16_t, 128> keyArray,
                          std::uint32_t operationFlag);

    /// Volume of the device (0-0xFFFF), open or not. Without stereo volume both sides are the left.
    void GetVolume(std::uint16_t& left, std::uint16_t& right);
    /// Volume of the left side.
    std::uint16_t GetVolume();
    void SetVolume(std::uint16_t left, std::uint16_t right);
    /// The same volume on both sides.
    void SetVolume(std::uint16_t monoVolume);

    /// Passes a message to the driver; returns the driver's own answer and never raises.
    ResultCode DriverMidiMessage(std::uint32_t msg, std::uintptr_t param1, std::uintptr_t param2);

    /// Closes the port, selects another device and, if wanted, opens it. True when it is open.
    bool ChangeDevice(std::uint32_t newDeviceID, bool openAfterChange);

    /// Number of output devices now present.
    std::uint32_t DeviceCount();
    /// Number of output devices when the port was created.
    std::uint32_t NumDevs() const { return numDevs_; }

    std::uint32_t DeviceID() const { return deviceId_; }
    /// Selects a device and reads what it tells of itself. Raises when the port is open or there is
    /// no such device.
    void SetDeviceID(std::uint32_t deviceID);
    /// Product name of the selected device (UTF-8).
    const std::string& ProductName() const { return capabilities_.productName; }
    /// Selects the first device of that name. Raises when the port is open or there is none.
    void SetProductName(const std::string& name);
    OutPortTech Technology() const;
    /// Selects the first device of that kind. Raises when the port is open or there is none.
    void SetTechnology(OutPortTech technology);

    /// High byte the major, low byte the minor version of the selected device's driver.
    std::uint32_t DriverVersion() const { return capabilities_.driverVersion; }
    std::uint16_t Voices() const { return capabilities_.voices; }
    std::uint16_t Notes() const { return capabilities_.notes; }
    /// One bit for each channel that the device answers to.
    std::uint16_t ChannelMask() const { return capabilities_.channelMask; }
    /// Bits of DeviceCapabilities.
    std::uint32_t Support() const { return capabilities_.support; }
    TFeatures SupportedFeatures() const;
    bool SupportsCaching() const;
    bool SupportsStreaming() const;
    bool SupportsVolumeControl() const;
    bool SupportsStereoVolumeControl() const;

    /// The driver's handle, 0 when closed.
    DeviceHandle MIDIHandle() const { return link_->Handle(); }
    MidiOutputState State() const { return state_; }
    /// Result code of the last driver call that a caller asked for.
    ResultCode Error() const { return error_; }
    /// Whether Close silences the device first; false at the start.
    bool FullResetOnClose() const { return useFullReset_; }
    void SetFullResetOnClose(bool fullReset) { useFullReset_ = fullReset; }

    /// Called once for each system-exclusive message that has been sent completely.
    void SetOnMidiOutput(TNotifyEvent handler) { onMidiOutput_ = std::move(handler); }
    /// Called after a device has been selected.
    void SetOnDeviceChanged(TNotifyEvent handler) { onDeviceChanged_ = std::move(handler); }

private:
    void Check(OutputOperation operation, ResultCode code);
    void RequireOpen(std::string_view text) const;
    void RequireClosed(std::string_view text) const;
    bool Has(std::uint32_t capability) const;
    void PutChannel(std::uint8_t status, std::uint8_t channel, std::uint8_t data1,
                    std::uint8_t data2);
    ResultCode SendLong(std::span<const std::uint8_t> bytes, OutputOperation& operation);
    void MidiOutput(std::uint32_t message);
    std::unique_ptr<OutputLink> MakeLink();

    MidiOutputDriver& driver_;
    std::uint32_t numDevs_ = 0;
    std::uint32_t deviceId_ = 0;
    DeviceCapabilities capabilities_;
    bool useFullReset_ = false;
    std::atomic<MidiOutputState> state_ = MidiOutputState::mosClosed;
    std::atomic<ResultCode> error_ = kNoError;
    std::unique_ptr<OutputLink> link_;
    TNotifyEvent onMidiOutput_;
    TNotifyEvent onDeviceChanged_;
};

} // namespace tracksmith::midi
