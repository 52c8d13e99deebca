#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tracksmith::midi::alsa {

/// Name of our sequencer clients and their ports.
inline constexpr std::string_view kClientName = "Tracksmith";

/// A port of another client.
struct NamedPort {
    /// As the sequencer tells it, with the numbers of client and port at the end ("Piano:Port
    /// 24:0").
    std::string fullName;
    /// Without these numbers, which change with each plugging in; the second of two ports of one
    /// name gets " (2)".
    std::string productName;
};

/// The ports to be shown of all that the sequencer tells, in its order. Our own and ports without a
/// name (they vanished while the list was made) are left out.
std::vector<NamedPort> NamePorts(const std::vector<std::string>& fullNames);

} // namespace tracksmith::midi::alsa
