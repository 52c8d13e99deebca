#include "editing/undo.h"

#include <new>
#include <string_view>
#include <utility>

#include "base/errors.h"
#include "base/memory_budget.h"

#include "editing/song_copy.h"
#include "editing/texts.h"
#include "mixer/transposition.h"
#include "song/song_length.h"

namespace tracksmith::editing {
namespace {

constexpr session::ChangeKind kUndoChange{.name = texts::kUndo, .takeBack = true};

// The commands keep a copy of their own, so the session keeps none.
constexpr session::ChangeKind kCopyRange{.name = Text{De{"Bereich kopieren"}, En{"Copy Range"}}};
constexpr session::ChangeKind kDeleteRange{.name = Text{De{"Bereich löschen"}, En{"Delete Range"}}};
constexpr session::ChangeKind kTransposeRange{
    .name = Text{De{"Bereich transponieren"}, En{"Transpose Range"}}};
constexpr session::ChangeKind kFadeOut{.name = Text{Both{"Fade-Out"}}};
constexpr session::ChangeKind kRecording{.name = Text{De{"Aufnahme"}, En{"Recording"}}};

const session::ChangeKind& KindOf(UndoTool tool) {
    switch (tool) {
        case UndoTool::CopyRange:
            return kCopyRange;
        case UndoTool::DeleteRange:
            return kDeleteRange;
        case UndoTool::TransposeRange:
            return kTransposeRange;
        case UndoTool::FadeOut:
            return kFadeOut;
        default:
            return kRecording;
    }
}

} // namespace

Undo::Undo(session::Session& session) : session_(session) {
    session_.AddListener(*this);
}

Undo::~Undo() {
    session_.RemoveListener(*this);
}

std::string Undo::Caption(Language language) const {
    switch (tag_) {
        case UndoTool::CopyRange:
            return std::string(texts::kUndoCopyRange.In(language));
        case UndoTool::DeleteRange:
            return std::string(texts::kUndoDeleteRange.In(language));
        case UndoTool::FadeOut:
            return std::string(texts::kUndoFadeOut.In(language));
        case UndoTool::TransposeRange:
            return std::string(texts::kUndoTransposeRange.In(language));
        case UndoTool::Recording:
            return std::string(texts::kUndoRecording.In(language)) + std::to_string(channel_ + 1);
        default:
            return std::string(texts::kUndo.In(language));
    }
}

bool Undo::Run(UndoTool tool, MessageHost& host, const session::Session::Edit& edit,
               std::size_t channel) {
    const UndoTool formerTag = tag_;
    const std::size_t formerChannel = channel_;
    bool changed = false;
    try {
        session_.Change(KindOf(tool), host, [&](session::Workspace& work) {
            changed = RunEdit(work, host, edit);
            if (changed) { // the former copy stays until the change is complete
                std::swap(armed_, pending_);
                tag_ = tool;
                channel_ = channel;
            }
            return changed;
        });
    } catch (const std::bad_alloc&) {
        if (!changed) {
            ClearBackupMidiData();
            throw;
        }
        std::swap(armed_, pending_);
        tag_ = formerTag;
        channel_ = formerChannel;
        GiveUp(tool, host);
    }
    pending_.song.Drop();
    return changed;
}

bool Undo::RunEdit(session::Workspace& work, MessageHost& host,
                   const session::Session::Edit& edit) {
    BackupMidiData(work, host);
    try {
        return edit(work);
    } catch (const std::bad_alloc&) {
        PutBack(pending_, work.song);
        ClearBackupMidiData();
        RaiseMidiError(host, texts::kNoMemory);
    } catch (...) {
        PutBack(pending_, work.song);
        ClearBackupMidiData();
        throw;
    }
}

// The edit is done, but memory has ended while the session brought the song in order.
void Undo::GiveUp(UndoTool tool, MessageHost& host) {
    session_.Change(KindOf(tool), host, [this](session::Workspace& work) {
        PutBack(pending_, work.song);
        return true;
    });
    ClearBackupMidiData();
    RaiseMidiError(host, texts::kNoMemory);
}

void Undo::BackupMidiData(const session::Workspace& workspace, MessageHost& host) {
    ClearBackupMidiData();
    const std::uint64_t song = workspace.song.pool.UsedBytes();
    const std::uint64_t former = armed_.song.Valid() ? armed_.song.Bytes() : 0;
    try {
        if (2 * song + former > SongMemoryBudget()) {
            throw std::bad_alloc();
        }
        pending_.song.Take(workspace.song);
        pending_.tracks = workspace.song.tracks.size();
    } catch (const std::bad_alloc&) {
        pending_ = {};
        RaiseMidiError(host, texts::kNoMemory);
    }
}

void Undo::Arm(UndoTool tool, std::size_t channel) {
    std::swap(armed_, pending_);
    pending_.song.Drop();
    tag_ = tool;
    channel_ = channel;
}

bool Undo::MME_UndoClick(MessageHost& host) {
    if (!Enabled()) {
        return false;
    }
    if (session_.HasPlayer() && session_.Controls().Playing() && !session_.Controls().Stop()) {
        return false; // a driver hangs; the transport has told it
    }
    const Language language = host.CurrentLanguage();
    std::string command = Caption(language);
    constexpr std::string_view kSeparator = " - ";
    if (const auto place = command.find(kSeparator); place != std::string::npos) {
        command.erase(0, place + kSeparator.size());
    }
    if (!host.AskYesNo(texts::UndoQuestion(language, command))) {
        return false;
    }
    if (!armed_.song.Valid()) {
        host.ShowMessage(texts::kNoSnapshot.In(language));
        return false;
    }
    return PutBackAsChange(host);
}

bool Undo::PutBackAsChange(MessageHost& host) {
    try {
        session_.Change(kUndoChange, host, [&](session::Workspace& work) {
            PutBack(armed_, work.song);
            // The pitches are those of the file; whoever transposes does so anew.
            mixer::WritePitches(work.song, {});
            Disarm();
            return true;
        });
    } catch (const std::bad_alloc&) {
        RaiseMidiError(host, texts::kNoMemory);
    }
    if (session_.HasPlayer() && session_.Controls().Tick() >= session_.Song().songLength) {
        session_.Controls().MoveToStart();
    }
    return true;
}

// What is kept are the tracks of that time; those that came later keep their events.
void Undo::PutBack(const Copy& copy, song::Song& song) {
    song::Song later;
    for (std::size_t index = copy.tracks; index < song.tracks.size(); ++index) {
        AppendTrack(song.tracks[index], later);
    }
    copy.song.Restore(song);
    for (const song::Track& track : later.tracks) {
        AppendTrack(track, song);
    }
    if (!later.tracks.empty()) {
        song::RenewSongLength(song);
    }
}

void Undo::OnSongChanged(const session::ChangeKind& kind) {
    if (kind.replaces) {
        Disarm();
    }
}

// The buffers stay for the next command.
void Undo::Disarm() {
    armed_.song.Drop();
    tag_ = UndoTool::None;
    channel_ = 0;
}

} // namespace tracksmith::editing
