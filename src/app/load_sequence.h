#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "base/message_host.h"
#include "base/text.h"

#include "app/refusal_words.h"
#include "app/session/session.h"

namespace tracksmith::app {

/// Empties the song in memory: no tracks, no file name, not modified. Keeps options and memory.
/// Raises EMidiError when the song is in use by a driver that hangs.
void ClearMidiMemory(session::Session& session, MessageHost& host);

/// The whole load sequence: reads `file` into memory, clears the song, decodes, builds the time map
/// and runs the later steps. Faults are shown through `host` and raised as EMidiError; when the
/// file cannot be read, is too short, or the song cannot be left now, the song in memory stays;
/// after any other fault it is empty and without a file name, so that saving cannot overwrite the
/// file. What preparing changed can be taken back, else the lengthening of notes. The demo song
/// gets no name to save to.
void OpenMidiFile(session::Session& session, const std::filesystem::path& file, MessageHost& host,
                  bool isDemo = false);

/// The bytes of a file; a session keeps those of its song.
using SharedBytes = std::shared_ptr<const std::vector<std::uint8_t>>;

/// OpenMidiFile for bytes that are already in memory; `name` becomes the file name.
void OpenMidiData(session::Session& session, SharedBytes bytes, const std::filesystem::path& name,
                  MessageHost& host, bool isDemo = false);
void OpenMidiData(session::Session& session, std::vector<std::uint8_t> bytes,
                  const std::filesystem::path& name, MessageHost& host);

/// What passes between a load on another thread and whoever waits for it. Any thread.
struct LoadWatch {
    /// Asks the load to end early; what it brings is of no use then. Looked at between the blocks
    /// of the file and before it is decoded.
    std::stop_source stop;
    /// The load waits for bytes of the file, which a medium can make take any time.
    std::atomic<bool> reading = false;
    /// Bytes of the file that have come so far, and that it has; 0 while that is not known.
    std::atomic<std::uint64_t> read = 0;
    std::atomic<std::uint64_t> size = 0;
};

/// Where the bytes of a song come from: the file by ReadSongFile, unless a test brings its own.
/// Called on the thread that loads.
using SongReader = std::function<std::optional<std::vector<std::uint8_t>>(
    const std::filesystem::path& file, LoadWatch& watch)>;

/// ReadSongFile, which tells `watch` how far it is.
std::optional<std::vector<std::uint8_t>> ReadWatchedFile(const std::filesystem::path& file,
                                                         LoadWatch& watch);

/// A song that is to be loaded on another thread.
struct LoadOrder {
    std::filesystem::path file;
    bool isDemo = false;
    /// How it is read and prepared.
    session::WorkOptions options;
    /// The language of what is to be told about it.
    Language language = Language::English;
    SongReader reader = ReadWatchedFile;
};

/// What loading a song beside the one in memory has come to.
struct LoadedSong {
    /// The song, with all that loading finds out, and the options that it was loaded with.
    session::Workspace work;
    /// Was to be shown meanwhile.
    std::vector<std::string> messages;
    /// Why there is no song; empty when there is one.
    std::string fault;
    /// The file could be read, but not decoded.
    bool undecodable = false;
    /// What to tell about the fault.
    RefusalAdvice advice;
};

/// Reads, decodes and prepares a song beside the one in memory, with the steps of OpenMidiFile. Any
/// thread; asks and shows nothing. Throws std::bad_alloc where not even a fault can be told.
std::unique_ptr<LoadedSong> PrepareLoad(const LoadOrder& order, LoadWatch& watch);

/// Puts `loaded` in the place of the song in memory, or tells and raises its fault, with the same
/// outcome for the song in memory as OpenMidiFile. The former song is in `loaded` then.
void TakeLoaded(session::Session& session, LoadedSong& loaded, MessageHost& host);

/// Makes a new song without a file: a conductor track and a track for each channel with the usual
/// start values, prepared like a loaded one. Raises EMidiError.
void NewSong(session::Session& session, MessageHost& host);

} // namespace tracksmith::app
