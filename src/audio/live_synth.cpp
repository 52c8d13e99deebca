#include "audio/live_synth.h"

#include <algorithm>
#include <cstdlib>

#include "audio/limiter.h"
#include "audio/soundfont.h"

namespace tracksmith::audio {

LiveSynth::LiveSynth(const SynthSettings& settings)
    : sampleRate_(settings.sampleRate),
      synth_(FindSoundfont(settings.soundfont), settings.sampleRate, settings.gain),
      adapter_(synth_) {
    synth_.SetPolyphony(settings.polyphony);
}

bool LiveSynth::Send(std::span<const std::uint8_t> message, std::int64_t timeUs) {
    return ring_.Put(message, timeUs);
}

void LiveSynth::Render(std::span<float> interleaved, std::int64_t nowUs) {
    const auto frames = static_cast<std::int64_t>(interleaved.size() / 2);
    const std::int64_t bufferUs = frames * 1'000'000 / sampleRate_;
    const std::int64_t start = BufferStart(nowUs, bufferUs);
    for (std::int64_t done = 0; done < frames;) {
        const std::int64_t count = std::min<std::int64_t>(kBlockFrames, frames - done);
        PlayUpTo(start + (done + count) * 1'000'000 / sampleRate_);
        synth_.Render(interleaved.subspan(static_cast<std::size_t>(2 * done),
                                          static_cast<std::size_t>(2 * count)));
        done += count;
    }
    ApplyVolume(interleaved);
}

// Buffers are asked for a little early or late, which must not move the notes: the start follows
// the calls slowly and jumps only when the two have parted by more than a buffer.
std::int64_t LiveSynth::BufferStart(std::int64_t nowUs, std::int64_t bufferUs) {
    constexpr std::int64_t kSlowness = 32;
    const std::int64_t error = nowUs - expectedUs_;
    expectedUs_ = std::abs(error) > bufferUs ? nowUs : expectedUs_ + error / kSlowness;
    const std::int64_t start = expectedUs_ - bufferUs;
    expectedUs_ += bufferUs;
    return start;
}

void LiveSynth::PlayUpTo(std::int64_t timeUs) {
    std::int64_t next = 0;
    while (ring_.PeekTime(next) && next < timeUs) {
        Play(ring_.Take());
    }
}

void LiveSynth::Play(std::span<const std::uint8_t> message) {
    if (message.empty()) {
        return;
    }
    if (message[0] >= 0xF0) {
        adapter_.SendSysex(message);
        return;
    }
    adapter_.SendShort(message[0], message.size() > 1 ? message[1] : std::uint8_t{0},
                       message.size() > 2 ? message[2] : std::uint8_t{0});
}

// A sudden change of loudness would click; it is spread over the buffer.
void LiveSynth::ApplyVolume(std::span<float> interleaved) {
    const float wanted = static_cast<float>(volume_.load(std::memory_order_relaxed)) / 65'535.0F;
    const float step = (wanted - heardVolume_) / static_cast<float>(interleaved.size());
    for (float& sample : interleaved) {
        heardVolume_ += step;
        sample = Limited(sample * heardVolume_);
    }
    heardVolume_ = wanted;
}

} // namespace tracksmith::audio
