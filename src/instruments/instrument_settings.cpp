#include "instruments/instrument_settings.h"

#include <algorithm>
#include <array>

#include "instruments/texts.h"

namespace tracksmith::instruments {
namespace {

constexpr const char* kFirstInstrument = "MidiInstrument00";
constexpr const char* kInstrument = "MidiInstrument";
constexpr const char* kSysexTrack = "SysexTrack";
constexpr const char* kRolandScMap = "RolandSCDefaultMapIdx";
constexpr const char* kLimexKey = "LimexTE200";
constexpr std::string_view kNoInstrument = "abc";
constexpr std::string_view kIntegra7Name = "Roland Integra-7";
constexpr std::string_view kMotifXs = "Yamaha Motif-Rack XS";

constexpr auto kSwitches = std::to_array<SysexSwitch>({
    {"AutoSysex", std::nullopt, &SysexOptions::automatic, texts::kAutoSysex, texts::kAutoSysexHint},
    {"GMBeforeGS", std::nullopt, &SysexOptions::gmBeforeGs, texts::kGmBeforeGs,
     texts::kGmBeforeGsHint},
    {"FixedSysexTrack", std::nullopt, &SysexOptions::fixedTrack, texts::kFixedTrack,
     texts::kFixedTrackHint},
    {"KorgPartEQ", Capability::KorgPartEqualizer, &SysexOptions::korgPartEqualizer,
     texts::kKorgPartEq, texts::kKorgPartEqHint},
    {"YamahaDSPsEnabled", Capability::YamahaDsps, &SysexOptions::yamahaDsps, texts::kYamahaDsps,
     texts::kYamahaDspsHint},
    {"YamahaMasterEQ", Capability::YamahaMasterEq, &SysexOptions::yamahaMasterEq,
     texts::kYamahaMasterEq, texts::kYamahaMasterEqHint},
    {"YamahaVocalHarmony", Capability::YamahaVocalHarmony, &SysexOptions::yamahaVocalHarmony,
     texts::kYamahaVocalHarmony, texts::kYamahaVocalHarmonyHint},
    {"YamahaAutoVocalHarmony", Capability::YamahaVocalHarmony,
     &SysexOptions::yamahaAutoVocalHarmony, texts::kYamahaAutoVocalHarmony,
     texts::kYamahaAutoVocalHarmonyHint},
    {"MotifDSPsEnabled", Capability::MotifRoutingAndDsps, &SysexOptions::motifDsps,
     texts::kMotifDsps, texts::kMotifDspsHint},
    {"MotifMasterEQFX", Capability::MotifRoutingAndDsps, &SysexOptions::motifMasterEq,
     texts::kMotifMasterEq, texts::kMotifMasterEqHint},
    {"MotifWithoutGMReset", Capability::MotifRoutingAndDsps, &SysexOptions::motifWithoutGmReset,
     texts::kMotifWithoutGm, texts::kMotifWithoutGmHint},
});

constexpr auto kIntegra7Outputs = std::to_array<AudioOutput>({{"Stereo Output A", 0},
                                                              {"Stereo Output B", 1},
                                                              {"Stereo Output C", 2},
                                                              {"Stereo Output D", 3},
                                                              {"Mono Output 1", 4},
                                                              {"Mono Output 2", 5},
                                                              {"Mono Output 3", 6},
                                                              {"Mono Output 4", 7},
                                                              {"Mono Output 5", 8},
                                                              {"Mono Output 6", 9},
                                                              {"Mono Output 7", 10},
                                                              {"Mono Output 8", 11}});
constexpr auto kMotifXsOutputs = std::to_array<AudioOutput>({{"Output L+R", 0x00},
                                                             {"Assignable L+R", 0x08},
                                                             {"m1+2", 0x09},
                                                             {"m3+4", 0x0A},
                                                             {"m5+6", 0x0B},
                                                             {"m7+8", 0x0C},
                                                             {"m9+10", 0x0D},
                                                             {"m11+12", 0x0E},
                                                             {"m13+14", 0x0F}});

std::string OutputSetting(std::size_t part) {
    return "AudioOutput" + std::string(part < 10 ? "0" : "") + std::to_string(part);
}

bool Applies(const SysexSwitch& choice, std::string_view instrumentName) {
    return !choice.capability || HasCapability(instrumentName, *choice.capability);
}

} // namespace

std::span<const SysexSwitch> SysexSwitches() {
    return kSwitches;
}

std::span<const AudioOutput> AudioOutputs(std::string_view instrumentName) {
    if (instrumentName == kIntegra7Name) {
        return kIntegra7Outputs;
    }
    return instrumentName == kMotifXs ? std::span<const AudioOutput>(kMotifXsOutputs)
                                      : std::span<const AudioOutput>();
}

std::string InstrumentSettings::ReadInstrument() {
    return std::string(
        CurrentName(store_.ReadStrFromUserRegistry(kFirstInstrument, kNoInstrument)));
}

bool InstrumentSettings::HasInstrument() {
    return store_.KeyInUserRegistry(kFirstInstrument);
}

bool InstrumentSettings::WriteInstrument(std::string_view name) {
    return store_.WriteStrToUserRegistry(kFirstInstrument, name);
}

std::string InstrumentSettings::ReadInstrumentOf(std::string_view output) {
    if (output.empty()) {
        return ReadInstrument();
    }
    return std::string(
        CurrentName(store_.ReadStrFromUserRegistrySubdir(output, kInstrument, kNoInstrument)));
}

bool InstrumentSettings::WriteInstrumentOf(std::string_view output, std::string_view name) {
    return output.empty() ? WriteInstrument(name)
                          : store_.WriteStrToUserRegistrySubdir(output, kInstrument, name);
}

SysexOptions InstrumentSettings::ReadOptions(std::string_view instrumentName) {
    SysexOptions options;
    for (const SysexSwitch& choice : kSwitches) {
        if (Applies(choice, instrumentName)) {
            options.*choice.field = ReadSwitch(choice, instrumentName);
        }
    }
    options.defaultTrack = ReadSysexTrack();
    if (!AudioOutputs(instrumentName).empty()) {
        for (std::size_t part = 0; part < options.partOutputs.size(); ++part) {
            options.partOutputs[part] = ReadAudioOutput(instrumentName, part);
        }
    }
    return options;
}

bool InstrumentSettings::ReadSwitch(const SysexSwitch& choice, std::string_view instrumentName) {
    const bool usual = SysexOptions().*choice.field;
    return choice.capability
               ? store_.ReadBoolFromUserRegistrySubdir(instrumentName, choice.setting, usual)
               : store_.ReadBoolFromUserRegistry(choice.setting, usual);
}

bool InstrumentSettings::WriteSwitch(const SysexSwitch& choice, std::string_view instrumentName,
                                     bool on) {
    return choice.capability
               ? store_.WriteBoolToUserRegistrySubdir(instrumentName, choice.setting, on)
               : store_.WriteBoolToUserRegistry(choice.setting, on);
}

std::int32_t InstrumentSettings::ReadSysexTrack() {
    const std::int32_t usual = SysexOptions().defaultTrack;
    const std::int32_t track = store_.ReadIntFromUserRegistry(kSysexTrack, usual);
    return track >= 0 && track <= kMostSysexTrack ? track : usual;
}

bool InstrumentSettings::WriteSysexTrack(std::int32_t track) {
    return store_.WriteIntToUserRegistry(kSysexTrack, std::clamp(track, 0, kMostSysexTrack));
}

std::int32_t InstrumentSettings::ReadRolandScMap(std::string_view instrumentName) {
    return RolandScMap(instrumentName,
                       store_.ReadIntFromUserRegistrySubdir(instrumentName, kRolandScMap, 0));
}

bool InstrumentSettings::WriteRolandScMap(std::string_view instrumentName, std::int32_t map) {
    return store_.WriteIntToUserRegistrySubdir(instrumentName, kRolandScMap, map);
}

bool InstrumentSettings::ReadLimexTe200(std::string_view instrumentName) {
    return HasCapability(instrumentName, Capability::LimexTe200) &&
           store_.ReadBoolFromUserRegistrySubdir(instrumentName, kLimexKey, false);
}

bool InstrumentSettings::WriteLimexTe200(std::string_view instrumentName, bool on) {
    return store_.WriteBoolToUserRegistrySubdir(instrumentName, kLimexKey, on);
}

std::uint8_t InstrumentSettings::ReadAudioOutput(std::string_view instrumentName,
                                                 std::size_t part) {
    const std::int32_t stored =
        store_.ReadIntFromUserRegistrySubdir(instrumentName, OutputSetting(part), 0);
    const auto outputs = AudioOutputs(instrumentName);
    const bool known = std::ranges::any_of(
        outputs, [stored](const AudioOutput& output) { return output.value == stored; });
    return static_cast<std::uint8_t>(known ? stored : 0);
}

bool InstrumentSettings::WriteAudioOutput(std::string_view instrumentName, std::size_t part,
                                          std::uint8_t value) {
    return store_.WriteIntToUserRegistrySubdir(instrumentName, OutputSetting(part), value);
}

} // namespace tracksmith::instruments
