#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tracksmith::system {

/// How far a write came.
enum class WriteOutcome {
    Written,      ///< All bytes are on the disk under the given name.
    CreateFailed, ///< No file could be made in that folder.
    Incomplete,   ///< Some bytes were taken, then the disk was full.
    Failed        ///< Nothing was taken, or flushing or renaming failed.
};

/// Outcome of WriteFileAtomically with the bytes that the system took.
struct WriteResult {
    WriteOutcome outcome = WriteOutcome::Written;
    std::size_t written = 0;
};

/// The bytes of the regular file `path`. Empty optional for anything else: a missing or unreadable
/// file, a folder, pipe or device (never opened for blocking), a file over 2 GiB or one that
/// shrinks while it is read. Throws std::bad_alloc when the bytes do not fit into memory.
std::optional<std::vector<std::uint8_t>> ReadRegularFile(const std::filesystem::path& path);

/// Writes `bytes` to a new file beside `path`, flushes it to the disk and renames it over `path`,
/// so that a crash leaves either all of the old or all of the new bytes. A symbolic link keeps
/// pointing to its target, which is replaced; permissions are kept. Nothing is left behind after a
/// failure.
WriteResult WriteFileAtomically(const std::filesystem::path& path,
                                std::span<const std::uint8_t> bytes);

/// `path` as UTF-8 text.
std::string PathText(const std::filesystem::path& path);

} // namespace tracksmith::system
