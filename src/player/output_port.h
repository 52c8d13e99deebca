#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "midi/midi_output.h"
#include "player/pass_state.h"
#include "player/send_queue.h"
#include "player/stopwatch.h"

namespace tracksmith::player {

/// A driver whose devices the player offers. It must outlive the player.
struct OutputDriver {
    midi::MidiOutputDriver* driver = nullptr;
    /// The driver is the built-in instrument, not hardware.
    bool softwareInstrument = false;
    /// Keeps the driver alive beyond the player when one of its calls hangs at the end; may be
    /// null when the driver lives as long as the program.
    std::shared_ptr<void> keeper = nullptr;
};

/// How an output port stands.
enum class PortState {
    Closed,    ///< It has not been needed yet.
    Open,      ///< It takes messages.
    NotOpened, ///< It could not be opened.
    Lost,      ///< The device has gone or fails.
    Hanging,   ///< A call of its driver does not return.
};

/// One output device as the player uses it. Sending never throws. The playback thread calls the
/// driver itself; all others leave their messages to the port's own thread, so that a driver that
/// hangs holds up nobody but them. All messages go out in the order in which they were given.
///
/// A port that fails or is slow is marked lost and skipped until it is opened again; a message that
/// the driver refuses is left out. Sending is for any thread; everything else is for the thread
/// that made the port.
class OutputPort {
public:
    /// A send that takes longer, beside its time on the cable, is taken for a dead port
    /// (microseconds).
    static constexpr std::int64_t kMostSendUs = 50'000;
    /// Longest system-exclusive message with its status byte.
    static constexpr std::size_t kMostSysex = 65'535;

    /// `onTrouble` is called from any thread when there is trouble to be told; must not block.
    OutputPort(OutputDriver driver, std::string productName,
               std::shared_ptr<const Stopwatch> stopwatch, std::function<void()> onTrouble);
    OutputPort(const OutputPort&) = delete;
    OutputPort& operator=(const OutputPort&) = delete;
    /// Only for ports in which no call hangs; see Dispose.
    ~OutputPort();
    /// Destroys a port. One in which a call of the driver hangs is left to that call for good.
    static void Dispose(std::unique_ptr<OutputPort> port);

    /// Opens the device with this number at the driver. The code is kNoError when the port is open
    /// afterwards, kNotReady when it may be a little later, else why it is not.
    midi::ResultCode Open(std::uint32_t device) noexcept;
    /// Closes the port when what it was given has been sent. False when that was not possible
    /// within `patience`: no more is sent, and the closing goes on, unless a send is stuck.
    bool Close(std::chrono::milliseconds patience) noexcept;
    /// It could not be opened, for a reason that the driver did not see.
    void MarkNotOpened() { notOpened_ = true; }

    /// Gives a channel message to the port's thread. False when the port takes none.
    bool SendShort(std::uint8_t status, std::uint8_t data1, std::uint8_t data2) noexcept;
    /// Gives `status` and `data` as one message. False also for more than kMostSysex bytes.
    bool SendSysex(std::uint8_t status, std::span<const std::uint8_t> data) noexcept;
    /// The same two for a pass, which calls the driver itself unless another thread is in it; what
    /// waits goes first. False when the pass was given up meanwhile.
    [[nodiscard]] bool SendShortNow(std::uint8_t status, std::uint8_t data1, std::uint8_t data2,
                                    PassState& pass) noexcept;
    [[nodiscard]] bool SendSysexNow(std::uint8_t status, std::span<const std::uint8_t> data,
                                    PassState& pass) noexcept;
    /// Waits until everything that was given is sent or dropped. False when it is not by then.
    bool WaitUntilSent(std::chrono::steady_clock::time_point deadline) noexcept;

    bool IsOpen() const { return open_.load(); }
    /// The port failed and has not been opened again since.
    bool Lost() const { return lost_.load(); }
    /// The last attempt to open it failed.
    bool NotOpened() const { return notOpened_; }
    /// A call of the driver takes longer than it may.
    bool Hanging() const noexcept;
    /// A pass is in the driver.
    bool HoldsPass() const { return holdsPass_.load(); }
    PortState State() const;
    /// Marks the port lost, as for a device that has gone.
    void MarkLost() noexcept;

    /// Trouble since the last call that has not been told yet.
    struct Trouble {
        bool lost = false;
        bool hanging = false;
        bool refused = false;
        bool sysexTooLong = false;
    };
    Trouble TakeTrouble();

    midi::MidiOutputDriver& Driver() const { return *driver_.driver; }
    const std::string& ProductName() const { return productName_; }
    bool SoftwareInstrument() const { return driver_.softwareInstrument; }
    /// Whether the driver listed the device when it was last asked.
    bool Present() const { return present_; }
    void SetPresent(bool present);
    std::uint64_t MessagesSent() const { return sent_.load(std::memory_order_relaxed); }
    std::uint32_t TimesLost() const { return timesLost_.load(std::memory_order_relaxed); }

private:
    bool Give(std::uint8_t status, std::span<const std::uint8_t> data) noexcept;
    bool GiveInPass(std::uint8_t status, std::span<const std::uint8_t> data,
                    PassState& pass) noexcept;
    bool Drain() noexcept;
    bool TakeNext() noexcept;
    midi::ResultCode Transmit() noexcept;
    bool MayTryAgain() const noexcept;
    void Judge(midi::ResultCode result) noexcept;
    void Tell(std::atomic<bool>& trouble) noexcept;

    std::unique_lock<std::mutex> LockSending() noexcept;
    void Connect(std::uint32_t device);
    void StartThread();
    bool EndThread() noexcept;
    void Work() noexcept;
    void CloseLink(std::unique_lock<std::mutex>& lock) noexcept;

    const OutputDriver driver_;
    midi::TMidiOutput output_;
    const std::string productName_;
    const std::shared_ptr<const Stopwatch> stopwatch_;
    bool present_ = true;
    bool notOpened_ = false;
    bool lossMayBeTold_ = true;

    // Held by who calls the driver to send, open or begin to close; guards what is being sent.
    std::mutex sending_;
    std::vector<std::uint8_t> current_;
    bool hasCurrent_ = false;
    std::int64_t currentSinceUs_ = 0;
    std::int64_t cableFreeUs_ = 0;

    std::mutex mutex_; // guards down to finished_; taken behind sending_
    std::condition_variable work_;
    std::condition_variable idle_;
    SendQueue queue_;
    bool inHand_ = false;
    bool tryAgain_ = false;
    std::unique_ptr<midi::OutputLink> leaving_;
    bool ending_ = false;
    bool finished_ = true;
    std::thread thread_;

    std::atomic<bool> open_ = false;
    std::atomic<bool> lost_ = false;
    std::atomic<bool> holdsPass_ = false;
    std::atomic<bool> provenGood_ = false;
    std::atomic<std::int64_t> busySinceUs_ = -1; // while a call of the driver lasts
    std::atomic<std::int64_t> busyMostUs_ = 0;
    std::atomic<bool> lossUntold_ = false;
    std::atomic<bool> refusalUntold_ = false;
    std::atomic<bool> sysexUntold_ = false;
    std::atomic<bool> refusalTold_ = false;
    std::atomic<bool> sysexTold_ = false;
    std::atomic<std::uint64_t> sent_ = 0;
    std::atomic<std::uint32_t> timesLost_ = 0;
    std::mutex tellMutex_;
    std::function<void()> onTrouble_; // guarded by tellMutex_
};

} // namespace tracksmith::player
