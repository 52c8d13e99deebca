#include "app/devices/synth_device.h"

#include "audio/synth_backend.h"
#include "audio/texts.h"

#include "midi/portable_driver.h"

namespace tracksmith::devices {
namespace {

audio::SynthSettings SettingsOf(const SynthOptions& options) {
    audio::SynthSettings settings;
    settings.soundfont = options.soundfont;
    settings.polyphony = options.polyphony;
    return settings;
}

class FluidDevice : public SynthDevice {
public:
    explicit FluidDevice(const SynthOptions& options)
        : backend_(std::make_shared<audio::SynthBackend>(SettingsOf(options))), driver_(backend_) {}

    midi::MidiOutputDriver& Driver() override { return driver_; }
    void SetOptions(const SynthOptions& options) override {
        backend_->SetSettings(SettingsOf(options));
    }
    void SetVolume(int percent) override {
        driver_.SetVolume(0, static_cast<std::uint32_t>(percent * 0xFFFF / 100));
    }
    std::string Trouble(Language language) const override {
        if (backend_->LastError()) {
            return backend_->LastError()->In(language);
        }
        return backend_->IsSilent() ? std::string(audio::texts::kSilent.In(language))
                                    : std::string();
    }

private:
    std::shared_ptr<audio::SynthBackend> backend_;
    midi::PortableOutputDriver driver_;
};

} // namespace

bool HasSynthDevice() {
    return true;
}

std::unique_ptr<SynthDevice> MakeSynthDevice(const SynthOptions& options) {
    return std::make_unique<FluidDevice>(options);
}

} // namespace tracksmith::devices
