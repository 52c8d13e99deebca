#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "app/cli/cli_message_host.h"
#include "app/cli/columns.h"
#include "app/cli/commands.h"
#include "app/cli/input_files.h"
#include "app/cli/instrument_choice.h"
#include "app/cli/texts.h"
#include "app/save_song.h"
#include "instruments/importers/import_file.h"
#include "instruments/voices/user_table.h"
#include "instruments/voices/voice_file_error.h"
#include "instruments/voices/voice_list.h"
#include "instruments/voices/voice_table_writer.h"

namespace tracksmith::cli {
namespace {

using instruments::ImportedTable;
using instruments::Voice;

constexpr int kVoicesSchema = 1;

struct VoicesArguments {
    std::string instrument;
    std::vector<std::string> words;
    std::string importFrom;
    std::string model;
    std::string exportTo;
    bool json = false;
};

/// One run of `voices`.
class VoicesRun {
public:
    VoicesRun(const CliContext& context, const VoicesArguments& arguments,
              const instruments::Instrument& instrument)
        : context_(context),
          arguments_(arguments),
          instrument_(instrument),
          tables_(*context.voices),
          host_(context) {}

    int Run() {
        if (!arguments_.importFrom.empty()) {
            return Import();
        }
        for (const std::string& problem : tables_.Problems(instrument_.id, context_.language)) {
            context_.log << DisplayPath(problem) << "\n";
        }
        const instruments::VoiceList voices =
            instruments::SearchVoices(tables_, instrument_.id, Joined(arguments_.words));
        if (!arguments_.exportTo.empty()) {
            return Export(voices);
        }
        return List(voices);
    }

private:
    int Import() {
        const std::string file = DisplayPath(arguments_.importFrom);
        try {
            const std::vector<ImportedTable> tables =
                instruments::ImportVoiceFile(PathOf(arguments_.importFrom));
            const ImportedTable* picked = Pick(tables);
            if (picked == nullptr) {
                return kUsage;
            }
            const auto saved =
                instruments::StoreUserTable(tables_, instrument_.id, picked->table, host_);
            if (!saved) {
                return kWriteFailed;
            }
            context_.out << texts::VoicesImported(context_.language, picked->modelName,
                                                  picked->table.Voices().size(), picked->leftOut)
                         << " -> " << DisplayPath(system::PathText(*saved)) << "\n";
            return kOk;
        } catch (const instruments::VoiceFileError& error) {
            context_.log << file << ": " << error.Message(context_.language) << "\n";
            return kUnreadable;
        }
    }

    const ImportedTable* Pick(const std::vector<ImportedTable>& tables) const {
        const auto found = std::ranges::find(tables, arguments_.model, &ImportedTable::modelName);
        if (found != tables.end()) {
            return &*found;
        }
        if (tables.size() == 1 && arguments_.model.empty()) {
            return tables.data();
        }
        context_.log << context_.Say(texts::kWhichModel);
        for (const ImportedTable& table : tables) {
            context_.log << "\n  " << DisplayPath(table.modelName);
        }
        context_.log << "\n";
        return nullptr;
    }

    int Export(const instruments::VoiceList& list) {
        if (!app::ConfirmOverwrite(PathOf(arguments_.exportTo), host_)) {
            return kWriteFailed;
        }
        std::vector<Voice> copy;
        std::ranges::transform(list.voices, std::back_inserter(copy),
                               [](const Voice* voice) { return *voice; });
        const std::string text = instruments::VoiceTableText(copy);
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
        const auto result =
            system::WriteFileAtomically(PathOf(arguments_.exportTo), {bytes, text.size()});
        if (result.outcome != system::WriteOutcome::Written) {
            context_.log << context_.Say(texts::kNotWritten) << DisplayPath(arguments_.exportTo)
                         << "\n";
            return kWriteFailed;
        }
        return kOk;
    }

    int List(const instruments::VoiceList& list) const {
        std::size_t index = 0;
        for (const Voice* voice : list.voices) {
            if (arguments_.json) {
                WriteJson(*voice, index < list.own);
            } else {
                WriteText(*voice);
            }
            ++index;
        }
        if (list.voices.empty()) {
            context_.log << context_.Say(texts::kNoVoices) << "\n";
            return kFindings;
        }
        if (!context_.quiet && !arguments_.json) {
            context_.log << texts::VoiceCounts(context_.language, list.own, list.Inherited().size())
                         << "\n";
        }
        return kOk;
    }

    void WriteJson(const Voice& voice, bool own) const {
        const nlohmann::ordered_json json{{"schema", kVoicesSchema},
                                          {"instrument", instrument_.name},
                                          {"family", voice.family},
                                          {"category", voice.category},
                                          {"msb", voice.msb},
                                          {"lsb", voice.lsb},
                                          {"program", voice.program},
                                          {"name", voice.name},
                                          {"own", own}};
        context_.out << json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
                     << "\n";
    }

    void WriteText(const Voice& voice) const {
        context_.out << Right(std::to_string(voice.msb), 3) << " "
                     << Right(std::to_string(voice.lsb), 3) << " "
                     << Right(std::to_string(voice.program + 1), 3) << "  "
                     << Left(std::string(voice.name), 32) << "  "
                     << Left(std::string(voice.family), 10) << "  " << voice.category << "\n";
    }

    const CliContext& context_;
    const VoicesArguments& arguments_;
    const instruments::Instrument& instrument_;
    instruments::VoiceTables& tables_;
    CliMessageHost host_;
};

int RunVoices(const CliContext& context, const VoicesArguments& arguments) {
    const instruments::Instrument* instrument = ChooseInstrument(context, arguments.instrument);
    return instrument == nullptr ? int{kUsage} : VoicesRun(context, arguments, *instrument).Run();
}

} // namespace

void AddVoicesCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<VoicesArguments>();
    Command command = app.Add("voices", context.Say(texts::kHelpVoices));
    command.Option("INSTRUMENT", arguments->instrument, context.Say(texts::kHelpVoicesInstrument))
        .Required()
        .Value("");
    command.Option("SEARCH", arguments->words, context.Say(texts::kHelpSearchVoices)).Value("");
    command.Flag("--json", arguments->json, context.Say(texts::kHelpVoicesJson));
    command.Option("--import", arguments->importFrom, context.Say(texts::kHelpImport))
        .Value("FILE");
    command.Option("--model", arguments->model, context.Say(texts::kHelpModel)).Value("NAME");
    command.Option("--export", arguments->exportTo, context.Say(texts::kHelpExport)).Value("FILE");
    command.Runs([&context, arguments] { return RunVoices(context, *arguments); });
}

} // namespace tracksmith::cli
