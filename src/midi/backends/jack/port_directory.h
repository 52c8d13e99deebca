#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "midi/backends/jack/client.h"

namespace tracksmith::midi::jack {

/// Seen from us: Out leads to ports that take messages, In to ports that give them.
enum class Direction { Out, In };

/// A MIDI port of another client.
struct PeerPort {
    /// Full name, `client:port`, by which it is connected.
    std::string name;
    /// Name under which it is shown and remembered.
    std::string productName;
};

/// Lists the MIDI ports of the server through a client of its own, which stays open.
class PortDirectory {
public:
    /// The ports of other clients in the order in which they were made; empty without a server.
    /// After a vain search for a server the next one starts two seconds later, unless `searchNow`.
    std::vector<PeerPort> List(Direction direction, bool searchNow = false);

    /// Full name of the port of that product name, empty when there is none. Looks at once.
    std::string Find(Direction direction, const std::string& productName);

private:
    bool HaveServer(bool searchNow);

    std::unique_ptr<Client> client_;
    std::chrono::steady_clock::time_point nextSearch_;
};

} // namespace tracksmith::midi::jack
