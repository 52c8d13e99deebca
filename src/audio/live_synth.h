#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <span>

#include "audio/message_ring.h"
#include "audio/soft_synth.h"
#include "audio/synth_adapter.h"

namespace tracksmith::audio {

/// How the built-in instrument is to sound.
struct SynthSettings {
    /// Empty for the system's usual General MIDI set.
    std::filesystem::path soundfont;
    /// 0-10.
    float gain = 0.5F;
    /// Voices at once, 16-1024.
    int polyphony = 256;
    /// Hz, 8,000-96,000.
    int sampleRate = 44'100;
};

/// The built-in instrument played in real time: messages come from any thread, sound is fetched by
/// the audio thread, which alone touches the synthesizer. A message sounds one buffer after it was
/// sent, at the place in the buffer that its time asks for, so that the buffers are not heard in
/// the rhythm.
class LiveSynth {
public:
    /// Raises EAudioError (NoInstrument) when the SoundFont cannot be loaded.
    explicit LiveSynth(const SynthSettings& settings);

    /// Sends one complete message at `timeUs` of the clock that Render is given; false when too
    /// many wait. Any thread.
    bool Send(std::span<const std::uint8_t> message, std::int64_t timeUs);

    /// Fetches the next frames, left and right in turn; `nowUs` is the time of the call. Audio
    /// thread; waits for no other thread.
    void Render(std::span<float> interleaved, std::int64_t nowUs);

    /// Loudness, 0-65,535 (full). Any thread.
    void SetVolume(std::uint32_t volume) { volume_.store(volume, std::memory_order_relaxed); }

private:
    void PlayUpTo(std::int64_t timeUs);
    void Play(std::span<const std::uint8_t> message);
    std::int64_t BufferStart(std::int64_t nowUs, std::int64_t bufferUs);
    void ApplyVolume(std::span<float> interleaved);

    int sampleRate_;
    SoftSynth synth_;
    SynthAdapter adapter_;
    MessageRing ring_;
    std::atomic<std::uint32_t> volume_ = 0xFFFF;
    float heardVolume_ = 1;
    std::int64_t expectedUs_ = 0;
};

} // namespace tracksmith::audio
