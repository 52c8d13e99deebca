#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <span>
#include <string>
#include <vector>

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#endif

namespace tracksmith::test {

/// An empty folder of its own for one test; gone with everything in it afterwards.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        path_ = std::filesystem::temp_directory_path() /
                ("tracksmith_test_" + std::to_string(random()) + std::to_string(random()));
        std::filesystem::create_directories(path_);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    std::filesystem::path operator/(const std::filesystem::path& name) const {
        return path_ / name;
    }
    const std::filesystem::path& Path() const { return path_; }
    /// Number of entries in the folder.
    std::ptrdiff_t Count() const {
        return std::distance(std::filesystem::directory_iterator(path_), {});
    }

private:
    std::filesystem::path path_;
};

inline void PutFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(stream.good());
}

inline std::vector<std::uint8_t> FileBytes(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream.good()) << file;
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    const auto* begin = reinterpret_cast<const std::uint8_t*>(text.data());
    return {begin, begin + text.size()};
}

#ifndef _WIN32
/// Makes the disk look full: no file may grow beyond `bytes` while this lives.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        oldHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, oldHandler_);
    }

private:
    rlimit old_{};
    void (*oldHandler_)(int) = nullptr;
};
#endif

} // namespace tracksmith::test
