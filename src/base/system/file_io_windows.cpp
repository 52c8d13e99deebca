#include <algorithm>
#include <limits>
#include <system_error>
#include <windows.h>

#include "base/system/file_io.h"

namespace tracksmith::system {
namespace {

// Closes a file handle when the scope ends, or before it with Close.
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

constexpr std::size_t kLargestStep = std::size_t{1} << 26;

bool ReadAll(HANDLE handle, std::span<std::uint8_t> target) {
    while (!target.empty()) {
        DWORD got = 0;
        const auto step = static_cast<DWORD>(std::min(target.size(), kLargestStep));
        if (ReadFile(handle, target.data(), step, &got, nullptr) == 0 || got == 0) {
            return false;
        }
        target = target.subspan(got);
    }
    return true;
}

std::size_t WriteAll(HANDLE handle, std::span<const std::uint8_t> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        DWORD put = 0;
        const auto step = static_cast<DWORD>(std::min(bytes.size() - done, kLargestStep));
        if (WriteFile(handle, bytes.data() + done, step, &put, nullptr) == 0 || put == 0) {
            break;
        }
        done += put;
    }
    return done;
}

WriteResult WriteTemporary(HANDLE handle, std::span<const std::uint8_t> bytes) {
    const std::size_t written = WriteAll(handle, bytes);
    if (written < bytes.size()) {
        return {written > 0 ? WriteOutcome::Incomplete : WriteOutcome::Failed, written};
    }
    return {FlushFileBuffers(handle) != 0 ? WriteOutcome::Written : WriteOutcome::Failed, written};
}

std::filesystem::path TemporaryBeside(const std::filesystem::path& target) {
    static volatile LONG counter = 0;
    const auto number = static_cast<unsigned long>(InterlockedIncrement(&counter));
    const std::wstring name = L".tracksmith-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                              std::to_wstring(number) + L".tmp";
    return target.parent_path() / name;
}

} // namespace

std::string PathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::optional<std::vector<std::uint8_t>> ReadRegularFile(const std::filesystem::path& path) {
    FileHandle handle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size{};
    if (!handle.Valid() || GetFileType(handle.Get()) != FILE_TYPE_DISK ||
        GetFileSizeEx(handle.Get(), &size) == 0 ||
        size.QuadPart > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size.QuadPart));
    if (!ReadAll(handle.Get(), bytes)) {
        return std::nullopt;
    }
    return bytes;
}

WriteResult WriteFileAtomically(const std::filesystem::path& path,
                                std::span<const std::uint8_t> bytes) {
    const std::filesystem::path temporary = TemporaryBeside(path);
    FileHandle handle(CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    std::error_code error;
    if (!handle.Valid() || std::filesystem::is_directory(path, error)) {
        handle.Close();
        DeleteFileW(temporary.c_str());
        return {WriteOutcome::CreateFailed, 0};
    }
    WriteResult result = WriteTemporary(handle.Get(), bytes);
    handle.Close();
    if (result.outcome == WriteOutcome::Written &&
        MoveFileExW(temporary.c_str(), path.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
        result.outcome = WriteOutcome::Failed;
    }
    if (result.outcome != WriteOutcome::Written) {
        DeleteFileW(temporary.c_str());
    }
    return result;
}

} // namespace tracksmith::system
