#pragma once

#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace tracksmith::system {

/// A file descriptor that is closed when the scope ends; negative for none.
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

/// Why the last call of the system failed.
inline std::error_code LastError() {
    return {errno, std::system_category()};
}

} // namespace tracksmith::system
