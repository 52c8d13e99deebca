#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <system_error>
#include <vector>

namespace tracksmith::cli {

/// An argument (UTF-8) as a path.
std::filesystem::path PathOf(const std::string& utf8);

/// One song that a command is to work on.
struct InputFile {
    std::filesystem::path path;
    /// Where it lies below the folder that was given; the bare file name for a file that was given
    /// itself.
    std::filesystem::path relative;
    /// Its bytes come from the standard input.
    bool standardInput = false;

    /// The name as given, safe to show (UTF-8; `-` for the standard input).
    std::string Name() const;
    /// The name as given, byte for byte, which need not be UTF-8.
    std::string ExactName() const;
};

/// A folder that gives no songs.
struct FolderFault {
    std::filesystem::path folder;
    /// Why it cannot be read; none when it only has no songs.
    std::error_code error;

    /// Its name, safe to show (UTF-8).
    std::string Name() const;
};

/// Songs for the arguments `names` (UTF-8), in their order. `-` is the standard input. A folder
/// stands for the songs in it and in its subfolders (.mid, .midi, .kar, .smf in any case), sorted
/// by path; links to folders are not followed. A file is taken whatever its name, also when it does
/// not exist: reading it reports that. Folders given that have no song, and each one, also below
/// them, that cannot be read, go to `faults`.
std::vector<InputFile> ExpandInputs(std::span<const std::string> names,
                                    std::vector<FolderFault>& faults);

/// The files of the inputs; the standard input has none.
std::vector<std::filesystem::path> PathsOf(std::span<const InputFile> inputs);

/// True when `result` is a song as this program writes them, whole, and not older than `input`: a
/// run that is repeated leaves it out.
bool IsDone(const InputFile& input, const std::filesystem::path& result);

} // namespace tracksmith::cli
