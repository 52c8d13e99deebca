#pragma once

#include <memory>

#include "base/text.h"
#include <QString>

#include "app/session/workspace.h"
#include "app/song_description.h"
#include "instruments/instrument_settings.h"
#include "instruments/voices/voice_lookup.h"

namespace tracksmith::forms {

/// Names of voices on the instruments of the workspace. User-interface thread.
class VoiceNames {
public:
    /// Both must outlive the object.
    VoiceNames(const session::Workspace& workspace, instruments::InstrumentSettings& settings);

    /// Name of the first voice of a channel; empty when the song names none.
    QString NameOf(const app::SongDescription::ChannelLine& line, Language language) const;

    /// What the lists of instruments show beside a name: how many voices are known.
    QString Remark(const instruments::Instrument& instrument, Language language) const;

    /// Which voices an instrument has by the user's settings.
    instruments::LookupOptions OptionsOf(instruments::InstrumentId id) const;

    /// Reads the tables anew, after one of them has been replaced.
    void Reload();

private:
    const session::Workspace& workspace_;
    instruments::InstrumentSettings& settings_;
    std::unique_ptr<instruments::VoiceTables> tables_;
};

} // namespace tracksmith::forms
