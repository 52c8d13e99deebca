#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tracksmith::system {

/// Lets a second start of the program hand its files to the first one: on Windows through a mutex
/// and a window, elsewhere through a locked file and a socket in the folder of the login. Where the
/// system has no such folder each start is the first. All calls from one thread, that of the event
/// loop.
class SingleStart {
public:
    /// Called from the event loop with the files of another start, absolute paths, which may be
    /// none.
    using Handler = std::function<void(const std::vector<std::filesystem::path>& files)>;

    /// Starts of the same `name` (ASCII, a file name's length at most) in one login of a user know
    /// of each other.
    explicit SingleStart(std::string name);
    SingleStart(const SingleStart&) = delete;
    SingleStart& operator=(const SingleStart&) = delete;
    ~SingleStart();

    /// No other start lives.
    bool First() const;

    /// Gives `files` to the first start, which may come to the front. Waits some seconds while that
    /// is only beginning. False when it does not take them, and this start should go on itself.
    bool HandOver(const std::vector<std::filesystem::path>& files) const;

    /// The first start takes files from now on, as long as this lives.
    void Receive(Handler handler);

private:
    struct Place;
    std::unique_ptr<Place> place_;
};

} // namespace tracksmith::system
