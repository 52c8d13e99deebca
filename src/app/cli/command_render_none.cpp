#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "app/cli/commands.h"
#include "app/cli/texts.h"

namespace tracksmith::cli {

void AddRenderCommand(CLI::App& app, CliContext& context) {
    CLI::App* command = app.add_subcommand("render", context.Say(texts::kHelpRenderNone));
    command->allow_extras()->fallthrough(false); // whatever follows
    command->callback([&context] {
        context.run = [&context] {
            context.log << context.Say(texts::kNoInstrument) << "\n";
            return int{kPortOrAudioMissing};
        };
    });
}

} // namespace tracksmith::cli
