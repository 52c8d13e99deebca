#include "midi/backends/jack/test_client.h"

#include <algorithm>
#include <chrono>
#include <jack/midiport.h>
#include <thread>
#include <utility>

#ifdef __SANITIZE_THREAD__
extern "C" {
void AnnotateIgnoreReadsBegin(const char* file, int line);
void AnnotateIgnoreReadsEnd(const char* file, int line);
void AnnotateIgnoreWritesBegin(const char* file, int line);
void AnnotateIgnoreWritesEnd(const char* file, int line);
}
#endif

namespace tracksmith::test {
namespace {

constexpr std::size_t kStoreBytes = std::size_t{4} * 1024 * 1024;
constexpr std::size_t kSlots = 50000;

/// While it lives, the thread sanitizer does not watch this thread. The test's client and the
/// product's share the server's buffers, and the server's way of letting one run after the other is
/// not seen by the sanitizer. Both sides are in the same process only in these tests.
class Unwatched {
public:
#ifdef __SANITIZE_THREAD__
    Unwatched() {
        AnnotateIgnoreReadsBegin(__FILE__, __LINE__);
        AnnotateIgnoreWritesBegin(__FILE__, __LINE__);
    }
    ~Unwatched() {
        AnnotateIgnoreWritesEnd(__FILE__, __LINE__);
        AnnotateIgnoreReadsEnd(__FILE__, __LINE__);
    }
#else
    Unwatched() = default;
    ~Unwatched() = default;
#endif
    Unwatched(const Unwatched&) = delete;
    Unwatched& operator=(const Unwatched&) = delete;
};

} // namespace

bool Eventually(const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!done()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

Bytes Exclusive(std::size_t size) {
    Bytes message(size, 0xF0);
    for (std::size_t i = 1; i + 1 < size; ++i) {
        message[i] = static_cast<std::uint8_t>((i * 7 + size) & 0x7F);
    }
    message.back() = 0xF7;
    return message;
}

TestClient::TestClient(const std::string& name, const std::string& port, JackPortFlags direction,
                       std::vector<Bytes> toSend)
    : toSend_(std::move(toSend)), store_(kStoreBytes), slots_(kSlots) {
    client_ = jack_client_open(name.c_str(), JackNoStartServer, nullptr);
    if (client_ == nullptr) {
        return;
    }
    port_ = jack_port_register(client_, port.c_str(), JACK_DEFAULT_MIDI_TYPE, direction, 0);
    const auto process = [](jack_nframes_t frames, void* self) {
        [[maybe_unused]] const Unwatched unwatched;
        auto& client = *static_cast<TestClient*>(self);
        void* const buffer = jack_port_get_buffer(client.port_, frames);
        (jack_port_flags(client.port_) & JackPortIsInput) != 0 ? client.Keep(buffer, frames)
                                                               : client.SendNext(buffer);
        return 0;
    };
    jack_set_process_callback(client_, process, this);
    works_ = port_ != nullptr && jack_activate(client_) == 0;
}

TestClient::~TestClient() {
    if (client_ != nullptr) {
        jack_client_close(client_);
    }
}

void TestClient::Keep(void* buffer, jack_nframes_t frames) {
    const jack_nframes_t events = jack_midi_get_event_count(buffer);
    const jack_nframes_t start = jack_last_frame_time(client_);
    std::size_t count = count_.load(std::memory_order_relaxed);
    for (jack_nframes_t i = 0; i < events; ++i) {
        jack_midi_event_t event{};
        jack_midi_event_get(&event, buffer, i);
        const std::size_t used = count == 0 ? 0 : slots_[count - 1].start + slots_[count - 1].size;
        if (event.time < frames && count < kSlots && event.size <= kStoreBytes - used) {
            std::copy_n(event.buffer, event.size, store_.data() + used);
            slots_[count++] = {used, event.size, start + event.time};
        }
    }
    count_.store(count, std::memory_order_release);
}

void TestClient::SendNext(void* buffer) {
    jack_midi_clear_buffer(buffer);
    if (sending_.load(std::memory_order_acquire) && sent_ < toSend_.size()) {
        const Bytes& message = toSend_[sent_++];
        jack_midi_event_write(buffer, 10, message.data(), message.size());
    }
}

std::vector<TestClient::Received> TestClient::Messages() const {
    std::vector<Received> messages;
    for (std::size_t i = 0, count = Count(); i < count; ++i) {
        const std::uint8_t* const from = store_.data() + slots_[i].start;
        messages.push_back({Bytes(from, from + slots_[i].size), slots_[i].frame});
    }
    return messages;
}

} // namespace tracksmith::test
