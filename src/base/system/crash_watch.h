#pragma once

#include <filesystem>

namespace tracksmith::system {

/// While it lives, a fault that ends the program leaves a record of what it was doing, for its
/// developers: on Windows a minidump `crash-<date>-<time>.dmp` in `folder`, which is made when it
/// is needed; elsewhere the system writes such records itself. One at a time.
class CrashWatch {
public:
    explicit CrashWatch(const std::filesystem::path& folder);
    CrashWatch(const CrashWatch&) = delete;
    CrashWatch& operator=(const CrashWatch&) = delete;
    // NOLINTNEXTLINE(performance-trivially-destructible): does something on Windows
    ~CrashWatch();
};

} // namespace tracksmith::system
