#include "app/cli/reading_options.h"

#include <string>

#include "app/cli/texts.h"
#include "app/cli/user_settings.h"
#include "app/note_settings.h"

namespace tracksmith::cli {

void ReadingOptions::AddTo(CLI::App& command, const CliContext& context) {
    command.add_flag(kRunningStatusAcrossSysexSwitch, runningStatusAcrossSysex,
                     context.Say(texts::kHelpRunningStatusAcrossSysex));
    command.add_flag("--honour-zel-ignore", honourZelIgnore,
                     context.Say(texts::kHelpHonourZelIgnore));
}

void ReadingOptions::AddNoteLengthTo(CLI::App& command, const CliContext& context) {
    context_ = &context;
    command
        .add_option_function<std::string>(
            "--min-length",
            [this](const std::string& value) {
                minimumNoteLength = value == "off" ? 0 : std::stoi(value);
            },
            context.Say(texts::kHelpMinLength))
        ->type_name("N|off")
        ->check([](const std::string& value) {
            return value == "off" ? std::string()
                                  : CLI::Range(0, song::kMostNoteLength)(std::string(value));
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
