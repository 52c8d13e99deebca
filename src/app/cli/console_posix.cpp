#include <csignal>
#include <cstdlib>
#include <string_view>
#include <unistd.h>

#include "app/cli/console.h"

namespace tracksmith::cli {

void SetUpConsole() {
    std::signal(SIGPIPE, SIG_IGN);
}

std::vector<std::string> ProgramArguments(int count, const char* const* values) {
    return count > 1 ? std::vector<std::string>(values + 1, values + count)
                     : std::vector<std::string>{};
}

Language SystemLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return std::string_view(value).starts_with("de") ? Language::German : Language::English;
        }
    }
    return Language::English;
}

bool ErrorIsTerminal() {
    return isatty(STDERR_FILENO) != 0;
}

} // namespace tracksmith::cli
