#include "audio/audio_output.h"

#include <SDL.h>
#include <alsa/asoundlib.h>
#include <utility>

#include "audio/audio_error.h"
#include "audio/texts.h"

namespace tracksmith::audio {
namespace {

constexpr const char* kSilentDriver = "dummy";

// ALSA tells the standard error what it misses on a machine without a sound card.
void IgnoreAlsa(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
                const char* /*format*/, ...) {} // NOLINT(cert-dcl50-cpp): the type is ALSA's

// The audio part of SDL as long as it is used; the silent driver when the usual ones fail.
class AudioSystem {
public:
    AudioSystem() {
        SDL_SetMainReady();
        snd_lib_error_set_handler(&IgnoreAlsa);
        // Without SDL's JACK driver: as a second client of a server that ends it brings the MIDI
        // ports' client down. The user's own choice (SDL_AUDIODRIVER) goes before this one.
        SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "pipewire,pulseaudio,alsa", SDL_HINT_DEFAULT);
        SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Tracksmith");
        // The signals that ask the program to end are for the program.
        SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
        if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
            StartSilent();
        }
    }
    AudioSystem(const AudioSystem&) = delete;
    AudioSystem& operator=(const AudioSystem&) = delete;
    ~AudioSystem() { SDL_AudioQuit(); }

    bool IsSilent() const {
        const char* driver = SDL_GetCurrentAudioDriver();
        return driver == nullptr || SDL_strcmp(driver, kSilentDriver) == 0;
    }
    void StartSilent() {
        SDL_AudioQuit();
        SDL_AudioInit(kSilentDriver);
    }
};

} // namespace

class AudioOutput::Device {
public:
    Device(int sampleRate, int frames, Source source) : source_(std::move(source)) {
        if (!Open(sampleRate, frames)) {
            system_.StartSilent();
            if (!Open(sampleRate, frames)) {
                throw EAudioError(AudioFault::NoInstrument, texts::kNoSoundOutput);
            }
        }
        SDL_PauseAudioDevice(id_, 0);
    }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    ~Device() { SDL_CloseAudioDevice(id_); }

    bool IsSilent() const { return system_.IsSilent(); }

private:
    bool Open(int sampleRate, int frames) {
        SDL_AudioSpec wanted{};
        wanted.freq = sampleRate;
        wanted.format = AUDIO_F32SYS;
        wanted.channels = 2;
        wanted.samples = static_cast<Uint16>(frames);
        wanted.callback = &Device::Fill;
        wanted.userdata = this;
        SDL_AudioSpec got{};
        id_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, &got, 0);
        return id_ != 0;
    }

    static void Fill(void* device, Uint8* bytes, int count) {
        const auto samples = static_cast<std::size_t>(count) / sizeof(float);
        static_cast<Device*>(device)->source_({reinterpret_cast<float*>(bytes), samples});
    }

    AudioSystem system_;
    Source source_;
    SDL_AudioDeviceID id_ = 0;
};

AudioOutput::AudioOutput(int sampleRate, int frames, Source source)
    : device_(std::make_unique<Device>(sampleRate, frames, std::move(source))) {}

AudioOutput::~AudioOutput() = default;

bool AudioOutput::IsSilent() const {
    return device_->IsSilent();
}

} // namespace tracksmith::audio
