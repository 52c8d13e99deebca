#include "app/cli/reading_options.h"

#include <string>

#include "app/cli/texts.h"
#include "app/cli/user_settings.h"
#include "app/note_settings.h"

namespace tracksmith::cli {

void ReadingOptions::AddTo(Command& command, const CliContext& context) {
    command.Flag(kRunningStatusAcrossSysexSwitch, runningStatusAcrossSysex,
                 context.Say(texts::kHelpRunningStatusAcrossSysex));
    command.Flag("--honour-zel-ignore", honourZelIgnore, context.Say(texts::kHelpHonourZelIgnore));
}

void ReadingOptions::AddNoteLengthTo(Command& command, const CliContext& context) {
    context_ = &context;
    command
        .OptionTo(
            "--min-length",
            [this](const std::string& value) {
                minimumNoteLength = value == "off" ? 0 : std::stoi(value);
            },
            context.Say(texts::kHelpMinLength))
        .Value("N|off")
        .Check([](const std::string& value) {
            return value == "off" ? std::string() : NumberFault(value, 0, song::kMostNoteLength);
        });
}

void ReadingOptions::SetUp(session::WorkOptions& options) const {
    options.runningStatusAcrossSysex = runningStatusAcrossSysex;
    options.decodeOptions.honourZelIgnore = honourZelIgnore;
    if (context_ != nullptr) {
        settings::SettingsStore store = OpenSettings(*context_);
        options.noteLength = app::ReadNoteLength(store);
        options.noteLength.minimum = minimumNoteLength.value_or(options.noteLength.minimum);
    }
}

} // namespace tracksmith::cli
