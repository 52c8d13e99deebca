#pragma once

#include <iosfwd>
#include <string>

#include "app/cli/cli_context.h"

namespace tracksmith::cli {

/// One line of the log that is rewritten in place, removed at the end. Shows nothing unless a
/// person reads the log at a terminal and does not want quiet.
class TerminalLine {
public:
    explicit TerminalLine(const CliContext& context)
        : log_(context.log), shown_(context.logIsTerminal && !context.quiet) {}
    TerminalLine(const TerminalLine&) = delete;
    TerminalLine& operator=(const TerminalLine&) = delete;
    ~TerminalLine() { Clear(); }

    /// Puts `text` (UTF-8) in the place of what stands there.
    void Show(const std::string& text);
    /// Removes it, so that something else can be logged.
    void Clear();

private:
    std::ostream& log_;
    bool shown_;
    std::string text_;
};

} // namespace tracksmith::cli
