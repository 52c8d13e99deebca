#include "midi/backends/jack/backend.h"

#include <array>
#include <map>
#include <mutex>
#include <utility>

#include "midi/backends/jack/call_thread.h"
#include "midi/backends/jack/midi_in.h"
#include "midi/backends/jack/midi_out.h"
#include "midi/backends/jack/port_directory.h"

namespace tracksmith::midi::jack {
namespace {

constexpr std::uint16_t kMidiPortTechnology = 1;
// A server that has not answered for so long has no ports.
constexpr std::chrono::seconds kNoAnswer{2};

/// Calls a function at the end of its scope, also when that is left by an exception.
template <class Function>
class AtEnd {
public:
    explicit AtEnd(Function function) : function_(std::move(function)) {}
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;
    ~AtEnd() { function_(); }

private:
    Function function_;
};

/// How the server is asked: on which thread, and how long its answers are waited for.
struct Line {
    CallThread calls;
    std::chrono::milliseconds patience;

    explicit Line(std::chrono::milliseconds longest) : patience(longest) {}

    /// Destroys a port where it was made.
    template <class Port>
    void Close(std::unique_ptr<Port> port) {
        calls.Run([last = std::shared_ptr<Port>(std::move(port))]() mutable { last.reset(); },
                  patience);
    }
};

class Output final : public OutputConnection {
public:
    Output(std::shared_ptr<Line> line, std::unique_ptr<MidiOut> port)
        : line_(std::move(line)), port_(std::move(port)) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output() override { line_->Close(std::move(port_)); }

    ResultCode Send(std::span<const std::uint8_t> message) override { return port_->Send(message); }
    void Discard() override { port_->Discard(); }

private:
    std::shared_ptr<Line> line_;
    std::unique_ptr<MidiOut> port_;
};

/// Lets messages through to a receiver as long as there is one.
class Gate {
public:
    void SetReceiver(MessageReceiver receiver) {
        const std::lock_guard lock(mutex_);
        receiver_ = std::move(receiver);
    }
    void Pass(std::span<const std::uint8_t> message, std::uint64_t timeMs) {
        const std::lock_guard lock(mutex_);
        if (receiver_) {
            receiver_(message, timeMs);
        }
    }

private:
    std::mutex mutex_;
    MessageReceiver receiver_;
};

class Input final : public InputConnection {
public:
    Input(std::shared_ptr<Line> line, std::unique_ptr<MidiIn> port, std::shared_ptr<Gate> gate)
        : line_(std::move(line)), port_(std::move(port)), gate_(std::move(gate)) {}
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    ~Input() override {
        gate_->SetReceiver(nullptr);
        line_->Close(std::move(port_));
    }

private:
    std::shared_ptr<Line> line_;
    std::unique_ptr<MidiIn> port_;
    std::shared_ptr<Gate> gate_;
};

/// An opening that may take longer than its caller waits.
template <class Port>
struct Opening {
    std::mutex mutex;
    bool ended = false;
    ResultCode result = kBadDeviceId;
    std::unique_ptr<Port> port;
    std::shared_ptr<Gate> gate = std::make_shared<Gate>();

    bool Ended() {
        const std::lock_guard lock(mutex);
        return ended;
    }
    void End() {
        const std::lock_guard lock(mutex);
        ended = true;
    }
};

template <class Port>
using Openings = std::map<std::string, std::shared_ptr<Opening<Port>>>;

std::unique_ptr<MidiOut> OpenPort(const std::string& peer, Opening<MidiOut>& opening) {
    return MidiOut::Open(peer, opening.result);
}

std::unique_ptr<MidiIn> OpenPort(const std::string& peer, Opening<MidiIn>& opening) {
    const auto receive = [gate = opening.gate](std::span<const std::uint8_t> message,
                                               std::uint64_t timeMs) {
        gate->Pass(message, timeMs);
    };
    return MidiIn::Open(peer, receive, opening.result);
}

/// The ports of one side as they were listed last.
struct Listing {
    std::mutex mutex;
    bool asked = false;
    std::vector<PeerPort> ports;
};

class Backend final : public PortBackend {
public:
    explicit Backend(std::chrono::milliseconds patience)
        : line_(std::make_shared<Line>(patience)) {}
    Backend(const Backend&) = delete;
    Backend& operator=(const Backend&) = delete;
    // The client of the directory and ports that nobody has come back for are closed where they
    // were made.
    ~Backend() override {
        line_->calls.Run([directory = std::exchange(directory_, nullptr),
                          outs = std::exchange(outs_, {}), ins = std::exchange(ins_, {})] {},
                         line_->patience);
    }

