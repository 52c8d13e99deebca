#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <tuple>

#include "base/system/descriptor.h"
#include "base/system/file_io.h"
#include "base/system/folder_listing.h"
#include "base/system/temporary_name.h"

namespace tracksmith::system {
namespace {

namespace fs = std::filesystem;

// Follows links by hand, since the last one may point to a file that is still to be made.
fs::path LinkTarget(fs::path path) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int i = 0; i < kMostLinks && fs::is_symlink(path, error); ++i) {
        const fs::path next = fs::read_symlink(path, error);
        if (error) {
            break;
        }
        path = path.parent_path() / next;
    }
    return path;
}

fs::path FolderOf(const fs::path& target) {
    return target.has_parent_path() ? target.parent_path() : fs::path(".");
}

// What stands at the target now.
struct OldFile {
    explicit OldFile(const fs::path& target) : exists(stat(target.c_str(), &status) == 0) {}

    // Why it must not be replaced; none when it may be.
    std::error_code Refusal(const fs::path& target) const {
        if (!exists) {
            return {};
        }
        if (!S_ISREG(status.st_mode)) {
            return std::make_error_code(S_ISDIR(status.st_mode)
                                            ? std::errc::is_a_directory
                                            : std::errc::operation_not_supported);
        }
        return access(target.c_str(), W_OK) != 0 ? LastError() : std::error_code();
    }

    struct stat status {};
    bool exists;
};

// The writer holds the lock of its temporary file, and the system ends it with the program however
// that ends. So a file whose lock can be had has no writer any more.
bool Lock(int handle) {
    return flock(handle, LOCK_EX | LOCK_NB) == 0;
}

void RemoveIfAbandoned(const fs::path& file) {
    const Descriptor handle(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
    if (handle.Get() >= 0 && Lock(handle.Get())) {
        unlink(file.c_str());
    }
}

// Removes what killed programs left, once for each folder, since a batch writes many files to one.
void RemoveAbandoned(const fs::path& folder) {
    static std::mutex mutex;
    static std::set<fs::path> cleaned;
    {
        const std::scoped_lock lock(mutex);
        if (!cleaned.insert(folder).second) {
            return;
        }
    }
    for (const fs::path& name : ListFolder(folder).names) {
        if (IsTemporaryName(name.native())) {
            RemoveIfAbandoned(folder / name);
        }
    }
}

// A new locked file of a random name; gone when the scope ends unless it was renamed.
class TemporaryFile {
public:
    TemporaryFile(const fs::path& folder, mode_t mode) {
        constexpr int kMostTries = 100;
        for (int i = 0; i < kMostTries; ++i) {
            path_ = folder / RandomTemporaryName();
            handle_ = open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
            if (handle_ < 0 && errno != EEXIST) {
                return;
            }
            if (handle_ >= 0 && IsOurs()) {
                return;
            }
            Close();
        }
        errno = EEXIST;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (handle_ >= 0 && !renamed_) {
            unlink(path_.c_str());
        }
        Close();
    }

    int Handle() const { return handle_; }
    bool RenameTo(const fs::path& target) {
        renamed_ = rename(path_.c_str(), target.c_str()) == 0;
        return renamed_;
    }

private:
    // Another program may have taken it for abandoned before it was locked. A file system without
    // locks has nobody who takes it.
    bool IsOurs() const {
        struct stat status {};
        const bool locked = Lock(handle_) || errno != EWOULDBLOCK;
        return locked && fstat(handle_, &status) == 0 && status.st_nlink > 0;
    }
    void Close() {
        if (handle_ >= 0) {
            close(handle_);
        }
        handle_ = -1;
    }

    fs::path path_;
    int handle_ = -1;
    bool renamed_ = false;
};

std::size_t WriteAll(int handle, std::span<const std::uint8_t> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        errno = EIO; // for a write that takes nothing, which the system does not call an error
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

// The file that replaces another one keeps its owner and permissions as far as the system allows.
void KeepOwnerAndMode(int handle, const struct stat& old) {
    constexpr auto kSameUser = static_cast<uid_t>(-1);
    if (fchown(handle, old.st_uid, old.st_gid) != 0) {
        std::ignore = fchown(handle, kSameUser, old.st_gid);
    }
    struct stat fresh {};
    mode_t mode = old.st_mode & 07777U;
    if (fstat(handle, &fresh) != 0 || fresh.st_gid != old.st_gid) {
        // Another group gets no more than everybody.
        mode = (mode & 0707U) | ((mode & 0007U) << 3U);
    }
    if (fresh.st_uid != old.st_uid) {
        mode &= 0777U;
    }
    std::ignore = fchmod(handle, mode);
}

// The rename itself must reach the disk too; a file system that cannot flush a folder still keeps
// the order, so its answer does not matter.
void FlushFolder(const fs::path& folder) {
    const Descriptor handle(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.Get() >= 0) {
        fsync(handle.Get());
    }
}

WriteResult Failure(WriteOutcome outcome, std::size_t written = 0) {
    return {outcome, written, LastError()};
}

} // namespace

WriteResult WriteFileAtomically(const fs::path& path, std::span<const std::uint8_t> bytes,
                                NewFileAccess access) {
    const fs::path target = LinkTarget(path);
    const fs::path folder = FolderOf(target);
    const OldFile old(target);
    if (const std::error_code refusal = old.Refusal(target)) {
        return {WriteOutcome::CreateFailed, 0, refusal};
    }
    RemoveAbandoned(folder);
    const mode_t usual = access == NewFileAccess::OnlyOwner ? 0600 : 0666;
    TemporaryFile temporary(folder, old.exists ? old.status.st_mode & 0666U : usual);
    if (temporary.Handle() < 0) {
        return Failure(WriteOutcome::CreateFailed);
    }
    const std::size_t written = WriteAll(temporary.Handle(), bytes);
    if (written < bytes.size()) {
        return Failure(written > 0 ? WriteOutcome::Incomplete : WriteOutcome::Failed, written);
    }
    if (old.exists) {
        KeepOwnerAndMode(temporary.Handle(), old.status);
    }
    if (fsync(temporary.Handle()) != 0 || !temporary.RenameTo(target)) {
        return Failure(WriteOutcome::Failed, written);
    }
    FlushFolder(folder);
    return {WriteOutcome::Written, written, {}};
}

} // namespace tracksmith::system
