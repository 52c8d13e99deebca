#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "app/session/file_state.h"
#include "instruments/output_assignment.h"
#include "instruments/preparation.h"
#include "song/load_report.h"
#include "song/midi_file_reader.h"
#include "song/midi_file_writer.h"
#include "song/note_length.h"
#include "song/song.h"

namespace tracksmith::session {

/// How songs are read, prepared and written; may change at any time without changing the song.
struct WorkOptions {
    /// Instruments of the outputs; songs are prepared for that of the first.
    instruments::OutputTable outputs;
    /// How songs are prepared when they are loaded: not at all unless somebody switches it on.
    instruments::SysexOptions sysexOptions{.automatic = false};
    song::DecodeOptions decodeOptions;
    song::EncodeOptions encodeOptions;
    /// Running status survives system exclusive and meta events while reading.
    bool runningStatusAcrossSysex = false;
    /// Short notes are made so long when a song is loaded: not at all unless somebody says so.
    song::NoteLengthOptions noteLength;
    /// Songs are loaded without looking whether their notes begin and end.
    bool skipNoteCheck = false;
};

/// The bytes that a song was decoded from, and how they were read.
struct SongSource {
    /// Null for none.
    std::shared_ptr<const std::vector<std::uint8_t>> bytes;
    song::DecodeOptions decodeOptions;
    bool runningStatusAcrossSysex = false;
    /// The song has been saved since, so that the file is another one.
    bool saved = false;
};

/// The one song that is worked on, with its file, its reports and its options. Owned by a Session;
/// written only inside Session::Change.
struct Workspace : WorkOptions {
    song::Song song;
    FileState file;
    /// The file as it was loaded, before preparing and the like.
    SongSource loaded;
    /// True once a file has been loaded or a song made.
    bool hasSong = false;
    /// The song differs from its file by an edit of the user. A practice tempo does not count
    /// here: see Session::Modified.
    bool modified = false;
    /// What the last load dropped or changed.
    song::LoadReport loadReport;
    /// What the last preparation for an instrument did.
    instruments::PreparationReport preparation;
    /// The song as it was loaded has as many note-offs as note-ons; true where nobody looked.
    bool balanced = true;
};

} // namespace tracksmith::session
