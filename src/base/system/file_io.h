#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <vector>

namespace tracksmith::system {

/// The largest file that is read, in bytes.
inline constexpr std::uint64_t kMostFileBytes = 0x7FFF'FFFF;

/// Told while a file is read, how many of its bytes are there; false ends reading.
using ReadProgress = std::function<bool(std::uint64_t read, std::uint64_t size)>;

/// The bytes of the regular file `path`, in steps that are told to `progress` if there is one.
/// Empty optional for anything else: a missing or unreadable file, a folder, pipe or device (never
/// opened for blocking), a file over kMostFileBytes or one that shrinks while it is read; also when
/// `progress` ended it. Throws std::bad_alloc when the bytes do not fit into memory.
std::optional<std::vector<std::uint8_t>> ReadRegularFile(const std::filesystem::path& path,
                                                         const ReadProgress& progress = {});

/// What ReadFileStart found.
struct FileStart {
    /// The first bytes of the file.
    std::vector<std::uint8_t> bytes;
    /// Its whole size in bytes, however large.
    std::uint64_t size = 0;
    /// Why nothing could be read: `is_a_directory` for a folder, `operation_not_supported` for a
    /// pipe or a device, else what the system says.
    std::error_code error;
};

/// The first bytes of the regular file `path`, at most `most` of them, without touching the rest.
/// Never blocks. Throws std::bad_alloc.
FileStart ReadFileStart(const std::filesystem::path& path, std::size_t most);

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
    /// The system's reason; none when everything was written. See SystemReason.
    std::error_code error;
};

/// Who may read a file that did not exist before.
enum class NewFileAccess { AsUsual, OnlyOwner };

/// Writes `bytes` to a new file beside `path`, flushes it to the disk and renames it over `path`,
/// so that a crash leaves either all of the old or all of the new bytes. Nothing is left behind
/// after a failure; what killed programs left in the folder is removed by the first write to it.
///
/// A symbolic link keeps pointing to its target, which is replaced. Permissions are kept, and owner
/// and group as far as the system allows; a file system that has none of them is no failure. Since
/// it is a new file, another name of the old one (a hard link) keeps the old bytes, and extended
/// attributes are lost. A file that the user may not write is not replaced, even where the folder
/// would allow it. Any thread; throws std::bad_alloc, with `path` as it was.
WriteResult WriteFileAtomically(const std::filesystem::path& path,
                                std::span<const std::uint8_t> bytes,
                                NewFileAccess access = NewFileAccess::AsUsual);

/// `path` as UTF-8 text.
std::string PathText(const std::filesystem::path& path);

} // namespace tracksmith::system
