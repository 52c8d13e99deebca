#pragma once

#include <system_error>
#include <windows.h>

namespace tracksmith::system {

/// A Windows file handle that is closed when the scope ends, or before it with Close.
class FileHandle {
public:
    explicit FileHandle(HANDLE handle) : handle_(handle) {}
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() { Close(); }
    void Close() {
        if (Valid()) {
            CloseHandle(handle_);
            handle_ = INVALID_HANDLE_VALUE;
        }
    }
    bool Valid() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle_; }

private:
    HANDLE handle_;
};

/// The calling thread's last error of the system.
inline std::error_code LastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

} // namespace tracksmith::system
