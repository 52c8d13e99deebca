#pragma once

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

} // namespace tracksmith::system
