#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <span>
#include <string>

#include "base/message_host.h"

namespace tracksmith::app {

/// Gives the results of a batch their names in the output folder.
class OutputNames {
public:
    /// Results go below `folder`; the files of `inputs` must never be overwritten.
    OutputNames(std::filesystem::path folder, std::span<const std::filesystem::path> inputs);

    /// The name for the result of an input: `relative`, where the input lies below the folder that
    /// was given, with a number ("song-2.mid") when this batch already used that name. Names that
    /// differ in case only count as equal.
    std::filesystem::path Next(const std::filesystem::path& relative);

    /// True when `path` is one of the inputs, under whatever spelling.
    bool IsInput(const std::filesystem::path& path) const;

private:
    bool Take(const std::filesystem::path& relative);

    std::filesystem::path folder_;
    std::set<std::filesystem::path> inputs_;
    std::set<std::string> used_;
};

/// The path without links and detours, as far as it exists; itself where that cannot be told.
std::filesystem::path PlainPath(const std::filesystem::path& path);

/// Writes a result like WriteMidiFile; folders that are missing on the way are made.
void WriteResult(const std::filesystem::path& file, std::span<const std::uint8_t> bytes,
                 MessageHost& host);

} // namespace tracksmith::app
