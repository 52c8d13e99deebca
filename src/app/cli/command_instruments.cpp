#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "app/cli/columns.h"
#include "app/cli/commands.h"
#include "app/cli/instrument_choice.h"
#include "app/cli/texts.h"
#include "instruments/sysex/operation_table.h"
#include "instruments/voices/texts.h"
#include "instruments/voices/voice_list.h"

namespace tracksmith::cli {
namespace {

constexpr int kInstrumentsSchema = 2;

struct InstrumentsArguments {
    std::vector<std::string> words;
    bool json = false;
    bool markdown = false;
};

/// An instrument with what the program knows of it.
struct InstrumentLine {
    const instruments::Instrument* instrument;
    /// Voices of its own table, 0 without one.
    std::size_t voices = 0;
    /// The instrument whose table names its voices.
    instruments::InstrumentId names = instruments::kGmSoundset;
    std::vector<instruments::OperationStep> operations;
};

std::vector<InstrumentLine> LinesFor(const CliContext& context, const std::string& words) {
    const instruments::VoiceTables& tables = *context.voices;
    std::vector<InstrumentLine> lines;
    for (const instruments::Instrument* instrument : MatchInstruments(words)) {
        const instruments::VoiceTable* own = tables.OwnTable(instrument->id);
        lines.push_back({instrument, own == nullptr ? 0 : own->Voices().size(),
                         instruments::NamingTable(tables, instrument->id),
                         instruments::OperationsOf(instrument->id)});
    }
    return lines;
}

// Each with the condition under which it is taken, null for always.
nlohmann::ordered_json OperationsJson(const InstrumentLine& line, Language language) {
    auto operations = nlohmann::ordered_json::array();
    for (const instruments::OperationStep& step : line.operations) {
        nlohmann::ordered_json operation{{"name", step.operation.name}, {"when", nullptr}};
        if (step.when != nullptr) {
            operation["when"] = step.when->words.In(language);
        }
        operations.push_back(std::move(operation));
    }
    return operations;
}

void WriteJson(const CliContext& context, const InstrumentLine& line) {
    nlohmann::ordered_json json{
        {"schema", kInstrumentsSchema},
        {"id", line.instrument->id},
        {"name", line.instrument->name},
        {"voices", line.voices},
        {"names", line.voices == 0 ? instruments::texts::SetName(line.names) : "own"},
        {"operations", OperationsJson(line, context.language)}};
    context.out << json.dump() << "\n";
}

void WriteText(const CliContext& context, const InstrumentLine& line) {
    const std::string voices =
        line.voices == 0 ? texts::NamesOf(context.language, instruments::texts::SetName(line.names))
                         : std::to_string(line.voices) + " " + context.Say(texts::kVoices);
    context.out << Right(std::to_string(line.instrument->id), 3) << "  "
                << Left(std::string(line.instrument->name), 34) << voices << "\n";
}

// Each with its condition behind it.
std::string OperationsText(const InstrumentLine& line, Language language) {
    std::string text;
    for (const instruments::OperationStep& step : line.operations) {
        text.append(text.empty() ? "" : ", ").append(step.operation.name);
        if (step.when != nullptr) {
            text.append(" (").append(step.when->words.In(language)).append(")");
        }
    }
    return text;
}

// The table of the documents.
void WriteMarkdown(const CliContext& context, const std::vector<InstrumentLine>& lines) {
    std::ostream& out = context.out;
    out << "| id | instrument | voices | operations |\n|---:|---|---:|---|\n";
    for (const InstrumentLine& line : lines) {
        out << "| " << int{line.instrument->id} << " | " << line.instrument->name << " | "
            << (line.voices == 0 ? std::string(instruments::texts::SetName(line.names))
                                 : std::to_string(line.voices))
            << " | " << OperationsText(line, context.language) << " |\n";
    }
}

int RunInstruments(const CliContext& context, const InstrumentsArguments& arguments) {
    const std::string words = Joined(arguments.words);
    const std::vector<InstrumentLine> lines = LinesFor(context, words);
    if (arguments.markdown) {
        WriteMarkdown(context, lines);
        return kOk;
    }
    for (const InstrumentLine& line : lines) {
        if (arguments.json) {
            WriteJson(context, line);
        } else {
            WriteText(context, line);
        }
    }
    if (lines.empty()) {
        context.log << texts::NotOneInstrument(context.language, words, {}) << "\n";
    }
    return lines.empty() ? kFindings : kOk;
}

} // namespace

void AddInstrumentsCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<InstrumentsArguments>();
    Command command = app.Add("instruments", context.Say(texts::kHelpInstruments));
    command.Option("SEARCH", arguments->words, context.Say(texts::kHelpSearchInstruments))
        .Value("");
    command.Flag("--json", arguments->json, context.Say(texts::kHelpInstrumentsJson));
    command.Flag("--markdown", arguments->markdown, context.Say(texts::kHelpMarkdown));
    command.Runs([&context, arguments] { return RunInstruments(context, *arguments); });
}

} // namespace tracksmith::cli
