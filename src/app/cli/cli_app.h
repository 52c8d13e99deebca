#pragma once

#include <filesystem>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

#include "base/text.h"

#include "app/cli/open_devices.h"

namespace tracksmith::cli {

/// What the program finds around it; a test gives it streams and devices of its own.
struct CliEnvironment {
    std::istream& in;
    std::ostream& out;
    std::ostream& log;
    std::string_view version;
    /// Used unless --lang is given.
    Language language = Language::English;
    bool logIsTerminal = false;
    OpenDevices openDevices = &OpenSystemDevices;
    /// Where the user's settings are, see settings::TMyRegistry; empty for the usual place.
    std::filesystem::path settings = {};
};

/// Runs the command line `arguments` (without the program's name, UTF-8). Returns the exit code:
/// 0 ok, 1 findings, 2 usage, 3 unreadable input, 4 write failed, 5 part of a batch failed,
/// 6 port or audio missing. Throws nothing.
int RunCli(std::span<const std::string> arguments, const CliEnvironment& environment);

} // namespace tracksmith::cli
