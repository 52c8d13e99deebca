#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

#include "base/system/descriptor.h"
#include "base/system/file_io.h"
#include "base/system/read_steps.h"

namespace tracksmith::system {
namespace {

bool ReadAll(int handle, std::span<std::uint8_t> target) {
    while (!target.empty()) {
        const ssize_t got = read(handle, target.data(), target.size());
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return false;
        }
        target = target.subspan(static_cast<std::size_t>(got));
    }
    return true;
}

// A regular file that is open for reading, or why it is not.
struct OpenedFile {
    explicit OpenedFile(const std::filesystem::path& path)
        // Non-blocking: opening a pipe must not wait for a writer.
        : handle(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY)) {
        struct stat status {};
        if (handle.Get() < 0 || fstat(handle.Get(), &status) != 0) {
            error = LastError();
        } else if (S_ISDIR(status.st_mode)) {
            error = std::make_error_code(std::errc::is_a_directory);
        } else if (!S_ISREG(status.st_mode)) {
            error = std::make_error_code(std::errc::operation_not_supported);
        }
        size = static_cast<std::uint64_t>(status.st_size);
    }

    Descriptor handle;
    std::uint64_t size = 0;
    std::error_code error;
};

} // namespace

std::string PathText(const std::filesystem::path& path) {
    return path.string();
}

std::optional<std::vector<std::uint8_t>> ReadRegularFile(const std::filesystem::path& path,
                                                         const ReadProgress& progress) {
    const OpenedFile file(path);
    if (file.error || file.size > kMostFileBytes) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(file.size));
    const auto read = [&](std::span<std::uint8_t> part) {
        return ReadAll(file.handle.Get(), part);
    };
    if (!ReadInSteps(bytes, progress, read)) {
        return std::nullopt;
    }
    return bytes;
}

FileStart ReadFileStart(const std::filesystem::path& path, std::size_t most) {
    const OpenedFile file(path);
    FileStart start{{}, file.size, file.error};
    if (!start.error) {
        start.bytes.resize(static_cast<std::size_t>(std::min<std::uint64_t>(most, file.size)));
        errno = EIO; // for a file that shrinks, which the system does not call an error
        if (!ReadAll(file.handle.Get(), start.bytes)) {
            start.error = LastError();
        }
    }
    return start;
}

} // namespace tracksmith::system
