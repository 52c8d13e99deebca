#include "app/cli/cli_message_host.h"

#include <ostream>

#include "base/display_text.h"

#include "app/cli/texts.h"

namespace tracksmith::cli {

void CliMessageHost::ShowMessage(std::string_view text) {
    // One line for each message, whatever breaks its text has.
    std::string line;
    for (const char character : text) {
        character == '\n' ? line.append(" - ") : line.append(1, character);
    }
    line = DisplayPath(line);
    // A message that names a file has it in quotation marks.
    if (!file_.empty() && line.find('"' + file_) == std::string::npos) {
        context_.log << file_ << ": ";
    }
    context_.log << line << std::endl;
}

bool CliMessageHost::AskYesNo(std::string_view question) {
    if (!context_.yes) {
        ShowMessage(std::string(question).append(" ").append(context_.Say(texts::kAnsweredNo)));
    }
    return context_.yes;
}

} // namespace tracksmith::cli
