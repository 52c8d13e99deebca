#include "app/cli/cli_app.h"

#include <exception>
#include <new>
#include <ostream>
#include <vector>

#include "base/data_folders.h"

#include "app/cli/commands.h"
#include "app/cli/texts.h"
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

void TranslateLabels(CLI::App& app, Language language) {
    if (language != Language::German) {
        return;
    }
    const auto formatter = std::make_shared<CLI::Formatter>();
    formatter->label("Usage", "Aufruf");
    formatter->label("OPTIONS", "OPTIONEN");
    formatter->label("SUBCOMMAND", "BEFEHL");
    formatter->label("SUBCOMMANDS", "BEFEHLE");
    formatter->label("Positionals", "Angaben");
    formatter->label("REQUIRED", "(nötig)");
    app.formatter(formatter);
    app.option_defaults()->group("Optionen");
}

void AddCommonOptions(CLI::App& app, CliContext& context, const CliEnvironment& environment) {
    app.set_help_flag("-h,--help", context.Say(texts::kHelpHelp));
    app.set_version_flag("--version", "tracksmith-cli " + std::string(environment.version),
                         context.Say(texts::kHelpVersion));
    app.add_option_function<std::string>(
           "--lang",
           [&context](const std::string& value) {
               context.language = value == "de" ? Language::German : Language::English;
           },
           context.Say(texts::kHelpLang))
        ->type_name("de|en")
        ->check([](const std::string& value) {
            return value == "de" || value == "en" ? std::string() : "--lang: de, en";
        });
    app.add_flag("-q,--quiet", context.quiet, context.Say(texts::kHelpQuiet));
    app.add_flag("-y,--yes", context.yes, context.Say(texts::kHelpYes));
    app.require_subcommand(1);
    app.allow_windows_style_options(false);
    app.fallthrough(); // common options may stand behind the command
}

int RunParsed(CliContext& context) {
    const int code = context.run();
    context.out.flush();
    if (!context.out) {
        context.log << context.Say(texts::kOutputLost) << "\n";
        return kWriteFailed;
    }
    return code;
}

int ParseAndRun(CLI::App& app, std::span<const std::string> arguments, CliContext& context) {
    try {
        // The parser takes them from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        context.out << app.help();
        return kOk;
    } catch (const CLI::CallForVersion& version) {
        context.out << version.what() << "\n";
        return kOk;
    } catch (const CLI::ParseError& error) {
        context.log << context.Say(texts::kUsageError) << error.what() << "\n"
                    << context.Say(texts::kUsageHint) << "\n";
        return kUsage;
    }
    return RunParsed(context);
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
        CLI::App app(context.Say(texts::kHelpProgram), "tracksmith-cli");
        TranslateLabels(app, context.language);
        AddCommonOptions(app, context, environment);
        AddInfoCommand(app, context);
        AddCheckCommand(app, context);
        AddConvertCommand(app, context);
        AddRevoiceCommand(app, context);
        AddSetCommand(app, context);
        AddRangeCommand(app, context);
        AddRenderCommand(app, context);
        AddPlayCommand(app, context);
        AddPortsCommand(app, context);
        AddInstrumentsCommand(app, context);
        AddVoicesCommand(app, context);
        AddBackupsCommand(app, context);
        AddDiffCommand(app, context);
        for (CLI::App* command : app.get_subcommands({})) {
            command->group(context.Say(texts::kHelpCommands));
            command->set_help_flag("-h,--help", context.Say(texts::kHelpHelp));
        }
        return ParseAndRun(app, arguments, context);
    } catch (const std::bad_alloc&) {
        // Without any piece of memory.
        context.log << app::texts::kBufferMemory.In(context.language) << std::endl;
    } catch (const std::exception& error) {
        context.log << texts::kUnexpected.In(context.language) << error.what() << std::endl;
    }
    return kWriteFailed;
}

} // namespace tracksmith::cli
