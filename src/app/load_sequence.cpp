#include "app/load_sequence.h"

#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "base/errors.h"
#include "base/system/file_io.h"

#include "app/empty_song.h"
#include "app/midi_functions.h"
#include "app/texts.h"

namespace tracksmith::app {
namespace {

// Decodes and runs the later steps of the load sequence in their order.
void LoadSong(Workspace& workspace, std::span<const std::uint8_t> bytes, MessageHost& host) {
    TMidiFunctions functions(workspace, host);
    const song::DecodeResult decoded = functions.DecodeMidiData(bytes);
    workspace.loadReport = decoded.report;
    functions.CheckEventCounter();
    functions.RemoveCountIns();
    functions.SetTimesAfterDecoding(decoded);
    functions.SetFirstValues();
    functions.CheckForNoteOnsNoteOffs();
    functions.CheckForZeroLength();
}

} // namespace

void ClearMidiMemory(Workspace& workspace) {
    song::ClearSong(workspace.song);
    workspace.fileName.clear();
    workspace.hasSong = false;
    workspace.modified = false;
    workspace.loadReport = {};
    workspace.preparation = {};
}

void OpenMidiData(Workspace& workspace, std::span<const std::uint8_t> bytes,
                  std::filesystem::path name, MessageHost& host) {
    if (bytes.size() < song::kSmallestFile) {
        RaiseMidiError(host, texts::kTooShort);
    }
    ClearMidiMemory(workspace);
    try {
        LoadSong(workspace, bytes, host);
    } catch (const EMidiError&) {
        ClearMidiMemory(workspace);
        throw;
    } catch (const std::bad_alloc&) {
        ClearMidiMemory(workspace);
        RaiseMidiError(host, texts::kBufferMemory);
    }
    workspace.fileName = std::move(name);
    workspace.hasSong = true;
}

void OpenMidiFile(Workspace& workspace, const std::filesystem::path& file, MessageHost& host) {
    std::optional<std::vector<std::uint8_t>> bytes;
    try {
        bytes = system::ReadRegularFile(file);
    } catch (const std::bad_alloc&) {
        RaiseMidiError(host, texts::kBufferMemory);
    }
    if (!bytes) {
        RaiseMidiError(host, texts::OpenFailed(host.CurrentLanguage(), system::PathText(file)));
    }
    OpenMidiData(workspace, *bytes, file, host);
}

void NewSong(Workspace& workspace, MessageHost& host) {
    OpenMidiData(workspace, EmptySongBytes(host.CurrentLanguage()), {}, host);
    workspace.loadReport = {};
}

} // namespace tracksmith::app
