#include "midi/backends/jack/connected_port.h"

#include <cerrno>
#include <thread>

namespace tracksmith::midi::jack {
namespace {

constexpr int kFirstCycleMs = 1000;
constexpr std::chrono::seconds kStalled{1};

} // namespace

ResultCode ConnectedPort::Connect(Direction direction, const std::string& peer) {
    client_ = Client::Join(std::string(kClientName));
    if (client_ == nullptr) {
        return kNoDriver;
    }
    handle_ = client_->Handle();
    if (!Register(direction, peer)) {
        return kBadDeviceId;
    }
    SetCallbacks();
    if (jack_activate(Handle()) != 0) {
        return kNoDriver;
    }
    const char* const own = jack_port_name(port_);
    const int result = direction == Direction::Out ? jack_connect(Handle(), own, peer.c_str())
                                                   : jack_connect(Handle(), peer.c_str(), own);
    if (result != 0 && result != EEXIST) {
        return kBadDeviceId;
    }
    return WaitForCycles(1, kFirstCycleMs) ? kNoError : kNotReady;
}

bool ConnectedPort::Register(Direction direction, const std::string& peer) {
    const bool out = direction == Direction::Out;
    port_ = jack_port_register(Handle(), out ? "midi_out" : "midi_in", JACK_DEFAULT_MIDI_TYPE,
                               out ? JackPortIsOutput : JackPortIsInput, 0);
    peer_ = jack_port_by_name(Handle(), peer.c_str());
    return port_ != nullptr && peer_ != nullptr;
}

void ConnectedPort::SetCallbacks() {
    jack_set_process_callback(Handle(), &ConnectedPort::OnProcess, this);
    jack_set_port_registration_callback(Handle(), &ConnectedPort::OnRegistration, this);
}

int ConnectedPort::OnProcess(jack_nframes_t frames, void* self) noexcept {
    auto& port = *static_cast<ConnectedPort*>(self);
    port.handler_.Process(port.handle_, jack_port_get_buffer(port.port_, frames), frames);
    port.lastCycle_.store(std::chrono::steady_clock::now().time_since_epoch().count(),
                          std::memory_order_relaxed);
    port.cycles_.fetch_add(1, std::memory_order_release);
    return 0;
}

void ConnectedPort::OnRegistration(jack_port_id_t id, int registered, void* self) {
    auto& port = *static_cast<ConnectedPort*>(self);
    if (registered == 0 && jack_port_by_id(port.handle_, id) == port.peer_) {
        port.MarkGone();
    }
}

bool ConnectedPort::Gone() const {
    return client_ == nullptr || client_->Lost() || peerGone_.load(std::memory_order_acquire);
}

bool ConnectedPort::Stalled() const {
    using std::chrono::steady_clock;
    const steady_clock::duration last(lastCycle_.load(std::memory_order_relaxed));
    return steady_clock::now().time_since_epoch() - last > kStalled;
}

bool ConnectedPort::WaitForCycles(std::uint64_t count, int timeoutMs) const {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    const std::uint64_t target = cycles_.load(std::memory_order_acquire) + count;
    while (cycles_.load(std::memory_order_acquire) < target) {
        if (Gone() || std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace tracksmith::midi::jack
