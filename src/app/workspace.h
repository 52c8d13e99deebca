#pragma once

#include <filesystem>

#include "instruments/output_assignment.h"
#include "instruments/preparation.h"
#include "song/load_report.h"
#include "song/midi_file_reader.h"
#include "song/midi_file_writer.h"
#include "song/song.h"

namespace tracksmith::app {

/// The one song that is worked on, with its file and options. Used from one thread.
struct Workspace {
    song::Song song;
    /// The file that Save writes to; empty for a song without a file.
    std::filesystem::path fileName;
    /// True once a file has been loaded or a song made.
    bool hasSong = false;
    /// The song differs from its file by an edit of the user.
    bool modified = false;
    /// What the last load dropped or changed.
    song::LoadReport loadReport;
    /// What the last preparation for an instrument did.
    instruments::PreparationReport preparation;
    /// Instruments of the outputs; songs are prepared for that of the first.
    instruments::OutputTable outputs;
    /// How songs are prepared when they are loaded: not at all unless somebody switches it on.
    instruments::SysexOptions sysexOptions{.automatic = false};
    song::DecodeOptions decodeOptions;
    song::EncodeOptions encodeOptions;
    /// Keeps its memory between savings.
    song::SongEncoder encoder;
};

} // namespace tracksmith::app
