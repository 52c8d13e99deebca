#include "midi/backends/jack/midi_in.h"

#include <algorithm>
#include <chrono>
#include <jack/midiport.h>
#include <utility>

namespace tracksmith::midi::jack {
namespace {

constexpr std::size_t kInBytes = std::size_t{256} * 1024;

// Milliseconds of the steady clock at a frame time of the server, whose own clock may be another.
std::uint64_t SteadyMs(jack_client_t* client, jack_nframes_t frame) {
    using std::chrono::steady_clock;
    const jack_time_t age = jack_get_time() - jack_frames_to_time(client, frame);
    const auto then =
        steady_clock::now() - std::chrono::microseconds(static_cast<std::int64_t>(age));
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(then.time_since_epoch());
    return static_cast<std::uint64_t>(ms.count());
}

} // namespace

MidiIn::MidiIn(MessageReceiver receiver)
    : receiver_(std::move(receiver)), ring_(kInBytes), port_(*this) {
    delivery_ = std::jthread([this](const std::stop_token& stop) { Deliver(stop); });
}

std::unique_ptr<MidiIn> MidiIn::Open(const std::string& peer, MessageReceiver receiver,
                                     ResultCode& result) {
    std::unique_ptr<MidiIn> in(new MidiIn(std::move(receiver)));
    result = in->port_.Connect(Direction::In, peer);
    return result == kNoError ? std::move(in) : nullptr;
}

MidiIn::~MidiIn() {
    port_.Close();
    delivery_.request_stop();
    arrived_.release();
}

void MidiIn::Process(jack_client_t* client, void* buffer, jack_nframes_t frames) noexcept {
    const jack_nframes_t count = jack_midi_get_event_count(buffer);
    // What arrives in a period was played in the one before.
    const jack_nframes_t start = jack_last_frame_time(client) - frames;
    bool any = false;
    for (jack_nframes_t i = 0; i < count; ++i) {
        jack_midi_event_t event{};
        if (jack_midi_event_get(&event, buffer, i) == 0 && event.size > 0) {
            // The server's estimate of its times may step back a little when it was held up.
            lastTimeMs_ = std::max(lastTimeMs_, SteadyMs(client, start + event.time));
            any |= ring_.Put({event.buffer, event.size}, lastTimeMs_);
        }
    }
    if (any) {
        arrived_.release();
    }
}

void MidiIn::Deliver(const std::stop_token& stop) {
    std::vector<std::uint8_t> message;
    while (true) {
        arrived_.acquire();
        if (stop.stop_requested()) {
            return;
        }
        for (MessageRing::Head head; ring_.Peek(head);) {
            message.resize(head.size);
            ring_.Take(message.data());
            receiver_(message, head.time);
        }
    }
}

} // namespace tracksmith::midi::jack
