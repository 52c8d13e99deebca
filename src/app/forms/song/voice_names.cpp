#include "app/forms/song/voice_names.h"

#include "base/data_folders.h"
#include "base/forms/qt_text.h"

#include "app/channel_voices.h"
#include "instruments/forms/texts.h"

namespace tracksmith::forms {
VoiceNames::VoiceNames(const session::Workspace& workspace,
                       instruments::InstrumentSettings& settings)
    : workspace_(workspace), settings_(settings) {
    Reload();
}

void VoiceNames::Reload() {
    tables_ = std::make_unique<instruments::VoiceTables>(VoiceFolders());
}

instruments::LookupOptions VoiceNames::OptionsOf(instruments::InstrumentId id) const {
    const instruments::Instrument* instrument = instruments::FindInstrument(id);
    if (instrument == nullptr) {
        return {};
    }
    return {settings_.ReadRolandScMap(instrument->name),
            settings_.ReadLimexTe200(instrument->name)};
}

QString VoiceNames::NameOf(const app::SongDescription::ChannelLine& line, Language language) const {
    const instruments::InstrumentId id = workspace_.outputs.InstrumentOfChannel(line.channel);
    return ToQString(app::VoiceOfChannel(*tables_, line, id, OptionsOf(id), language));
}

QString VoiceNames::Remark(const instruments::Instrument& instrument, Language language) const {
    const instruments::VoiceTable* own = tables_->OwnTable(instrument.id);
    return own == nullptr
               ? InLanguage(instrument_texts::kGmNames, language)
               : InLanguage(instrument_texts::kVoiceCount, language)
                     .arg(NumberText(static_cast<std::int64_t>(own->Voices().size()), language));
}

} // namespace tracksmith::forms
