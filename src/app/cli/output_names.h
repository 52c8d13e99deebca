#pragma once

#include <filesystem>
#include <set>
#include <span>
#include <string>

#include "app/cli/input_files.h"

namespace tracksmith::cli {

/// Gives the results of a batch their names in the output folder.
class OutputNames {
public:
    /// Results go below `folder`; the files of `inputs` must never be overwritten.
    OutputNames(std::filesystem::path folder, std::span<const InputFile> inputs);

    /// The name for the result of `input`: where it lies below the folder that was given, with a
    /// number ("song-2.mid") when this batch already used that name. Names that differ in case
    /// only count as equal.
    std::filesystem::path Next(const InputFile& input);

    /// True when `path` is one of the inputs, under whatever spelling.
    bool IsInput(const std::filesystem::path& path) const;

private:
    bool Take(const std::filesystem::path& relative);

    std::filesystem::path folder_;
    std::set<std::filesystem::path> inputs_;
    std::set<std::string> used_;
};

} // namespace tracksmith::cli
