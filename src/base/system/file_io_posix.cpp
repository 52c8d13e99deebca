#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/system/file_io.h"

namespace tracksmith::system {
namespace {

// Closes a file descriptor when the scope ends.
class Descriptor {
public:
    explicit Descriptor(int handle) : handle_(handle) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (handle_ >= 0) {
            close(handle_);
        }
    }
    int Get() const { return handle_; }

private:
    int handle_;
};

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

std::size_t WriteAll(int handle, std::span<const std::uint8_t> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t put = write(handle, bytes.data() + done, bytes.size() - done);
        if (put < 0 && errno == EINTR) {
            continue;
        }
        if (put <= 0) {
            break;
        }
        done += static_cast<std::size_t>(put);
    }
    return done;
}

// Follows links by hand, since the last one may point to a file that is still to be made.
std::filesystem::path LinkTarget(std::filesystem::path path) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(path, error); ++i) {
        const std::filesystem::path next = std::filesystem::read_symlink(path, error);
        if (error) {
            break;
        }
        path = path.parent_path() / next;
    }
    return path;
}

std::string TemporaryBeside(const std::filesystem::path& target) {
    static std::atomic<unsigned> counter{0};
    const std::string name =
        ".tracksmith-" + std::to_string(getpid()) + "-" + std::to_string(++counter) + ".tmp";
    return (target.parent_path() / name).string();
}

bool IsWriteProtected(const std::filesystem::path& target) {
    struct stat status {};
    return stat(target.c_str(), &status) == 0 &&
           (!S_ISREG(status.st_mode) || access(target.c_str(), W_OK) != 0);
}

// The file that replaces another one keeps its permissions.
bool KeepMode(int handle, const std::filesystem::path& target) {
    struct stat status {};
    return stat(target.c_str(), &status) != 0 || fchmod(handle, status.st_mode & 07777U) == 0;
}

// The rename itself must reach the disk too; a file system that cannot flush a folder still keeps
// the order, so its answer does not matter.
void FlushFolder(const std::filesystem::path& folder) {
    const Descriptor handle(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.Get() >= 0) {
        fsync(handle.Get());
    }
}

WriteResult WriteTemporary(int handle, std::span<const std::uint8_t> bytes,
                           const std::filesystem::path& target) {
    const std::size_t written = WriteAll(handle, bytes);
    if (written < bytes.size()) {
        return {written > 0 ? WriteOutcome::Incomplete : WriteOutcome::Failed, written};
    }
    const bool kept = KeepMode(handle, target) && fsync(handle) == 0;
    return {kept ? WriteOutcome::Written : WriteOutcome::Failed, written};
}

} // namespace

std::string PathText(const std::filesystem::path& path) {
    return path.string();
}

std::optional<std::vector<std::uint8_t>> ReadRegularFile(const std::filesystem::path& path) {
    // Non-blocking: opening a pipe must not wait for a writer.
    const Descriptor handle(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat status {};
    if (handle.Get() < 0 || fstat(handle.Get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(status.st_size));
    if (!ReadAll(handle.Get(), bytes)) {
        return std::nullopt;
    }
    return bytes;
}

WriteResult WriteFileAtomically(const std::filesystem::path& path,
                                std::span<const std::uint8_t> bytes) {
    const std::filesystem::path target = LinkTarget(path);
    const std::string temporary = TemporaryBeside(target);
    const Descriptor handle(
        IsWriteProtected(target)
            ? -1
            : open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (handle.Get() < 0) {
        return {WriteOutcome::CreateFailed, 0};
    }
    WriteResult result = WriteTemporary(handle.Get(), bytes, target);
    if (result.outcome == WriteOutcome::Written && rename(temporary.c_str(), target.c_str()) != 0) {
        result.outcome = WriteOutcome::Failed;
    }
    if (result.outcome != WriteOutcome::Written) {
        unlink(temporary.c_str());
        return result;
    }
    FlushFolder(target.has_parent_path() ? target.parent_path() : std::filesystem::path("."));
    return result;
}

} // namespace tracksmith::system
