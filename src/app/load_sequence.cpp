#include "app/load_sequence.h"

#include <new>
#include <optional>
#include <span>
#include <utility>

#include "base/errors.h"
#include "base/system/file_io.h"

#include "app/empty_song.h"
#include "app/midi_functions.h"
#include "app/song_file.h"
#include "app/texts.h"

namespace tracksmith::app {
namespace {

using session::Session;
using session::Workspace;

void EmptyWorkspace(Workspace& workspace) {
    song::ClearSong(workspace.song);
    workspace.file = {};
    workspace.hasSong = false;
    workspace.modified = false;
    workspace.loadReport = {};
    workspace.preparation = {};
    workspace.balanced = true;
}

// Decodes and runs the later steps of the load sequence in their order.
void LoadSong(Workspace& workspace, std::span<const std::uint8_t> bytes, MessageHost& host) {
    workspace.song.runningStatusAcrossSysex = workspace.runningStatusAcrossSysex ? 1 : 0;
    TMidiFunctions functions(workspace, host);
    const song::DecodeResult decoded = functions.DecodeMidiData(bytes);
    workspace.loadReport = decoded.report;
    functions.CheckEventCounter();
    functions.RemoveCountIns();
    functions.SetTimesAfterDecoding(decoded);
    functions.CheckForNoteOnsNoteOffs(decoded);
    functions.CheckForZeroLength(decoded);
    workspace.hasSong = true;
}

// Replaces the song by that in `bytes`; a fault leaves it empty.
void ReplaceSong(Workspace& workspace, std::span<const std::uint8_t> bytes, MessageHost& host) {
    EmptyWorkspace(workspace);
    try {
        LoadSong(workspace, bytes, host);
    } catch (const EMidiError&) {
        EmptyWorkspace(workspace);
        throw;
    } catch (const std::bad_alloc&) {
        EmptyWorkspace(workspace);
        RaiseMidiError(host, texts::kBufferMemory);
    }
}

// What loading did beyond reading and can be taken back; of both, preparing, which changes more.
const session::ChangeKind* StepOf(const Workspace& workspace) {
    if (workspace.preparation.Changed()) {
        return &session::kPrepareSong;
    }
    return workspace.loadReport[song::LoadChange::NotesLengthened] > 0 ? &session::kLengthenNotes
                                                                       : nullptr;
}

// The decoder has read these bytes before; only memory can be missing now.
void OfferTakingBack(Session& session, SharedBytes bytes) {
    const session::ChangeKind* const step = StepOf(session.Work());
    if (session.HasPlayer() && step != nullptr) {
        const bool prepared = session.Work().preparation.Changed();
        session.OfferTakingBackLoadStep(
            step->name, [bytes = std::move(bytes), options = session.Options(), prepared](
                            Workspace& target, bool withStep, MessageHost& shown) {
                // Read as the file was, whatever has been chosen since.
                target.decodeOptions = options.decodeOptions;
                target.runningStatusAcrossSysex = options.runningStatusAcrossSysex;
                target.sysexOptions.automatic = withStep && prepared;
                target.noteLength =
                    withStep || prepared ? options.noteLength : song::NoteLengthOptions();
                LoadSong(target, *bytes, shown);
            });
    }
}

std::vector<std::uint8_t> ReadFile(const std::filesystem::path& file, MessageHost& host) {
    std::optional<std::vector<std::uint8_t>> bytes;
    try {
        bytes = ReadSongFile(file);
    } catch (const std::bad_alloc&) {
        RaiseMidiError(host, texts::kBufferMemory);
    }
    if (!bytes) {
        RaiseMidiError(host, texts::OpenFailed(host.CurrentLanguage(), system::PathText(file)));
    }
    return *std::move(bytes);
}

} // namespace

void ClearMidiMemory(Session& session, MessageHost& host) {
    session.Change(session::kReplaceSong, host, [](Workspace& workspace) {
        EmptyWorkspace(workspace);
        return true;
    });
}

void OpenMidiData(Session& session, SharedBytes bytes, const std::filesystem::path& name,
                  MessageHost& host, bool isDemo) {
    if (bytes->size() < song::kSmallestFile) {
        RaiseMidiError(host, texts::kTooShort);
    }
    // The name may be the workspace's own.
    session.Change(session::kReplaceSong, host, [&, file = name](Workspace& workspace) {
        ReplaceSong(workspace, *bytes, host);
        workspace.file = session::LoadedFile(file, isDemo);
        return true;
    });
    OfferTakingBack(session, std::move(bytes));
}

void OpenMidiData(Session& session, std::vector<std::uint8_t> bytes,
                  const std::filesystem::path& name, MessageHost& host) {
    OpenMidiData(session, std::make_shared<const std::vector<std::uint8_t>>(std::move(bytes)), name,
                 host, false);
}

void OpenMidiFile(Session& session, const std::filesystem::path& file, MessageHost& host,
                  bool isDemo) {
    OpenMidiData(session, std::make_shared<const std::vector<std::uint8_t>>(ReadFile(file, host)),
                 file, host, isDemo);
}

void NewSong(Session& session, MessageHost& host) {
    const std::vector<std::uint8_t> bytes = EmptySongBytes(host.CurrentLanguage());
    session.Change(session::kReplaceSong, host, [&](Workspace& workspace) {
        ReplaceSong(workspace, bytes, host);
        workspace.loadReport = {};
        return true;
    });
}

} // namespace tracksmith::app
