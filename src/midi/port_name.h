#pragma once

#include <set>
#include <string>
#include <string_view>

namespace tracksmith::midi {

/// The part of a port's name that stays when the port comes back, for comparing: without the
/// numbers that the system attaches (ALSA's " 128:0" at the end, process and instance numbers in
/// brackets like " (2)", Windows' "2- " at the start), with single blanks and none around, capital
/// ASCII letters as small ones. Numbers that tell the ports of one device apart stay ("Port 2").
std::string NormalisedPortName(std::string_view name);

/// Names that have been given, to keep names apart.
class PortNames {
public:
    /// `name`, or `name` with " (2)", " (3)" and so on when it has been given already.
    std::string Unique(const std::string& name);

private:
    std::set<std::string> given_;
};

} // namespace tracksmith::midi
