#include "app/forms/song/voice_names.h"

#include <optional>

#include "base/data_folders.h"
#include "base/forms/qt_text.h"

#include "app/channel_voices.h"
#include "instruments/forms/texts.h"
#include "instruments/voices/texts.h"
#include "instruments/voices/voice_list.h"

namespace tracksmith::forms {
namespace {

QString NumbersText(const app::SongDescription::ChannelLine& line) {
    const auto part = [](std::optional<std::uint8_t> byte, int from) {
        return byte ? QString::number(*byte + from) : QStringLiteral("–");
    };
    if (!line.bankMsb && !line.bankLsb) {
        return line.program ? part(line.program, 1) : QString();
    }
    return part(line.bankMsb, 0) + QStringLiteral("·") + part(line.bankLsb, 0) +
           QStringLiteral("·") + part(line.program, 1);
}

} // namespace

VoiceNames::VoiceNames(const session::Workspace& workspace,
                       instruments::InstrumentSettings& settings)
    : workspace_(workspace), settings_(settings), tables_(VoiceFolders()) {}

instruments::LookupOptions VoiceNames::OptionsOf(instruments::InstrumentId id) const {
    const instruments::Instrument* instrument = instruments::FindInstrument(id);
    if (instrument == nullptr) {
        return {};
    }
    return {settings_.ReadRolandScMap(instrument->name),
            settings_.ReadLimexTe200(instrument->name)};
}

ShownVoice VoiceNames::NameOf(const app::SongDescription::ChannelLine& line,
                              Language language) const {
    if (!line.program) {
        return {{}, false, {}, NumbersText(line)};
    }
    const instruments::InstrumentId id = workspace_.outputs.InstrumentOfChannel(line.channel);
    const instruments::LookupOptions options = OptionsOf(id);
    const auto channel = app::FirstVoiceOf(tables_, line, id, options);
    const auto voice = instruments::NameVoice(tables_, channel, options, language);
    if (voice.match != instruments::VoiceMatch::Similar) {
        return {ToQString(voice.name), false, {}, NumbersText(line)};
    }
    return {ToQString(voice.name), true,
            ToQString(instruments::texts::WhySimilar(channel.numbers, voice.numbers, language)),
            NumbersText(line)};
}

QString VoiceNames::Remark(const instruments::Instrument& instrument, Language language) const {
    const instruments::VoiceTable* own = tables_.OwnTable(instrument.id);
    if (own != nullptr) {
        return InLanguage(instrument_texts::kVoiceCount, language)
            .arg(NumberText(static_cast<std::int64_t>(own->Voices().size()), language));
    }
    const auto set = instruments::NamingTable(tables_, instrument.id);
    return InLanguage(instrument_texts::kSetNames, language)
        .arg(ToQString(instruments::texts::SetName(set)));
}

} // namespace tracksmith::forms
