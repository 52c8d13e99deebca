#include "app/channel_voices.h"

namespace tracksmith::app {
namespace {

constexpr std::uint8_t kDrumChannel = 9;

} // namespace

std::string VoiceOfChannel(const instruments::VoiceTables& tables,
                           const SongDescription::ChannelLine& line,
                           instruments::InstrumentId instrument,
                           const instruments::LookupOptions& options, Language language) {
    if (!line.program) {
        return {};
    }
    const instruments::VoiceNumbers numbers{line.bankMsb.value_or(0), line.bankLsb.value_or(0),
                                            *line.program};
    const auto known = [&](bool kits) {
        return instruments::FindVoice(tables, instrument, kits, numbers, options).voice != nullptr;
    };
    const bool drums = line.channel == kDrumChannel || (!known(false) && known(true));
    return instruments::PatchName(tables, {instrument, drums, numbers}, options, language);
}

std::vector<std::string> VoicesOfChannels(const instruments::VoiceTables& tables,
                                          const SongDescription& song,
                                          instruments::InstrumentId instrument, Language language) {
    std::vector<std::string> names;
    for (const SongDescription::ChannelLine& line : song.channels) {
        names.push_back(VoiceOfChannel(tables, line, instrument, {}, language));
    }
    return names;
}

} // namespace tracksmith::app
