#include "app/forms/ports/sound_settings.h"

#include <algorithm>

#include "base/forms/qt_text.h"
#include "base/system/file_io.h"

namespace tracksmith::forms {
namespace {

constexpr const char* kSoundfont = "SynthSoundFont";
constexpr const char* kPolyphony = "SynthPolyphony";
constexpr const char* kVolume = "SynthVolume";
constexpr const char* kInput = "MidiInput";

} // namespace

devices::SynthOptions SoundSettings::ReadSynthOptions() const {
    devices::SynthOptions options;
    options.soundfont = PathFromQString(ToQString(store_.ReadStrFromUserRegistry(kSoundfont, "")));
    const std::int32_t voices = store_.ReadIntFromUserRegistry(kPolyphony, options.polyphony);
    options.polyphony = std::clamp(voices, 16, 1'024);
    return options;
}

int SoundSettings::ReadVolume() const {
    return std::clamp(store_.ReadIntFromUserRegistry(kVolume, 100), 0, 100);
}

void SoundSettings::Attach(devices::MidiDevices& devices, session::Transport& transport) {
    devices_ = &devices;
    transport_ = &transport;
    if (HasSynth()) {
        devices.Synth()->SetOptions(ReadSynthOptions());
        devices.Synth()->SetVolume(ReadVolume());
    }
    ApplyInput();
}

void SoundSettings::SetSoundfont(const std::filesystem::path& file) {
    store_.WriteStrToUserRegistry(kSoundfont, system::PathText(file));
    ApplyOptions();
}

void SoundSettings::SetPolyphony(int voices) {
    store_.WriteIntToUserRegistry(kPolyphony, voices);
    ApplyOptions();
}

void SoundSettings::HearVolume(int percent) {
    if (HasSynth()) {
        devices_->Synth()->SetVolume(percent);
    }
}

void SoundSettings::StoreVolume(int percent) {
    store_.WriteIntToUserRegistry(kVolume, percent);
}

void SoundSettings::SetInput(const std::string& name) {
    store_.WriteStrToUserRegistry(kInput, name);
    ApplyInput();
}

void SoundSettings::SetThru(bool on) {
    store_.WriteBoolToUserRegistry("MidiThru", on);
    ApplyInput();
}

std::string SoundSettings::Trouble(Language language) const {
    return HasSynth() ? devices_->Synth()->Trouble(language) : std::string();
}

void SoundSettings::ApplyOptions() {
    if (HasSynth()) {
        devices_->Synth()->SetOptions(ReadSynthOptions());
        transport_->ReopenSynth();
    }
}

void SoundSettings::ApplyInput() {
    player::TMidiPlayer& player = transport_->Player();
    player.SetMidiThru(ReadThru());
    const std::string name = ReadInput();
    player.SelectInput(name);
    if (!name.empty()) {
        player.ConnectMidiInPort(); // now, or when it is there
    }
}

} // namespace tracksmith::forms
