#pragma once

#include <string>
#include <sys/types.h>

namespace tracksmith::test {

/// A JACK server of the test's own without hardware, 48,000 frames a second in periods of 256. Its
/// name becomes the default server of this process. Ended with the object.
class JackServer {
public:
    /// Chooses a name that no other server has, and starts nothing.
    JackServer();
    JackServer(const JackServer&) = delete;
    JackServer& operator=(const JackServer&) = delete;
    ~JackServer();

    /// Starts the server and waits until clients can join. Returns what went wrong, or nothing.
    std::string Start();
    /// Stops the server's process and lets it go on.
    void Freeze() const;
    void Thaw() const;
    /// Ends the server with a signal and waits for its end.
    void End(int signal);

private:
    std::string name_;
    pid_t process_ = 0;
    bool killed_ = false;
};

/// True when a client can join the default server now.
bool ServerAnswers();

} // namespace tracksmith::test
