#include "app/channel_voices.h"

#include "instruments/voices/shared_sets.h"

namespace tracksmith::app {
namespace {

using instruments::VoiceMatch;
using instruments::VoiceNumbers;

constexpr std::uint8_t kDrumChannel = 9;

} // namespace

instruments::ChannelVoice FirstVoiceOf(const instruments::VoiceTables& tables,
                                       const SongDescription::ChannelLine& line,
                                       instruments::InstrumentId instrument,
                                       const instruments::LookupOptions& options) {
    const auto numbersFor = [&](bool kits) {
        return instruments::NumbersInForce(instrument, kits, line.bankMsb, line.bankLsb,
                                           line.program.value_or(std::uint8_t{0}));
    };
    const auto isExact = [&](bool kits, VoiceNumbers numbers) {
        return FindVoice(tables, instrument, kits, numbers, options).match == VoiceMatch::Exact;
    };
    const VoiceNumbers voice = numbersFor(false);
    const bool drums = line.channel == kDrumChannel || line.drumPart ||
                       (!isExact(false, voice) &&
                        (instruments::IsKitBank(instrument, voice.msb) || isExact(true, voice)));
    return {instrument, drums, drums ? numbersFor(true) : voice};
}

instruments::NamedVoice VoiceOfChannel(const instruments::VoiceTables& tables,
                                       const SongDescription::ChannelLine& line,
                                       instruments::InstrumentId instrument,
                                       const instruments::LookupOptions& options,
                                       Language language) {
    if (!line.program) {
        return {};
    }
    return instruments::NameVoice(tables, FirstVoiceOf(tables, line, instrument, options), options,
                                  language);
}

std::vector<instruments::NamedVoice> VoicesOfChannels(const instruments::VoiceTables& tables,
                                                      const SongDescription& song,
                                                      instruments::InstrumentId instrument,
                                                      Language language) {
    std::vector<instruments::NamedVoice> names;
    for (const SongDescription::ChannelLine& line : song.channels) {
        names.push_back(VoiceOfChannel(tables, line, instrument, {}, language));
    }
    return names;
}

} // namespace tracksmith::app
