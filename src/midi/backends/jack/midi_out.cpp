#include "midi/backends/jack/midi_out.h"

#include <algorithm>
#include <chrono>
#include <jack/midiport.h>

namespace tracksmith::midi::jack {
namespace {

constexpr std::size_t kOutBytes = std::size_t{256} * 1024;
constexpr int kFlushMs = 500;

} // namespace

jack_nframes_t FrameOffset(jack_nframes_t stamp, jack_nframes_t start, jack_nframes_t frames,
                           jack_nframes_t mostAhead) {
    // The frame counter wraps around after a day, so only differences mean anything.
    const jack_nframes_t ahead = stamp - start;
    const bool late = static_cast<std::int32_t>(ahead) < 0;
    return late || ahead > std::max(mostAhead, frames) ? 0 : ahead;
}

MidiOut::MidiOut() : ring_(kOutBytes), port_(*this) {}

std::unique_ptr<MidiOut> MidiOut::Open(const std::string& peer, ResultCode& result) {
    std::unique_ptr<MidiOut> out(new MidiOut);
    result = out->port_.Connect(Direction::Out, peer);
    return result == kNoError ? std::move(out) : nullptr;
}

MidiOut::~MidiOut() {
    using std::chrono::steady_clock;
    const auto deadline = steady_clock::now() + std::chrono::milliseconds(kFlushMs);
    while (!port_.Gone() && !ring_.Empty() && steady_clock::now() < deadline) {
        port_.WaitForCycles(1, kFlushMs);
    }
    // The receiver reads the last period while we would already be disconnecting.
    port_.WaitForCycles(2, kFlushMs);
    port_.Close();
}

ResultCode MidiOut::Send(std::span<const std::uint8_t> message) {
    if (port_.Gone()) {
        return kNoDriver;
    }
    if (message.empty() || message.size() > mostBytes_.load(std::memory_order_relaxed)) {
        return kInvalidParameter;
    }
    if (port_.Stalled()) {
        return kNotReady;
    }
    ResultCode result = kNoDriver;
    port_.WithClient([&](jack_client_t* client) {
        result = ring_.Put(message, jack_frame_time(client)) ? kNoError : kNotReady;
    });
    return result;
}

void MidiOut::Discard() {
    discardUntil_.store(ring_.Written(), std::memory_order_release);
}

void MidiOut::Process(jack_client_t* client, void* buffer, jack_nframes_t frames) noexcept {
    jack_midi_clear_buffer(buffer);
    mostBytes_.store(jack_midi_max_event_size(buffer), std::memory_order_relaxed);
    ring_.DropUntil(discardUntil_.load(std::memory_order_acquire));
    const jack_nframes_t start = jack_last_frame_time(client) - frames;
    const jack_nframes_t second = jack_get_sample_rate(client);
    jack_nframes_t earliest = 0;
    MessageRing::Head head;
    for (bool first = true; ring_.Peek(head); first = false) {
        const auto stamp = static_cast<jack_nframes_t>(head.time);
        const jack_nframes_t offset = std::max(FrameOffset(stamp, start, frames, second), earliest);
        if (offset >= frames) {
            return;
        }
        std::uint8_t* const space = jack_midi_event_reserve(buffer, offset, head.size);
        if (space == nullptr) {
            // Only a buffer that the server has made smaller meanwhile: it would wait for ever.
            if (first) {
                port_.MarkGone();
            }
            return;
        }
        ring_.Take(space);
        earliest = offset;
    }
}

} // namespace tracksmith::midi::jack
