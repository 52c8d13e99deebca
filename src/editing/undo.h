#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/message_host.h"
#include "base/text.h"

#include "app/session/session.h"
#include "song/song_snapshot.h"

namespace tracksmith::editing {

/// The commands that can be undone; the numbers are the tags of the menu entries.
enum class UndoTool : std::uint8_t {
    None = 0,
    CopyRange = 1,
    DeleteRange = 2,
    FadeOut = 3,
    TransposeRange = 4,
    Recording = 5
};

/// Undoing of the last command that cuts, copies or moves a part of the song: one level, no redo.
/// The copy of the song is made before the command and replaces the one before when the command has
/// succeeded, since only the last command can be undone. Another song ends it. Owner's thread of
/// the session.
class Undo : private session::SessionListener {
public:
    /// `session` must outlive the object.
    explicit Undo(session::Session& session);
    ~Undo() override;

    /// State of the menu entries: the tag of the command, whether they are enabled, what they read.
    UndoTool Tag() const { return tag_; }
    bool Enabled() const { return tag_ != UndoTool::None; }
    std::string Caption(Language language) const;

    /// Lets `edit` change the song as one change of the session that can be undone afterwards.
    /// Returns what `edit` returned; after false the song has to be as before. Raises EMidiError
    /// like Session::Change and where memory does not suffice. When anything is thrown the song and
    /// what could be undone before stay as they were. `channel` (0-15) is that of a recording.
    bool Run(UndoTool tool, MessageHost& host, const session::Session::Edit& edit,
             std::size_t channel = 0);

    /// Copies the song as it is, for the command that follows. Shows and raises the memory message.
    void BackupMidiData(const session::Workspace& workspace, MessageHost& host);
    /// Gives that copy up; what could be undone before stays.
    void ClearBackupMidiData() { pending_.song.Drop(); }
    /// The command has been carried out: from now on it can be undone. Without a copy before,
    /// undoing only says that there is none.
    void Arm(UndoTool tool, std::size_t channel = 0);

    /// Stops playing, asks, and puts the song back; that change can itself be taken back. Returns
    /// whether it was done. Raises EMidiError like Session::Change; then nothing has changed.
    bool MME_UndoClick(MessageHost& host);
    bool PMC_UndoClick(MessageHost& host) { return MME_UndoClick(host); }

private:
    struct Copy {
        song::SongSnapshot song;
        std::size_t tracks = 0;
    };

    void OnSongChanged(const session::ChangeKind& kind) override;
    bool RunEdit(session::Workspace& work, MessageHost& host, const session::Session::Edit& edit);
    void GiveUp(UndoTool tool, MessageHost& host);
    void Disarm();
    static void PutBack(const Copy& copy, song::Song& song);
    bool PutBackAsChange(MessageHost& host);

    session::Session& session_;
    Copy pending_;
    Copy armed_;
    UndoTool tag_ = UndoTool::None;
    std::size_t channel_ = 0;
};

} // namespace tracksmith::editing