    std::vector<DeviceCapabilities> Outputs() override { return List(Direction::Out); }
    std::vector<DeviceCapabilities> Inputs() override { return List(Direction::In); }

    std::unique_ptr<OutputConnection> OpenOutput(const std::string& productName,
                                                 ResultCode& result) override {
        const auto opened = Open(Direction::Out, outs_, productName, result);
        return opened == nullptr ? nullptr
                                 : std::make_unique<Output>(line_, std::move(opened->port));
    }

    std::unique_ptr<InputConnection> OpenInput(const std::string& productName,
                                               MessageReceiver receiver,
                                               ResultCode& result) override {
        const auto opened = Open(Direction::In, ins_, productName, result);
        if (opened == nullptr) {
            return nullptr;
        }
        opened->gate->SetReceiver(std::move(receiver));
        return std::make_unique<Input>(line_, std::move(opened->port), opened->gate);
    }

private:
    std::vector<DeviceCapabilities> List(Direction direction) {
        const std::shared_ptr<Listing>& listing = listings_.at(direction == Direction::Out ? 0 : 1);
        if (Ask(*listing)) {
            const auto list = [directory = directory_, listing, direction] {
                std::vector<PeerPort> ports;
                const AtEnd end([&] {
                    const std::lock_guard lock(listing->mutex);
                    listing->ports = std::move(ports);
                    listing->asked = false;
                });
                ports = directory->List(direction);
            };
            line_->calls.Run(list, line_->patience);
        }
        const std::lock_guard lock(listing->mutex);
        return line_->calls.Busy() > kNoAnswer ? std::vector<DeviceCapabilities>()
                                               : Describe(listing->ports);
    }

    /// False when the last question is still open.
    static bool Ask(Listing& listing) {
        const std::lock_guard lock(listing.mutex);
        return !std::exchange(listing.asked, true);
    }

    static std::vector<DeviceCapabilities> Describe(const std::vector<PeerPort>& peers) {
        std::vector<DeviceCapabilities> ports;
        for (const PeerPort& peer : peers) {
            DeviceCapabilities& port = ports.emplace_back();
            port.productName = peer.productName;
            port.technology = kMidiPortTechnology;
        }
        return ports;
    }

    /// The opening of that port when it has succeeded; else null and the reason.
    template <class Port>
    std::shared_ptr<Opening<Port>> Open(Direction direction, Openings<Port>& openings,
                                        const std::string& productName, ResultCode& result) {
        std::shared_ptr<Opening<Port>>& known = openings[productName];
        if (known == nullptr) {
            known = std::make_shared<Opening<Port>>();
            const auto open = [directory = directory_, opening = known, direction, productName] {
                const AtEnd end([&] { opening->End(); });
                const std::string peer = directory->Find(direction, productName);
                opening->port = peer.empty() ? nullptr : OpenPort(peer, *opening);
            };
            line_->calls.Run(open, line_->patience);
        }
        if (!known->Ended()) {
            result = kNotReady;
            return nullptr;
        }
        const std::shared_ptr<Opening<Port>> opening = std::move(known);
        openings.erase(productName);
        result = opening->result;
        return opening->port == nullptr ? nullptr : opening;
    }

    std::shared_ptr<Line> line_;
    // Used on the thread of the calls only.
    std::shared_ptr<PortDirectory> directory_ = std::make_shared<PortDirectory>();
    std::array<std::shared_ptr<Listing>, 2> listings_{std::make_shared<Listing>(),
                                                      std::make_shared<Listing>()};
    Openings<MidiOut> outs_;
    Openings<MidiIn> ins_;
};

} // namespace

std::unique_ptr<PortBackend> MakePortBackend(std::chrono::milliseconds patience) {
    // The library tells on standard error of every server that it does not find.
    const auto silent = [](const char*) {};
    jack_set_error_function(silent);
    jack_set_info_function(silent);
    return std::make_unique<Backend>(patience);
}

} // namespace tracksmith::midi::jack
