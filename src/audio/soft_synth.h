#pragma once

#include <cstdint>
#include <filesystem>
#include <fluidsynth.h>
#include <memory>
#include <span>

namespace tracksmith::audio {

/// Frames that the synthesizer renders in one go; events take effect at their edges.
inline constexpr int kBlockFrames = 64;

/// A FluidSynth synthesizer of 16 channels with one SoundFont. Opens no audio device; sound is
/// fetched through Render. FluidSynth's own messages are kept silent.
class SoftSynth {
public:
    /// `sampleRate` in Hz (8,000-96,000), `gain` 0-10. Raises EAudioError (NoInstrument) when the
    /// SoundFont cannot be loaded. Takes as long as the file needs to be read.
    SoftSynth(const std::filesystem::path& soundfont, int sampleRate, float gain);

    /// The synthesizer for sending events to; lives as long as this object.
    fluid_synth_t* Get() const { return synth_.get(); }

    /// True when the SoundFont has a preset at `bank` (drum kits: 128) and `program`.
    bool HasPreset(int bank, int program) const;

    /// Plays the preset on `channel` (0-15) from the next note on; a preset that is missing leaves
    /// the channel silent.
    void SelectPreset(int channel, int bank, int program);

    /// Most voices that sound at once, 1-65,535.
    void SetPolyphony(int voices) { fluid_synth_set_polyphony(synth_.get(), voices); }

    /// Fetches the next frames, left and right in turn, -1 to 1 unless too loud.
    void Render(std::span<float> interleaved);

    /// Number of notes that still sound, release phases included.
    int ActiveVoices() const;

private:
    struct Release {
        void operator()(fluid_settings_t* settings) const { delete_fluid_settings(settings); }
        void operator()(fluid_synth_t* synth) const { delete_fluid_synth(synth); }
    };

    std::unique_ptr<fluid_settings_t, Release> settings_;
    std::unique_ptr<fluid_synth_t, Release> synth_;
    int soundfontId_ = FLUID_FAILED;
};

} // namespace tracksmith::audio
