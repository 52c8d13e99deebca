#include "app/cli/terminal_line.h"

#include <ostream>

#include "app/cli/columns.h"

namespace tracksmith::cli {

void TerminalLine::Show(const std::string& text) {
    if (shown_ && text != text_) {
        log_ << "\r" << Left(text, Width(text_)) << std::flush;
        text_ = text;
    }
}

void TerminalLine::Clear() {
    if (!text_.empty()) {
        log_ << "\r" << std::string(Width(text_), ' ') << "\r" << std::flush;
        text_.clear();
    }
}

} // namespace tracksmith::cli
