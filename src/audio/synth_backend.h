#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "audio/audio_error.h"
#include "audio/live_synth.h"

#include "midi/port_backend.h"

namespace tracksmith::audio {

/// Product name of the built-in instrument's port.
inline constexpr const char* kSynthPort = "Tracksmith Synth";

/// The built-in instrument as a MIDI system with one output port. Works without a sound card and
/// without a display. Opened and changed on one thread.
class SynthBackend : public midi::PortBackend {
public:
    explicit SynthBackend(SynthSettings settings = {});
    ~SynthBackend() override;

    std::vector<midi::DeviceCapabilities> Outputs() override;
    std::vector<midi::DeviceCapabilities> Inputs() override { return {}; }
    /// Loads the SoundFont and starts the sound. When the chosen SoundFont cannot be used, the
    /// usual one of the system plays and LastError tells of it; without any: kNoDriver.
    std::unique_ptr<midi::OutputConnection> OpenOutput(const std::string& productName,
                                                       midi::ResultCode& result) override;
    std::unique_ptr<midi::InputConnection> OpenInput(const std::string& productName,
                                                     midi::MessageReceiver receiver,
                                                     midi::ResultCode& result) override;

    /// Takes effect when the port is opened next.
    void SetSettings(SynthSettings settings) { settings_ = std::move(settings); }
    const SynthSettings& Settings() const { return settings_; }

    /// What went wrong when the port was opened last.
    const std::optional<EAudioError>& LastError() const { return lastError_; }
    /// True when the port is open and there is no sound device, so that nothing is heard.
    bool IsSilent() const;

private:
    class Connection;
    struct Sound;
    std::shared_ptr<Sound> Start(const SynthSettings& settings);

    SynthSettings settings_;
    std::optional<EAudioError> lastError_;
    std::weak_ptr<Sound> sound_;
};

} // namespace tracksmith::audio
