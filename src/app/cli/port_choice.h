#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "player/output_ports.h"

namespace tracksmith::cli {

/// The ports, by their index in `names`, that `name` means: the one of exactly that name; else
/// those of that name but for numbers that change from day to day; else those whose name contains
/// it, capital or small.
std::vector<std::size_t> MatchPortNames(std::span<const std::string> names,
                                        const std::string& name);

/// The outputs that `name` means in this way.
std::vector<player::OutputDevice> MatchOutputs(std::span<const player::OutputDevice> outputs,
                                               const std::string& name);

/// The output that plays when the user names none: the built-in instrument, else the first;
/// empty without any.
std::vector<player::OutputDevice> DefaultOutput(std::span<const player::OutputDevice> outputs);

} // namespace tracksmith::cli
