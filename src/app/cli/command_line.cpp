#include "app/cli/command_line.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>
#include <utility>

#include "app/cli/texts.h"

namespace tracksmith::cli {
namespace {

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

void SetHelpFlag(CLI::App& app, const CliContext& context) {
    app.set_help_flag("-h,--help", context.Say(texts::kHelpHelp));
}

void AddCommonOptions(CLI::App& app, CliContext& context) {
    Command common(app, context);
    common
        .OptionTo(
            "--lang",
            [&context](const std::string& value) {
                context.language = value == "de" ? Language::German : Language::English;
            },
            context.Say(texts::kHelpLang))
        .Value("de|en")
        .Check([](const std::string& value) {
            return value == "de" || value == "en" ? std::string() : "--lang: de, en";
        });
    common.Flag("-q,--quiet", context.quiet, context.Say(texts::kHelpQuiet));
    common.Flag("-y,--yes", context.yes, context.Say(texts::kHelpYes));
    common.NeedsCommand();
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

} // namespace

Argument& Argument::Value(const std::string& name) {
    option_->type_name(name);
    return *this;
}

Argument& Argument::Required() {
    option_->required();
    return *this;
}

Argument& Argument::Between(int low, int high) {
    option_->check(CLI::Range(low, high));
    return *this;
}

Argument& Argument::Check(std::function<std::string(const std::string&)> fault) {
    option_->check(std::move(fault));
    return *this;
}

Argument& Argument::OnlyWith(const Argument& other) {
    option_->needs(other.option_);
    return *this;
}

bool Argument::IsGiven() const {
    return option_->count() > 0;
}

Command Command::Add(const std::string& name, const std::string& help) {
    CLI::App* command = app_->add_subcommand(name, help);
    command->group(context_->Say(texts::kHelpCommands));
    SetHelpFlag(*command, *context_);
    return {*command, *context_};
}

void Command::NeedsCommand() {
    app_->require_subcommand(1);
}

void Command::Flag(const std::string& names, bool& value, const std::string& help) {
    app_->add_flag(names, value, help);
}

Argument Command::Option(const std::string& names, std::string& value, const std::string& help) {
    return Argument(*app_->add_option(names, value, help));
}

Argument Command::Option(const std::string& names, std::vector<std::string>& values,
                         const std::string& help) {
    return Argument(*app_->add_option(names, values, help));
}

Argument Command::Option(const std::string& names, int& value, const std::string& help) {
    return Argument(*app_->add_option(names, value, help));
}

Argument Command::Option(const std::string& names, std::size_t& value, const std::string& help) {
    return Argument(*app_->add_option(names, value, help));
}

Argument Command::Option(const std::string& names, std::optional<int>& value,
                         const std::string& help) {
    return Argument(*app_->add_option(names, value, help));
}

Argument Command::OptionTo(const std::string& names,
                           const std::function<void(const std::string&)>& take,
                           const std::string& help) {
    return Argument(*app_->add_option_function<std::string>(names, take, help));
}

void Command::TakesAnything() {
    app_->allow_extras()->fallthrough(false);
}

void Command::Runs(std::function<int()> run) {
    app_->callback([context = context_, run = std::move(run)] { context->run = run; });
}

std::string NumberFault(const std::string& value, int low, int high) {
    return CLI::Range(low, high)(std::string(value));
}

int ParseAndRun(CliContext& context, std::span<const std::string> arguments,
                const std::string& version, const std::function<void(Command&)>& declare) {
    CLI::App app(context.Say(texts::kHelpProgram), "tracksmith-cli");
    TranslateLabels(app, context.language);
    SetHelpFlag(app, context);
    app.set_version_flag("--version", version, context.Say(texts::kHelpVersion));
    AddCommonOptions(app, context);
    Command program(app, context);
    declare(program);
    try {
        // The parser takes them from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        context.out << app.help();
        return kOk;
    } catch (const CLI::CallForVersion& asked) {
        context.out << asked.what() << "\n";
        return kOk;
    } catch (const CLI::ParseError& error) {
        context.log << context.Say(texts::kUsageError) << error.what() << "\n"
                    << context.Say(texts::kUsageHint) << "\n";
        return kUsage;
    }
    return RunParsed(context);
}

} // namespace tracksmith::cli
