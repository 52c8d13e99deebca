#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "base/text.h"

namespace tracksmith::cli {

/// How the program ends.
enum ExitCode : int {
    kOk = 0,
    kFindings = 1,
    kUsage = 2,
    kUnreadable = 3,
    kWriteFailed = 4,
    kPartFailed = 5,
    kPortOrAudioMissing = 6
};

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
    /// The chosen command, set while the arguments are read. Returns an ExitCode.
    std::function<int()> run;

    /// The wording for the user.
    std::string Say(const Text& text) const { return std::string(text.In(language)); }
};

} // namespace tracksmith::cli
