#pragma once

#include <filesystem>

#include "app/devices/midi_devices.h"
#include "app/session/transport.h"
#include "app/settings/settings_store.h"

namespace tracksmith::forms {

/// What the user has chosen for the built-in instrument and the MIDI input, kept in the settings
/// and applied to the devices. User-interface thread.
class SoundSettings {
public:
    /// `store` must outlive the object.
    explicit SoundSettings(settings::SettingsStore& store) : store_(store) {}

    /// The stored options; broken values read as the usual ones.
    devices::SynthOptions ReadSynthOptions() const;
    /// 0-100 per cent.
    int ReadVolume() const;
    std::string ReadInput() const { return store_.ReadStrFromUserRegistry("MidiInput", ""); }
    bool ReadThru() const { return store_.ReadBoolFromUserRegistry("MidiThru", false); }

    /// Brings devices and player into the stored state; once after both have been made.
    void Attach(devices::MidiDevices& devices, session::Transport& transport);

    void SetSoundfont(const std::filesystem::path& file);
    void SetPolyphony(int voices);
    /// Lets the volume be heard, 0-100 per cent; StoreVolume also remembers it, which is for when
    /// the slider comes to rest.
    void HearVolume(int percent);
    void StoreVolume(int percent);
    /// `name` is an input's product name, empty for none.
    void SetInput(const std::string& name);
    void SetThru(bool on);

    bool HasSynth() const { return devices_->Synth() != nullptr; }
    /// What is wrong with the built-in instrument, UTF-8; empty when nothing is.
    std::string Trouble(Language language) const;

private:
    void ApplyOptions();
    void ApplyInput();

    settings::SettingsStore& store_;
    devices::MidiDevices* devices_ = nullptr;
    session::Transport* transport_ = nullptr;
};

} // namespace tracksmith::forms
