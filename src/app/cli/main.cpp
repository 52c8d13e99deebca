#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

#include "app/cli/cli_app.h"
#include "app/cli/cli_context.h"
#include "app/cli/console.h"
#include "app/texts.h"

namespace tracksmith::cli {
namespace {

// Takes no memory and no stream, which may not be there yet.
void SayNoMemory() {
    const std::string_view text = app::texts::kBufferMemory.In(SystemLanguage());
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fputc('\n', stderr);
}

// Libraries also take memory where nothing may be thrown, such as while they clean up. Every other
// fault that gets here is one of the program.
void EndProgram() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        SayNoMemory();
        std::_Exit(kWriteFailed);
    } catch (...) {
        std::abort();
    }
}

int Run(int argc, char** argv) {
    try {
        std::ios::sync_with_stdio(false);
        std::cin.tie(nullptr);
        return RunCli(ProgramArguments(argc, argv),
                      {std::cin, std::cout, std::cerr, TRACKSMITH_VERSION, SystemLanguage(),
                       ErrorIsTerminal()});
    } catch (const std::bad_alloc&) {
        SayNoMemory();
        return kWriteFailed;
    }
}

} // namespace
} // namespace tracksmith::cli

int main(int argc, char** argv) {
    std::set_terminate(tracksmith::cli::EndProgram);
    tracksmith::cli::SetUpConsole();
    return tracksmith::cli::Run(argc, argv);
}
