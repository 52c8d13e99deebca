#include <algorithm>
#include <mutex>
#include <set>
#include <windows.h>

#include "base/system/file_handle.h"
#include "base/system/file_io.h"
#include "base/system/folder_listing.h"
#include "base/system/reachable_path.h"
#include "base/system/temporary_name.h"

namespace tracksmith::system {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestWrite = std::size_t{1} << 26;

// No program needs so long between closing a temporary file and renaming it.
constexpr std::chrono::minutes kAbandoned{1};

// Names of ours are plain ASCII; others need not even be valid UTF-16.
bool IsOurs(const fs::path& file) {
    std::string name;
    for (const wchar_t unit : file.native()) {
        name += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    return IsTemporaryName(name);
}

// Removes what killed programs left, once for each folder, since a batch writes many files to one.
// The system refuses it for a file that is still being written.
void RemoveAbandoned(const fs::path& folder) {
    static std::mutex mutex;
    static std::set<fs::path> cleaned;
    {
        const std::scoped_lock lock(mutex);
        if (!cleaned.insert(folder).second) {
            return;
        }
    }
    for (const fs::path& name : ListFolder(folder.empty() ? fs::path(".") : folder).names) {
        const fs::path file = folder / name;
        std::error_code unknown;
        if (IsOurs(name) &&
            fs::file_time_type::clock::now() - fs::last_write_time(file, unknown) > kAbandoned &&
            !unknown) {
            DeleteFileW(file.c_str());
        }
    }
}

// A new file of a random name, closed to others; gone when the scope ends unless it was renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(const fs::path& folder)
        : path_(folder / RandomTemporaryName()), handle_(Create()) {
        constexpr int kMostTries = 100;
        for (int i = 0; i < kMostTries && handle_ == INVALID_HANDLE_VALUE && IsTaken(); ++i) {
            path_ = folder / RandomTemporaryName();
            handle_ = Create();
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (handle_ != INVALID_HANDLE_VALUE) {
            CloseHandle(handle_);
        }
        if (made_ && !renamed_) {
            DeleteFileW(path_.c_str());
        }
    }

    HANDLE Handle() const { return handle_; }
    bool RenameTo(const fs::path& target) {
        CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
        renamed_ = MoveFileExW(path_.c_str(), target.c_str(),
                               MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
        return renamed_;
    }

private:
    static bool IsTaken() {
        return GetLastError() == ERROR_FILE_EXISTS || GetLastError() == ERROR_ALREADY_EXISTS;
    }
    HANDLE Create() {
        HANDLE handle = CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
        made_ = handle != INVALID_HANDLE_VALUE;
        return handle;
    }

    bool made_ = false;
    bool renamed_ = false;
    fs::path path_;
    HANDLE handle_;
};

std::size_t WriteAll(HANDLE handle, std::span<const std::uint8_t> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        DWORD put = 0;
        const auto step = static_cast<DWORD>(std::min(bytes.size() - done, kLargestWrite));
        if (WriteFile(handle, bytes.data() + done, step, &put, nullptr) == 0 || put == 0) {
            break;
        }
        done += put;
    }
    return done;
}

WriteResult Failure(WriteOutcome outcome, std::size_t written = 0) {
    return {outcome, written, LastError()};
}

} // namespace

// A new file takes its rights from its folder, so there is nothing to be done for `access`.
WriteResult WriteFileAtomically(const fs::path& file, std::span<const std::uint8_t> bytes,
                                NewFileAccess /*access*/) {
    const fs::path path = ReachablePath(file);
    std::error_code unknown;
    if (fs::is_directory(path, unknown)) {
        return {WriteOutcome::CreateFailed, 0, std::make_error_code(std::errc::is_a_directory)};
    }
    RemoveAbandoned(path.parent_path());
    TemporaryFile temporary(path.parent_path());
    if (temporary.Handle() == INVALID_HANDLE_VALUE) {
        return Failure(WriteOutcome::CreateFailed);
    }
    const std::size_t written = WriteAll(temporary.Handle(), bytes);
    if (written < bytes.size()) {
        return Failure(written > 0 ? WriteOutcome::Incomplete : WriteOutcome::Failed, written);
    }
    if (FlushFileBuffers(temporary.Handle()) == 0 || !temporary.RenameTo(path)) {
        return Failure(WriteOutcome::Failed, written);
    }
    return {WriteOutcome::Written, written, {}};
}

} // namespace tracksmith::system
