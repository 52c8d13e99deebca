#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "base/text.h"

#include "midi/midi_driver.h"

namespace tracksmith::devices {

/// How the built-in instrument is to sound.
struct SynthOptions {
    /// Empty for the system's usual General MIDI set.
    std::filesystem::path soundfont;
    /// Voices at once, 16-1024.
    int polyphony = 256;
};

/// The built-in instrument as an output driver of one device. User-interface thread.
class SynthDevice {
public:
    virtual ~SynthDevice() = default;
    virtual midi::MidiOutputDriver& Driver() = 0;
    /// Takes effect when its port is opened next.
    virtual void SetOptions(const SynthOptions& options) = 0;
    /// Loudness, 0-100 per cent, at once.
    virtual void SetVolume(int percent) = 0;
    /// What is wrong with its sound, in `language` (UTF-8): no SoundFont, a broken one, no sound
    /// device. Empty when all is well or it has not been opened yet.
    virtual std::string Trouble(Language language) const = 0;
};

/// Whether the program is built with it. Any thread.
bool HasSynthDevice();

/// Makes it; null in a program that is built without it.
std::unique_ptr<SynthDevice> MakeSynthDevice(const SynthOptions& options);

} // namespace tracksmith::devices
