#include "audio/synth_backend.h"

#include <chrono>
#include <new>
#include <thread>
#include <utility>

#include "audio/audio_output.h"
#include "audio/texts.h"

namespace tracksmith::audio {
namespace {

constexpr int kBufferFrames = 512;

std::int64_t NowUs() {
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

// The instrument and what fetches its sound; the latter ends first.
struct SynthBackend::Sound {
    explicit Sound(const SynthSettings& settings)
        : synth(settings),
          output(settings.sampleRate, kBufferFrames,
                 [this](std::span<float> samples) { synth.Render(samples, NowUs()); }) {}

    LiveSynth synth;
    AudioOutput output;
};

class SynthBackend::Connection : public midi::OutputConnection {
public:
    explicit Connection(std::shared_ptr<Sound> sound) : sound_(std::move(sound)) {}

    // When very much comes at once it waits for the audio thread, but not long enough to be taken
    // for a dead device.
    midi::ResultCode Send(std::span<const std::uint8_t> message) override {
        constexpr int kMostWaits = 40;
        if (message.size() > MessageRing::kLongestMessage) {
            return midi::kInvalidParameter;
        }
        for (int waits = 0; !sound_->synth.Send(message, NowUs()); ++waits) {
            if (waits == kMostWaits) {
                return midi::kNotReady;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return midi::kNoError;
    }
    midi::ResultCode SetVolume(std::uint32_t volume) override {
        sound_->synth.SetVolume(volume);
        return midi::kNoError;
    }

private:
    std::shared_ptr<Sound> sound_;
};

SynthBackend::SynthBackend(SynthSettings settings) : settings_(std::move(settings)) {}

SynthBackend::~SynthBackend() = default;

std::vector<midi::DeviceCapabilities> SynthBackend::Outputs() {
    constexpr std::uint16_t kSynthesizer = 2;
    midi::DeviceCapabilities port;
    port.productName = kSynthPort;
    port.driverVersion = 0x0100;
    port.technology = kSynthesizer;
    port.voices = 16;
    port.notes = static_cast<std::uint16_t>(settings_.polyphony);
    port.support = midi::DeviceCapabilities::kVolume;
    return {port};
}

std::unique_ptr<midi::OutputConnection> SynthBackend::OpenOutput(const std::string& productName,
                                                                 midi::ResultCode& result) {
    if (productName != kSynthPort) {
        result = midi::kBadDeviceId;
        return nullptr;
    }
    lastError_.reset();
    std::shared_ptr<Sound> sound = Start(settings_);
    if (!sound && !settings_.soundfont.empty()) {
        SynthSettings usual = settings_;
        usual.soundfont.clear();
        const std::optional<EAudioError> chosen = lastError_;
        sound = Start(usual);
        lastError_ = chosen;
    }
    result = sound ? midi::kNoError : midi::kNoDriver;
    sound_ = sound;
    return sound ? std::make_unique<Connection>(std::move(sound)) : nullptr;
}

std::unique_ptr<midi::InputConnection> SynthBackend::OpenInput(const std::string& /*productName*/,
                                                               midi::MessageReceiver /*receiver*/,
                                                               midi::ResultCode& result) {
    result = midi::kBadDeviceId;
    return nullptr;
}

std::shared_ptr<SynthBackend::Sound> SynthBackend::Start(const SynthSettings& settings) {
    try {
        return std::make_shared<Sound>(settings);
    } catch (const EAudioError& error) {
        lastError_ = error;
    } catch (const std::bad_alloc&) {
        lastError_.emplace(AudioFault::NoInstrument, texts::kNoSynth);
    }
    return nullptr;
}

bool SynthBackend::IsSilent() const {
    const std::shared_ptr<Sound> sound = sound_.lock();
    return sound && sound->output.IsSilent();
}

} // namespace tracksmith::audio
