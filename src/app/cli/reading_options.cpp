#include "app/cli/reading_options.h"

#include "app/cli/texts.h"

namespace tracksmith::cli {

void ReadingOptions::AddTo(CLI::App& command, const CliContext& context) {
    command.add_flag(kRunningStatusAcrossSysexSwitch, runningStatusAcrossSysex,
                     context.Say(texts::kHelpRunningStatusAcrossSysex));
    command.add_flag("--honour-zel-ignore", honourZelIgnore,
                     context.Say(texts::kHelpHonourZelIgnore));
}

void ReadingOptions::SetUp(session::WorkOptions& options) const {
    options.runningStatusAcrossSysex = runningStatusAcrossSysex;
    options.decodeOptions.honourZelIgnore = honourZelIgnore;
}

} // namespace tracksmith::cli
