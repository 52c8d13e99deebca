#include "app/forms/changes/changes_watch.h"

#include <utility>

#include "base/errors.h"
#include "base/recording_message_host.h"

#include "app/forms/transport/session_signals.h"
#include "app/save_song.h"

namespace tracksmith::forms {

ChangesWatch::ChangesWatch(session::Session& session, SessionSignals& signalSource)
    : session_(session) {
    connect(&comparison_, &BackgroundComparison::Done, this,
            [this](const std::shared_ptr<const ComparedSongs>& result) {
                result_ = result;
                emit Changed();
            });
    // When whoever changed the song has done.
    connect(&signalSource, &SessionSignals::SongChanged, this, &ChangesWatch::Look,
            Qt::QueuedConnection);
    connect(&signalSource, &SessionSignals::HeardSongChanged, this, &ChangesWatch::Look,
            Qt::QueuedConnection);
    // What moves data bytes in place does not tell each move.
    connect(&signalSource, &SessionSignals::PortsChecked, this, &ChangesWatch::Look);
}

void ChangesWatch::SetActive(bool active, Language language) {
    active_ = active;
    language_ = language;
    comparison_.Drop();
    compared_ = {};
    result_.reset();
    Look();
}

void ChangesWatch::Look() {
    if (!active_ || session_.Changing() || session_.HearsOther()) {
        return;
    }
    const State state{session_.Edits(), session_.TempoOffset(), session_.Work().loaded.bytes.get()};
    if (state == compared_) {
        return;
    }
    if (state.loaded != compared_.loaded) {
        result_.reset(); // of another song
    }
    compared_ = state;
    if (state.loaded == nullptr) {
        comparison_.Drop();
    } else {
        Begin();
    }
    emit Changed();
}

void ChangesWatch::Begin() {
    const session::SongSource& loaded = session_.Work().loaded;
    RecordingMessageHost unseen(language_);
    try {
        const auto bytes = app::EncodeSong(session_, app::SaveFormat::AsSong, unseen);
        comparison_.Start(
            {loaded.bytes,
             std::make_shared<const std::vector<std::uint8_t>>(bytes.begin(), bytes.end()),
             loaded.decodeOptions, loaded.runningStatusAcrossSysex, session_.TempoOffset()},
            language_);
    } catch (const EMidiError& error) {
        auto failed = std::make_shared<ComparedSongs>();
        failed->error = error.what();
        comparison_.Drop();
        result_ = std::move(failed);
    }
}

} // namespace tracksmith::forms
