#pragma once

#include <functional>
#include <memory>
#include <span>

namespace tracksmith::audio {

/// Sound output of the system. Where no device can be opened, sound is fetched at the same pace and
/// thrown away, and IsSilent says so.
class AudioOutput {
public:
    /// Fills the samples, left and right in turn; called on the audio thread.
    using Source = std::function<void(std::span<float> interleaved)>;

    /// Starts to fetch sound in buffers of `frames` (64-8,192) at `sampleRate` Hz. `source` is
    /// called until the destructor has returned.
    AudioOutput(int sampleRate, int frames, Source source);
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;
    ~AudioOutput();

    /// True when there is no sound device, so that nothing is heard.
    bool IsSilent() const;

private:
    class Device;
    std::unique_ptr<Device> device_;
};

} // namespace tracksmith::audio
