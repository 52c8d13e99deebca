#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "app/cli/commands.h"
#include "app/cli/texts.h"

namespace tracksmith::cli {

void AddRenderCommand(Command& app, CliContext& context) {
    Command command = app.Add("render", context.Say(texts::kHelpNotContained));
    command.TakesAnything();
    command.Runs([&context] {
        context.log << context.Say(texts::kNoInstrument) << "\n";
        return int{kPortOrAudioMissing};
    });
}

} // namespace tracksmith::cli
