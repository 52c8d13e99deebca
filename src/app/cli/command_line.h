#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/cli/cli_context.h"

// NOLINTNEXTLINE(readability-identifier-naming): the parser's own
namespace CLI {
class App;
class Option;
} // namespace CLI

namespace tracksmith::cli {

/// One argument of a command, for what else there is to say about it. The parser behind it is only
/// known to one source, since its header takes the compiler long.
class Argument {
public:
    explicit Argument(CLI::Option& option) : option_(&option) {}

    /// What stands for the value in the help, empty for nothing.
    Argument& Value(const std::string& name);
    Argument& Required();
    /// Takes whole numbers from `low` to `high` only.
    Argument& Between(int low, int high);
    /// `fault` says what is wrong with a value, nothing for a good one.
    Argument& Check(std::function<std::string(const std::string&)> fault);
    /// Is a fault without `other`.
    Argument& OnlyWith(const Argument& other);
    /// Whether the user gave it; once the command runs.
    bool IsGiven() const;

private:
    CLI::Option* option_; // of the parser
};

/// A command as its arguments are declared. Names are written as in the help: "-o,--out" for an
/// option, "FILE" for an argument by its place. The variables must live until the command has run.
class Command {
public:
    Command(CLI::App& app, CliContext& context) : app_(&app), context_(&context) {}

    /// A command of this one.
    Command Add(const std::string& name, const std::string& help);
    /// Is a fault without one of its commands.
    void NeedsCommand();
    void Flag(const std::string& names, bool& value, const std::string& help);
    Argument Option(const std::string& names, std::string& value, const std::string& help);
    Argument Option(const std::string& names, std::vector<std::string>& values,
                    const std::string& help);
    Argument Option(const std::string& names, int& value, const std::string& help);
    Argument Option(const std::string& names, std::size_t& value, const std::string& help);
    Argument Option(const std::string& names, std::optional<int>& value, const std::string& help);
    /// An option whose value is given to `take`.
    Argument OptionTo(const std::string& names, const std::function<void(const std::string&)>& take,
                      const std::string& help);
    /// Takes whatever follows without a fault.
    void TakesAnything();
    /// What is done when the user chose the command; the result is the exit code.
    void Runs(std::function<int()> run);

private:
    CLI::App* app_; // of the parser
    CliContext* context_;
};

/// The fault of a text that is no whole number from `low` to `high`, nothing for one that is.
std::string NumberFault(const std::string& value, int low, int high);

/// The arguments of the whole program: reads them and runs the command that they name. Faults are
/// logged, and answered with kUsage. `version` is what the option for it prints; `declare` adds the
/// commands.
int ParseAndRun(CliContext& context, std::span<const std::string> arguments,
                const std::string& version, const std::function<void(Command&)>& declare);

} // namespace tracksmith::cli
