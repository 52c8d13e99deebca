#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>

#include "base/text.h"

#include "app/cli/open_devices.h"
#include "instruments/voices/voice_tables.h"

namespace tracksmith::cli {

/// Exit codes of the program.
inline constexpr int kOk = 0;
inline constexpr int kFindings = 1;
inline constexpr int kUsage = 2;
inline constexpr int kUnreadable = 3;
inline constexpr int kWriteFailed = 4;
inline constexpr int kPartFailed = 5;
inline constexpr int kPortOrAudioMissing = 6;

/// What all commands share during one run.
struct CliContext {
    std::istream& in;
    /// Results.
    std::ostream& out;
    /// Messages and progress.
    std::ostream& log;
    Language language;
    bool logIsTerminal = false;
    /// Only failures are logged.
    bool quiet = false;
    /// Questions are answered Yes.
    bool yes = false;
    OpenDevices openDevices;
    /// Where the user's settings are; empty for the usual place.
    std::filesystem::path settings;
    /// The one set of voice tables of the run.
    instruments::VoiceTables* voices = nullptr;
    /// The chosen command, set while the arguments are read. Returns an exit code.
    std::function<int()> run;

    /// The wording for the user.
    std::string Say(const Text& text) const { return std::string(text.In(language)); }
};

} // namespace tracksmith::cli
