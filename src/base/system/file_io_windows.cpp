#include <algorithm>
#include <windows.h>

#include "base/system/file_handle.h"
#include "base/system/file_io.h"
#include "base/system/reachable_path.h"
#include "base/system/read_steps.h"

namespace tracksmith::system {
namespace {

constexpr std::size_t kLargestRead = std::size_t{1} << 26;

bool ReadAll(HANDLE handle, std::span<std::uint8_t> target) {
    while (!target.empty()) {
        DWORD got = 0;
        const auto step = static_cast<DWORD>(std::min(target.size(), kLargestRead));
        if (ReadFile(handle, target.data(), step, &got, nullptr) == 0 || got == 0) {
            return false;
        }
        target = target.subspan(got);
    }
    return true;
}

// A file on a disk that is open for reading, or why it is not.
struct OpenedFile {
    explicit OpenedFile(const std::filesystem::path& path)
        : handle(CreateFileW(ReachablePath(path).c_str(), GENERIC_READ,
                             FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr)) {
        LARGE_INTEGER bytes{};
        std::error_code ignored;
        if (!handle.Valid()) {
            error = std::filesystem::is_directory(ReachablePath(path), ignored)
                        ? std::make_error_code(std::errc::is_a_directory)
                        : LastError();
        } else if (GetFileType(handle.Get()) != FILE_TYPE_DISK) {
            error = std::make_error_code(std::errc::operation_not_supported);
        } else if (GetFileSizeEx(handle.Get(), &bytes) == 0) {
            error = LastError();
        }
        size = static_cast<std::uint64_t>(bytes.QuadPart);
    }

    FileHandle handle;
    std::uint64_t size = 0;
    std::error_code error;
};

} // namespace

std::string PathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
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
        if (!ReadAll(file.handle.Get(), start.bytes)) {
            start.error = std::make_error_code(std::errc::io_error);
        }
    }
    return start;
}

} // namespace tracksmith::system
