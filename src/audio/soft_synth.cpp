#include "audio/soft_synth.h"

#include <array>
#include <fstream>
#include <mutex>
#include <string_view>

#include "audio/audio_error.h"
#include "audio/texts.h"
#include "base/display_text.h"
#include "base/system/file_io.h"

namespace tracksmith::audio {
namespace {

void IgnoreMessage(int, const char*, void*) {}

void SilenceLog() {
    static std::once_flag once;
    std::call_once(once, [] {
        for (int level = FLUID_PANIC; level < LAST_LOG_LEVEL; ++level) {
            fluid_set_log_function(level, &IgnoreMessage, nullptr);
        }
    });
}

/// A whole RIFF file of the form "sfbk". Others, and files cut short, are not shown to FluidSynth:
/// its loader for other formats complains on the standard error, past the silenced log.
bool LooksLikeSoundfont(const std::filesystem::path& path) {
    std::array<unsigned char, 12> head{};
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file.tellg();
    file.seekg(0);
    file.read(reinterpret_cast<char*>(head.data()), head.size());
    const std::string_view text(reinterpret_cast<const char*>(head.data()), head.size());
    const std::int64_t promised =
        head[4] | head[5] << 8 | head[6] << 16 | static_cast<std::int64_t>(head[7]) << 24;
    return file && text.starts_with("RIFF") && text.ends_with("sfbk") && promised + 8 <= size;
}

fluid_settings_t* MakeSettings(int sampleRate, float gain) {
    SilenceLog();
    fluid_settings_t* settings = new_fluid_settings();
    if (settings != nullptr) {
        fluid_settings_setnum(settings, "synth.sample-rate", sampleRate);
        fluid_settings_setnum(settings, "synth.gain", static_cast<double>(gain));
        fluid_settings_setint(settings, "synth.midi-channels", 16);
        fluid_settings_setint(settings, "synth.polyphony", 256);
        // The number that song files address instruments by.
        fluid_settings_setint(settings, "synth.device-id", 16);
    }
    return settings;
}

} // namespace

SoftSynth::SoftSynth(const std::filesystem::path& soundfont, int sampleRate, float gain)
    : settings_(MakeSettings(sampleRate, gain)),
      synth_(settings_ ? new_fluid_synth(settings_.get()) : nullptr) {
    if (!synth_) {
        throw EAudioError(AudioFault::NoInstrument, texts::kNoSynth);
    }
    const std::string path = system::PathText(soundfont);
    if (LooksLikeSoundfont(soundfont)) {
        soundfontId_ = fluid_synth_sfload(synth_.get(), path.c_str(), 1);
    }
    if (soundfontId_ == FLUID_FAILED) {
        throw EAudioError(AudioFault::NoInstrument, texts::kSoundfontBroken, DisplayPath(path));
    }
}

bool SoftSynth::HasPreset(int bank, int program) const {
    fluid_sfont_t* soundfont = fluid_synth_get_sfont_by_id(synth_.get(), soundfontId_);
    return soundfont != nullptr && fluid_sfont_get_preset(soundfont, bank, program) != nullptr;
}

void SoftSynth::SelectPreset(int channel, int bank, int program) {
    const int done = fluid_synth_program_select(synth_.get(), channel, soundfontId_, bank, program);
    if (done == FLUID_FAILED) {
        fluid_synth_unset_program(synth_.get(), channel);
    }
}

void SoftSynth::Render(std::span<float> interleaved) {
    const int frames = static_cast<int>(interleaved.size() / 2);
    fluid_synth_write_float(synth_.get(), frames, interleaved.data(), 0, 2, interleaved.data(), 1,
                            2);
}

int SoftSynth::ActiveVoices() const {
    return fluid_synth_get_active_voice_count(synth_.get());
}

} // namespace tracksmith::audio
