#include <algorithm>
#include <array>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "base/display_text.h"

#include "app/cli/ask_at_port.h"
#include "app/cli/columns.h"
#include "app/cli/commands.h"
#include "app/cli/port_list.h"
#include "app/cli/texts.h"

namespace tracksmith::cli {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kPortsSchema = 1;

/// Kinds of port by their number: as a name for programs and as a text.
struct Technology {
    const char* name = "";
    Text text;
};
constexpr std::array<Technology, 6> kTechnologies{{{"unknown", texts::kUnknownPort},
                                                   {"midiPort", texts::kMidiPort},
                                                   {"synthesizer", texts::kSynthesizer},
                                                   {"squareWave", texts::kSquareWave},
                                                   {"fm", texts::kFmSynthesizer},
                                                   {"mapper", texts::kMidiMapper}}};

const Technology& TechnologyOf(const PortDescription& port) {
    return kTechnologies[port.technology < kTechnologies.size() ? port.technology : 0];
}

std::string PortJson(const PortDescription& port) {
    const Json json{{"schema", kPortsSchema},
                    {"direction", port.output ? "output" : "input"},
                    {"name", port.name},
                    {"technology", TechnologyOf(port).name},
                    {"builtIn", port.builtIn},
                    {"usable", port.usable},
                    {"problem", port.problem.empty() ? Json() : Json(port.problem)}};
    // Names come from foreign programs and need not be valid UTF-8.
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string State(const CliContext& context, const PortDescription& port) {
    const std::string state = context.Say(port.usable ? texts::kUsable : texts::kNotUsable);
    return port.problem.empty() ? state : state + ": " + DisplayPath(port.problem);
}

void WritePorts(const CliContext& context, const std::vector<PortDescription>& ports) {
    std::vector<std::array<std::string, 4>> rows;
    std::array<std::size_t, 3> widths{};
    for (const PortDescription& port : ports) {
        rows.push_back({context.Say(port.output ? texts::kOutput : texts::kInput),
                        DisplayPath(port.name), context.Say(TechnologyOf(port).text),
                        State(context, port)});
        for (std::size_t i = 0; i < widths.size(); ++i) {
            widths[i] = std::max(widths[i], Width(rows.back()[i]));
        }
    }
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            context.out << Left(row[i], widths[i] + 2);
        }
        context.out << row.back() << "\n";
    }
}

struct PortsArguments {
    bool json = false;
    AskPlan ask;
};

int RunPorts(const CliContext& context, bool json) {
    const std::unique_ptr<devices::MidiDevices> devices = context.openDevices({});
    const std::vector<PortDescription> ports = ListPorts(*devices, context.language);
    if (ports.empty() && !context.quiet) {
        context.log << context.Say(texts::kNoPorts) << "\n";
    }
    if (!json) {
        WritePorts(context, ports);
        return kOk;
    }
    for (const PortDescription& port : ports) {
        context.out << PortJson(port) << "\n";
    }
    return kOk;
}

} // namespace

void AddPortsCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<PortsArguments>();
    Command command = app.Add("ports", context.Say(texts::kHelpPorts));
    command.Flag("--json", arguments->json, context.Say(texts::kHelpPortsJson));
    const Argument ask =
        command.Option("--ask", arguments->ask.output, context.Say(texts::kHelpAsk))
            .Value("OUTPUT");
    command.Option("--input", arguments->ask.input, context.Say(texts::kHelpAskInput))
        .Value("INPUT")
        .OnlyWith(ask);
    command.Runs([&context, arguments, ask] {
        return ask.IsGiven() ? AskAtPort(context, arguments->ask, arguments->json)
                             : RunPorts(context, arguments->json);
    });
}

} // namespace tracksmith::cli
