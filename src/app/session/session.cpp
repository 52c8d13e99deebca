#include "app/session/session.h"

#include <new>
#include <utility>

#include "base/errors.h"

#include "app/session/texts.h"
#include "song/note_pairing.h"
#include "song/time_map.h"

namespace tracksmith::session {

Session::~Session() {
    EndPlayer();
}

void Session::StartPlayer(const player::PlayerSetup& setup, settings::SettingsStore* store,
                          std::unique_ptr<player::Stopwatch> stopwatch) {
    player_ = std::make_unique<player::TMidiPlayer>(work_.song, std::move(stopwatch));
    transport_ = std::make_unique<Transport>(work_, *player_, store, listeners_, setup.host);
    player_->FormCreate(setup);
    if (store != nullptr) {
        transport_->Outputs().Apply();
    }
    if (work_.hasSong) {
        transport_->TakeSong();
    }
}

void Session::EndPlayer() {
    if (player_) {
        player_->FormDestroy();
        transport_.reset();
        player_.reset();
    }
}

bool Session::Change(const ChangeKind& kind, MessageHost& host, const Edit& edit) {
    if (const Text* const reason = WhyNoChange(); reason != nullptr && !kind.replaces) {
        RaiseMidiError(host, *reason);
    }
    if (kind.replaces && Modified() && !changing_) {
        listeners_.Tell(&SessionListener::OnLeavingSong);
    }
    struct Flag {
        explicit Flag(bool& flag) : value(flag), before(std::exchange(flag, true)) {}
        Flag(const Flag&) = delete;
        Flag& operator=(const Flag&) = delete;
        ~Flag() { value = before; }
        bool& value;
        bool before;
    };
    const Flag changing(changing_);
    return MakeChange(kind, host, edit);
}

bool Session::MakeChange(const ChangeKind& kind, MessageHost& host, const Edit& edit) {
    const bool wasPlaying = transport_ && transport_->Playing();
    const std::int32_t tempoOffset = TempoOffset();
    StopForChange(host);
    // The player has stopped, so nothing is in its way from here on.
    if (player_) {
        static_cast<void>(player_->SetTempoOffset(0));
    }
    if (!kind.replaces) {
        listeners_.Tell(&SessionListener::OnChanging);
    }
    const auto finish = [&] {
        BringInOrder(kind);
        if (player_ && !kind.replaces) {
            static_cast<void>(player_->SetTempoOffset(tempoOffset));
        }
        if (wasPlaying && kind.playsOn) {
            transport_->Play();
        }
        listeners_.Tell(&SessionListener::OnSongChanged, kind);
        listeners_.Tell(&SessionListener::OnFileState);
    };
    bool changed = false;
    try {
        Keep(kind, host);
        ++revision_;
        changed = RunEdit(kind, edit);
    } catch (...) {
        finish();
        throw;
    }
    finish();
    return changed;
}

void Session::StopForChange(MessageHost& host) {
    if (transport_ && !transport_->Stop()) {
        RaiseMidiError(host, texts::PortHangs(host.CurrentLanguage(), transport_->HangingPort()));
    }
}

// Where memory does not suffice the user decides whether to go without.
void Session::Keep(const ChangeKind& kind, MessageHost& host) {
    if (kind.takeBack && work_.hasSong && !takeBack_.Keep(work_)) {
        const Language language = host.CurrentLanguage();
        if (!host.AskYesNo(texts::NoMemoryToTakeBack(language, kind.name))) {
            throw EMidiError(std::string(texts::kNotChanged.In(language)));
        }
    }
}

bool Session::RunEdit(const ChangeKind& kind, const Edit& edit) {
    bool changed = false;
    try {
        changed = edit(work_);
    } catch (...) {
        if (kind.takeBack) {
            takeBack_.Restore(work_);
        } else if (kind.replaces) {
            takeBack_.Drop();
        }
        throw;
    }
    if (kind.takeBack && changed) {
        takeBack_.Arm(kind.name);
    } else if (changed && !kind.exchanges) {
        takeBack_.Drop();
    }
    work_.modified = work_.modified || (changed && !kind.replaces && !kind.exchanges);
    return changed;
}

void Session::BringInOrder(const ChangeKind& kind) {
    if (kind.replaces) {
        if (transport_) {
            transport_->TakeSong();
        }
        return;
    }
    song::SetNoteOnOffPointers(work_.song);
    song::UpdateTimeZoneData(work_.song);
    if (player_) {
        static_cast<void>(player_->RebuildAfterEdit());
    }
}

bool Session::Modified() const {
    return work_.modified || TempoOffset() != 0;
}

bool Session::RefusesChange() const {
    const bool refused = WhyNoChange() != nullptr;
    if (refused) {
        listeners_.Tell(&SessionListener::OnChangeRefused);
    }
    return refused;
}

const Text* Session::WhyNoChange() const {
    if (HearsOther()) {
        return &texts::kHearsOther;
    }
    return awaitsSong_ ? &texts::kAwaitsSong : nullptr;
}

void Session::MarkModified() {
    ++edits_;
    takeBack_.Touch();
    if (!work_.modified) {
        work_.modified = true;
        listeners_.Tell(&SessionListener::OnFileState);
    }
}

void Session::MarkSaved(const std::filesystem::path& file, SaveFormat format) {
    work_.file = LoadedFile(file, false);
    work_.file.format = format;
    work_.modified = false;
    work_.loaded.saved = true;
    takeBack_.SongSaved();
    if (transport_ && !HearsOther()) {
        transport_->TakeTempoAsFile();
    }
    listeners_.Tell(&SessionListener::OnSaved);
    listeners_.Tell(&SessionListener::OnFileState);
}

void Session::AcceptFileOnDisk() {
    work_.file.stamp = StampOf(work_.file.source);
}

void Session::OfferTakingBackLoadStep(const Text& name, session::TakeBack::DecodeAgain decode) {
    takeBack_.ArmLoadStep(name, std::move(decode));
    listeners_.Tell(&SessionListener::OnFileState);
}

void Session::TakeBackLastChange(MessageHost& host) {
    if (!takeBack_.Available()) {
        return;
    }
    try {
        Change(kTakeBack, host, [&](Workspace& workspace) {
            takeBack_.Exchange(workspace, host);
            return true;
        });
    } catch (const std::bad_alloc&) {
        RaiseMidiError(host, texts::kNoMemory);
    }
}

} // namespace tracksmith::session
