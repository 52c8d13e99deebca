#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "app/cli/command_line.h"
#include "app/cli/song_input.h"

namespace tracksmith::cli {

/// Where a command that changes one song puts the result, as its arguments say.
struct SongTarget {
    std::string out;
    bool inPlace = false;
    bool dryRun = false;

    /// Declares the arguments.
    void AddTo(Command& command, const CliContext& context);
    /// Whether `inputs` are one song that has a place to go to: kOk, or the code of the fault,
    /// which is logged.
    int Check(const CliContext& context, const std::vector<InputFile>& inputs) const;
    std::filesystem::path PathFor(const InputFile& input) const;
    /// Writes the song unless nothing is to be written, after asking about an existing file: kOk,
    /// or kWriteFailed when the user refused. Raises EMidiError, shown, when writing fails.
    int Store(SongJob& job) const;
};

} // namespace tracksmith::cli
