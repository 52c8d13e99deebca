#include <exception>
#include <iostream>

#include "app/cli/cli_app.h"
#include "app/cli/cli_context.h"
#include "app/cli/console.h"

int main(int argc, char** argv) {
    using namespace tracksmith::cli;
    SetUpConsole();
    std::ios::sync_with_stdio(false);
    std::cin.tie(nullptr);
    try {
        const std::vector<std::string> arguments = ProgramArguments(argc, argv);
        return RunCli(arguments, {std::cin, std::cout, std::cerr, TRACKSMITH_VERSION,
                                  SystemLanguage(), ErrorIsTerminal()});
    } catch (const std::exception& error) {
        std::cerr << error.what() << std::endl; // before a language is known
        return kWriteFailed;
    }
}
