#include <algorithm>
#include <array>
#include <memory>
#include <ostream>

#include "app/channel_voices.h"
#include "app/cli/commands.h"
#include "app/cli/info_json.h"
#include "app/cli/info_text.h"
#include "app/cli/instrument_choice.h"
#include "app/cli/reading_options.h"
#include "app/cli/song_input.h"
#include "app/cli/texts.h"

namespace tracksmith::cli {
namespace {

struct InfoArguments {
    std::vector<std::string> files;
    std::string instrument;
    bool json = false;
    bool all = false;
    ReadingOptions reading;
};

// The instrument that speaks the song's own language.
instruments::InstrumentId InstrumentOf(const app::SongDescription& song) {
    using instruments::SysexFamily;
    struct Speaker {
        SysexFamily family;
        instruments::InstrumentId instrument;
    };
    constexpr instruments::InstrumentId kNewestGs = 4; // Roland SC-8850
    static constexpr auto kSpeakers =
        std::to_array<Speaker>({{SysexFamily::Xg, instruments::kXgSoundset},
                                {SysexFamily::Gs, kNewestGs},
                                {SysexFamily::Gm2, instruments::kGm2Soundset}});
    for (const Speaker& speaker : kSpeakers) {
        if (std::ranges::find(song.families, speaker.family) != song.families.end()) {
            return speaker.instrument;
        }
    }
    return instruments::kGmSoundset;
}

int RunInfo(CliContext& context, const InfoArguments& arguments) {
    const instruments::Instrument* instrument = nullptr;
    if (!arguments.instrument.empty()) {
        instrument = ChooseInstrument(context, arguments.instrument);
        if (instrument == nullptr) {
            return kUsage;
        }
    }
    SongBatch batch(context);
    batch.Expand(arguments.files);
    batch.SetUp([&](session::WorkOptions& options) { arguments.reading.SetUp(options); });
    const auto describe = [&](SongJob& job) {
        const app::SongDescription song = app::DescribeSong(job.session.Work());
        const std::vector<instruments::NamedVoice> voices = app::VoicesOfChannels(
            *context.voices, song, instrument != nullptr ? instrument->id : InstrumentOf(song),
            context.language);
        std::ostream& out = job.context.out;
        if (arguments.json) {
            out << InfoJson(job.input.ExactName(), song, voices) << "\n";
        } else {
            out << (job.index == 0 ? "" : "\n");
            WriteInfo(out, job.input.Name(), song, voices, context.language, arguments.all);
        }
        return int{kOk};
    };
    const auto failed = [&](CliContext& sink, const InputFailure& failure) {
        if (arguments.json) {
            sink.out << InfoFailureJson(failure, sink.language) << "\n";
        }
    };
    return batch.Run(describe, failed);
}

} // namespace

void AddInfoCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<InfoArguments>();
    Command command = app.Add("info", context.Say(texts::kHelpInfo));
    command.Option("FILE", arguments->files, context.Say(texts::kHelpFiles)).Required().Value("");
    command.Option("--instrument", arguments->instrument, context.Say(texts::kHelpVoicesOf))
        .Value("NAME");
    command.Flag("--json", arguments->json, context.Say(texts::kHelpJson));
    command.Flag("--all", arguments->all, context.Say(texts::kHelpAll));
    arguments->reading.AddTo(command, context);
    arguments->reading.AddNoteLengthTo(command, context);
    command.Runs([&context, arguments] { return RunInfo(context, *arguments); });
}

} // namespace tracksmith::cli
