#include <memory>
#include <ostream>

#include "app/cli/commands.h"
#include "app/cli/info_json.h"
#include "app/cli/info_text.h"
#include "app/cli/song_input.h"
#include "app/cli/texts.h"

namespace tracksmith::cli {
namespace {

struct InfoArguments {
    std::vector<std::string> files;
    bool json = false;
    bool all = false;
};

int RunInfo(CliContext& context, const InfoArguments& arguments) {
    SongBatch batch(context);
    batch.Expand(arguments.files);
    bool first = true;
    const auto describe = [&](const InputFile& input, app::Workspace& workspace, MessageHost&) {
        const app::SongDescription song = app::DescribeSong(workspace);
        if (arguments.json) {
            context.out << InfoJson(input.Name(), song) << "\n";
        } else {
            context.out << (first ? "" : "\n");
            WriteInfo(context.out, input.Name(), song, context.language, arguments.all);
        }
        first = false;
        return int{kOk};
    };
    const auto failed = [&](const std::string& name, const std::string& message) {
        if (arguments.json) {
            context.out << InfoFailureJson(name, message) << "\n";
        }
    };
    return batch.Run(describe, failed);
}

} // namespace

void AddInfoCommand(CLI::App& app, CliContext& context) {
    const auto arguments = std::make_shared<InfoArguments>();
    CLI::App* command = app.add_subcommand("info", context.Say(texts::kHelpInfo));
    command->add_option("FILE", arguments->files, context.Say(texts::kHelpFiles))
        ->required()
        ->type_name("");
    command->add_flag("--json", arguments->json, context.Say(texts::kHelpJson));
    command->add_flag("--all", arguments->all, context.Say(texts::kHelpAll));
    command->callback([&context, arguments] {
        context.run = [&context, arguments] { return RunInfo(context, *arguments); };
    });
}

} // namespace tracksmith::cli
