#include "app/cli/cli_app.h"

#include <exception>
#include <new>
#include <ostream>
#include <string>

#include "base/data_folders.h"

#include "app/cli/commands.h"
#include "app/cli/texts.h"
#include "app/components.h"
#include "app/texts.h"

namespace tracksmith::cli {
namespace {

/// The language must be known before the help texts are made, hence before the arguments are
/// parsed. A wrong value is reported by the parser later.
Language LanguageOf(std::span<const std::string> arguments, Language fallback) {
    Language language = fallback;
    for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
        const bool separate = arguments[i] == "--lang" && i + 1 < arguments.size();
        const std::string value = separate ? arguments[i + 1] : arguments[i];
        if (value == (separate ? "de" : "--lang=de")) {
            language = Language::German;
        } else if (value == (separate ? "en" : "--lang=en")) {
            language = Language::English;
        }
    }
    return language;
}

void AddCommands(Command& program, CliContext& context) {
    AddInfoCommand(program, context);
    AddCheckCommand(program, context);
    AddConvertCommand(program, context);
    AddRevoiceCommand(program, context);
    AddSetCommand(program, context);
    AddRangeCommand(program, context);
    AddRenderCommand(program, context);
    AddPlayCommand(program, context);
    AddPortsCommand(program, context);
    AddInstrumentsCommand(program, context);
    AddVoicesCommand(program, context);
    AddBackupsCommand(program, context);
    AddDiffCommand(program, context);
}

} // namespace

int RunCli(std::span<const std::string> arguments, const CliEnvironment& environment) {
    instruments::VoiceTables voices(VoiceFolders());
    CliContext context{environment.in,
                       environment.out,
                       environment.log,
                       LanguageOf(arguments, environment.language),
                       environment.logIsTerminal,
                       false,
                       false,
                       environment.openDevices,
                       environment.settings,
                       &voices,
                       {}};
    try {
        return ParseAndRun(context, arguments,
                           app::VersionText("tracksmith-cli " + std::string(environment.version),
                                            app::Program::CommandLine, context.language),
                           [&](Command& program) { AddCommands(program, context); });
    } catch (const std::bad_alloc&) {
        // Without any piece of memory.
        context.log << app::texts::kBufferMemory.In(context.language) << std::endl;
    } catch (const std::exception& error) {
        context.log << texts::kUnexpected.In(context.language) << error.what() << std::endl;
    }
    return kWriteFailed;
}

} // namespace tracksmith::cli
