#include "app/load_sequence.h"

#include <new>
#include <optional>
#include <span>
#include <utility>

#include "base/errors.h"
#include "base/recording_message_host.h"
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
    workspace.loaded = {};
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

// The decoder has read these bytes before, with `options`; only memory can be missing now.
void OfferTakingBack(Session& session, SharedBytes bytes, const session::WorkOptions& options) {
    const session::ChangeKind* const step = StepOf(session.Work());
    if (session.HasPlayer() && step != nullptr) {
        const bool prepared = session.Work().preparation.Changed();
        session.OfferTakingBackLoadStep(
            step->name, [bytes = std::move(bytes), options, prepared](
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

template <typename Read>
SharedBytes ReadOrRaise(const std::filesystem::path& file, MessageHost& host, Read&& read) {
    std::optional<std::vector<std::uint8_t>> bytes;
    try {
        bytes = read();
    } catch (const std::bad_alloc&) {
        RaiseMidiError(host, texts::kBufferMemory);
    }
    if (!bytes) {
        RaiseMidiError(host, texts::OpenFailed(host.CurrentLanguage(), system::PathText(file)));
    }
    return std::make_shared<const std::vector<std::uint8_t>>(*std::move(bytes));
}

void RaiseIfTooShort(std::span<const std::uint8_t> bytes, MessageHost& host) {
    if (bytes.size() < song::kSmallestFile) {
        RaiseMidiError(host, texts::kTooShort);
    }
}

session::SongSource SourceOf(const session::WorkOptions& options, SharedBytes bytes) {
    return {std::move(bytes), options.decodeOptions, options.runningStatusAcrossSysex, false};
}

/// While it lives, the medium is being waited for.
class Reading {
public:
    explicit Reading(LoadWatch& watch) : watch_(watch) { watch_.reading = true; }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;
    ~Reading() { watch_.reading = false; }

private:
    LoadWatch& watch_;
};

// Of a file that was read its bytes tell, since reading them again could take as long.
RefusalAdvice AdviceOn(const LoadOrder& order, const SharedBytes& bytes, LoadWatch& watch) {
    const song::DecodeOptions& options = order.options.decodeOptions;
    const bool keepStatus = order.options.runningStatusAcrossSysex;
    if (bytes) {
        return AdviseOnRefusedFile(*bytes, options, keepStatus);
    }
    const Reading reading(watch);
    return AdviseOnRefusedFile(order.file, options, keepStatus);
}

// Whoever changes the file meanwhile has changed it after it was read.
SharedBytes ReadWatched(const LoadOrder& order, LoadWatch& watch, Workspace& work,
                        MessageHost& host) {
    const Reading reading(watch);
    work.file = session::LoadedFile(order.file, order.isDemo);
    return ReadOrRaise(order.file, host, [&] { return order.reader(order.file, watch); });
}

// ReplaceSong would empty the file state as well.
void Decode(LoadedSong& loaded, const SharedBytes& bytes, MessageHost& host) {
    loaded.undecodable = true;
    session::FileState file = loaded.work.file;
    ReplaceSong(loaded.work, *bytes, host);
    loaded.work.file = std::move(file);
    loaded.work.loaded = SourceOf(loaded.work, bytes);
    loaded.undecodable = false;
}

void Put(LoadedSong& loaded, Workspace& workspace) {
    workspace.song.Swap(loaded.work.song);
    std::swap(workspace.file, loaded.work.file);
    std::swap(workspace.loaded, loaded.work.loaded);
    workspace.loadReport = loaded.work.loadReport;
    workspace.preparation = std::move(loaded.work.preparation);
    workspace.balanced = loaded.work.balanced;
    workspace.hasSong = true;
    workspace.modified = false;
}

} // namespace

std::optional<std::vector<std::uint8_t>> ReadWatchedFile(const std::filesystem::path& file,
                                                         LoadWatch& watch) {
    return ReadSongFile(file, [&watch](std::uint64_t read, std::uint64_t size) {
        watch.size = size;
        watch.read = read;
        return !watch.stop.stop_requested();
    });
}

std::unique_ptr<LoadedSong> PrepareLoad(const LoadOrder& order, LoadWatch& watch) {
    auto loaded = std::make_unique<LoadedSong>();
    static_cast<session::WorkOptions&>(loaded->work) = order.options;
    RecordingMessageHost host(order.language);
    SharedBytes bytes;
    try {
        bytes = ReadWatched(order, watch, loaded->work, host);
        RaiseIfTooShort(*bytes, host);
        if (!watch.stop.stop_requested()) {
            Decode(*loaded, bytes, host);
        }
    } catch (const EMidiError& error) {
        loaded->fault = error.what();
        if (!watch.stop.stop_requested()) {
            loaded->advice = AdviceOn(order, bytes, watch);
        }
    }
    loaded->messages = std::move(host.messages);
    return loaded;
}

void TakeLoaded(Session& session, LoadedSong& loaded, MessageHost& host) {
    for (const std::string& message : loaded.messages) {
        host.ShowMessage(message);
    }
    if (!loaded.fault.empty() && !loaded.undecodable) {
        throw EMidiError(loaded.fault);
    }
    session.Change(session::kReplaceSong, host, [&](Workspace& workspace) {
        if (loaded.undecodable) {
            EmptyWorkspace(workspace);
            throw EMidiError(loaded.fault);
        }
        Put(loaded, workspace);
        return true;
    });
    OfferTakingBack(session, session.Work().loaded.bytes, loaded.work);
}

void ClearMidiMemory(Session& session, MessageHost& host) {
    session.Change(session::kReplaceSong, host, [](Workspace& workspace) {
        EmptyWorkspace(workspace);
        return true;
    });
}

void OpenMidiData(Session& session, SharedBytes bytes, const std::filesystem::path& name,
                  MessageHost& host, bool isDemo) {
    RaiseIfTooShort(*bytes, host);
    // The name may be the workspace's own.
    session.Change(session::kReplaceSong, host, [&, file = name](Workspace& workspace) {
        ReplaceSong(workspace, *bytes, host);
        workspace.file = session::LoadedFile(file, isDemo);
        workspace.loaded = SourceOf(workspace, bytes);
        return true;
    });
    OfferTakingBack(session, std::move(bytes), session.Options());
}

void OpenMidiData(Session& session, std::vector<std::uint8_t> bytes,
                  const std::filesystem::path& name, MessageHost& host) {
    OpenMidiData(session, std::make_shared<const std::vector<std::uint8_t>>(std::move(bytes)), name,
                 host, false);
}

void OpenMidiFile(Session& session, const std::filesystem::path& file, MessageHost& host,
                  bool isDemo) {
    OpenMidiData(session, ReadOrRaise(file, host, [&] { return ReadSongFile(file); }), file, host,
                 isDemo);
}

void NewSong(Session& session, MessageHost& host) {
    const auto bytes =
        std::make_shared<const std::vector<std::uint8_t>>(EmptySongBytes(host.CurrentLanguage()));
    session.Change(session::kReplaceSong, host, [&](Workspace& workspace) {
        ReplaceSong(workspace, *bytes, host);
        workspace.loadReport = {};
        workspace.loaded = SourceOf(workspace, bytes);
        return true;
    });
}

} // namespace tracksmith::app
