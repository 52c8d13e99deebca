#pragma once

#include "base/text.h"
#include <QString>

#include "app/session/workspace.h"
#include "app/song_description.h"
#include "instruments/instrument_settings.h"
#include "instruments/voices/voice_lookup.h"
#include "mixer/forms/shown_voice.h"

namespace tracksmith::forms {

/// Names of voices on the instruments of the workspace, from the one set of voice tables of the
/// window. User-interface thread.
class VoiceNames {
public:
    /// Both must outlive the object.
    VoiceNames(const session::Workspace& workspace, instruments::InstrumentSettings& settings);

    /// Name of the first voice of a channel; empty when the song names none.
    ShownVoice NameOf(const app::SongDescription::ChannelLine& line, Language language) const;

    /// What the lists of instruments show beside a name: how many voices are known, or which common
    /// names are used.
    QString Remark(const instruments::Instrument& instrument, Language language) const;

    /// Which voices an instrument has by the user's settings.
    instruments::LookupOptions OptionsOf(instruments::InstrumentId id) const;

    instruments::VoiceTables& Tables() { return tables_; }

private:
    const session::Workspace& workspace_;
    instruments::InstrumentSettings& settings_;
    instruments::VoiceTables tables_;
};

} // namespace tracksmith::forms
