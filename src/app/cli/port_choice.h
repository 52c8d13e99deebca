#pragma once

#include <span>
#include <string>
#include <vector>

#include "player/output_ports.h"

namespace tracksmith::cli {

/// The outputs that `name` means: the one of exactly that name; else those of that name but for
/// numbers that change from day to day; else those whose name contains it, capital or small.
std::vector<player::OutputDevice> MatchOutputs(std::span<const player::OutputDevice> outputs,
                                               const std::string& name);

/// The output that plays when the user names none: the built-in instrument, else the first;
/// empty without any.
std::vector<player::OutputDevice> DefaultOutput(std::span<const player::OutputDevice> outputs);

} // namespace tracksmith::cli
