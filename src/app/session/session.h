#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>

#include "base/message_host.h"
#include "base/text.h"

#include "app/session/change_kind.h"
#include "app/session/listener_list.h"
#include "app/session/take_back.h"
#include "app/session/transport.h"
#include "app/session/workspace.h"
#include "app/settings/settings_store.h"
#include "player/player.h"

namespace tracksmith::session {

/// The one owner of the song, its file, its player and the choice of outputs. Every change of the
/// song goes through Change, so that player, displays and file state can never be left behind.
///
/// Belongs to the thread that makes it. Works without a player too, for batches.
class Session {
public:
    Session() = default;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    const Workspace& Work() const { return work_; }
    const song::Song& Song() const { return work_.song; }
    bool HasSong() const { return work_.hasSong; }
    /// Codes the song; keeps its memory between savings.
    song::SongEncoder& Encoder() { return encoder_; }
    /// How songs are read, prepared and written from now on.
    WorkOptions& Options() { return work_; }

    /// The listener must be removed before it is destroyed.
    void AddListener(SessionListener& listener) { listeners_.Add(listener); }
    void RemoveListener(SessionListener& listener) { listeners_.Remove(listener); }

    /// Makes the player and its controls, and starts the playback thread. Once. What is in `setup`
    /// and `store` must outlive the player. Without a store the channels are routed by the caller.
    /// `stopwatch` is the system's clock unless a test brings its own.
    void StartPlayer(const player::PlayerSetup& setup, settings::SettingsStore* store = nullptr,
                     std::unique_ptr<player::Stopwatch> stopwatch = nullptr);
    /// Ends the player; the song stays.
    void EndPlayer();
    /// The controls of the player; only after StartPlayer.
    Transport& Controls() const { return *transport_; }
    bool HasPlayer() const { return transport_ != nullptr; }

    /// What changes the song: gets the workspace and says whether it has changed anything.
    using Edit = std::function<bool(Workspace& workspace)>;

    /// Changes the song: ends playing as the Stop button does, keeps the song where `kind` asks for
    /// it, edits, and then brings note pairs, times, player and listeners in
    /// order. The edit sees the tempos of
    /// the file; a practice tempo is applied again afterwards. While another song is heard in place
    /// of this one, or is being loaded, only a change that replaces it is made.
    ///
    /// Returns what `edit` returned. Raises EMidiError when the song cannot be changed now, with
    /// the reason, which has been shown through `host`. What `edit` throws is passed on; the song
    /// is as before then, if `kind` keeps it.
    bool Change(const ChangeKind& kind, MessageHost& host, const Edit& edit);

    /// For changes in place: true while there is a reason not to change the song (WhyNoChange). The
    /// listeners are told then that somebody wanted to.
    bool RefusesChange() const;
    /// Why the song must not be changed now, in the user's words: another one is heard in its place
    /// or is being loaded. Null when it may be changed.
    const Text* WhyNoChange() const;
    /// Another song is being loaded and will replace this one, or not any more: what is changed
    /// meanwhile would be lost.
    void SetAwaitsSong(bool awaits) { awaitsSong_ = awaits; }
    /// Another song is heard in place of this one.
    bool HearsOther() const { return transport_ && transport_->Heard(); }

    /// A change is being made, which may ask the user in between: the song is not in order then.
    bool Changing() const { return changing_; }

    /// Grows before each edit: links found at another revision may lead to events that are gone.
    std::uint64_t Revision() const { return revision_; }

    /// Grows with every edit, also of data bytes in place.
    std::uint64_t Edits() const { return revision_ + edits_; }

    /// The practice tempo in quarter notes per minute against the file's; 0 without a player.
    std::int32_t TempoOffset() const { return player_ ? player_->TempoOffset() : 0; }
    /// The song differs from its file: by an edit, or by the practice tempo, which would be saved.
    bool Modified() const;
    /// The user has changed a data byte of the song in place, as the mixer's controls do. The
    /// listeners are told where it was unmodified.
    void MarkModified();
    /// The song has been written to `file` in `format`. Its practice tempo is that of the file from
    /// now on.
    void MarkSaved(const std::filesystem::path& file, SaveFormat format);
    /// The file on the disk is known as it is now: others' changes of it have been told.
    void AcceptFileOnDisk();

    /// What the user can take back; see TakeBack.
    const session::TakeBack& LastChange() const { return takeBack_; }
    /// A step of the load that has just been done can be taken back.
    void OfferTakingBackLoadStep(const Text& name, session::TakeBack::DecodeAgain decode);
    /// Exchanges the song with the one before the last change. Nothing happens when there is none.
    /// Raises EMidiError like Change.
    void TakeBackLastChange(MessageHost& host);

private:
    bool MakeChange(const ChangeKind& kind, MessageHost& host, const Edit& edit);
    void StopForChange(MessageHost& host);
    void Keep(const ChangeKind& kind, MessageHost& host);
    bool RunEdit(const ChangeKind& kind, const Edit& edit);
    void BringInOrder(const ChangeKind& kind);

    Workspace work_;
    bool changing_ = false;
    bool awaitsSong_ = false;
    std::uint64_t revision_ = 0;
    std::uint64_t edits_ = 0; // in place
    song::SongEncoder encoder_;
    session::TakeBack takeBack_;
    ListenerList listeners_;
    std::unique_ptr<player::TMidiPlayer> player_;
    std::unique_ptr<Transport> transport_;
};

} // namespace tracksmith::session
