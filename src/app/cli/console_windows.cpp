#include <windows.h>
// Needs the types of windows.h.
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <io.h>
#include <shellapi.h>

#include "base/system/file_io.h"

#include "app/cli/console.h"

namespace tracksmith::cli {

void SetUpConsole() {
    SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
}

std::vector<std::string> ProgramArguments(int, const char* const*) {
    int count = 0;
    wchar_t** values = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; values != nullptr && i < count; ++i) {
        arguments.push_back(system::PathText(std::filesystem::path(values[i])));
    }
    LocalFree(values);
    return arguments;
}

Language SystemLanguage() {
    return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_GERMAN ? Language::German
                                                                    : Language::English;
}

bool ErrorIsTerminal() {
    return _isatty(_fileno(stderr)) != 0;
}

} // namespace tracksmith::cli
