#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "app/channel_voices.h"
#include "app/cli/commands.h"
#include "app/cli/diff_texts.h"
#include "app/cli/info_json.h"
#include "app/cli/instrument_choice.h"
#include "app/cli/reading_options.h"
#include "app/cli/song_input.h"
#include "app/diff/compare_songs.h"
#include "app/diff/difference_json.h"
#include "song/song.h"

namespace tracksmith::cli {
namespace {

struct DiffArguments {
    std::string before;
    std::string after;
    std::string instrument;
    bool json = false;
    ReadingOptions reading;
};

/// A song of its own, out of the session that read it.
struct LoadedSong {
    song::Song song;
    std::string name;
};

// What went wrong has been logged.
int Load(CliContext& context, const DiffArguments& arguments, const std::string& name,
         LoadedSong& loaded) {
    SongBatch batch(context);
    if (batch.Expand({name}).size() > 1) {
        context.log << context.Say(texts::kDiffNeedsSongs) << "\n";
        return kUsage;
    }
    batch.SetUp([&](session::WorkOptions& options) { arguments.reading.SetUp(options); });
    return batch.Run(
        [&](SongJob& job) {
            job.session.Change(session::kReplaceSong, job.host, [&](session::Workspace& work) {
                loaded.song.Swap(work.song);
                work.hasSong = false;
                return true;
            });
            loaded.name = job.input.ExactName();
            return int{kOk};
        },
        [&](CliContext& sink, const InputFailure& failure) {
            if (arguments.json) {
                sink.out << InfoFailureJson(failure, sink.language) << "\n";
            }
        });
}

// None without an instrument.
diff::VoiceNamer NamerFor(const CliContext& context, const instruments::Instrument* instrument) {
    if (instrument == nullptr) {
        return {};
    }
    return [&context, id = instrument->id](std::uint8_t channel, std::optional<std::uint8_t> msb,
                                           std::optional<std::uint8_t> lsb, std::uint8_t program) {
        return app::VoiceOfChannel(*context.voices, {channel, 0, msb, lsb, program}, id, {},
                                   context.language)
            .name;
    };
}

int Compare(CliContext& context, const DiffArguments& arguments) {
    LoadedSong before;
    LoadedSong after;
    if (const int code = Load(context, arguments, arguments.before, before); code != kOk) {
        return code;
    }
    if (const int code = Load(context, arguments, arguments.after, after); code != kOk) {
        return code;
    }
    const instruments::Instrument* instrument = nullptr;
    if (!arguments.instrument.empty()) {
        instrument = ChooseInstrument(context, arguments.instrument);
        if (instrument == nullptr) {
            return kUsage;
        }
    }
    const diff::Wording wording{context.language, NamerFor(context, instrument)};
    const diff::Differences differences = diff::CompareSongs(before.song, after.song);
    if (arguments.json) {
        context.out << diff::DifferencesJson(differences, before.song, after.song, before.name,
                                             after.name, wording)
                    << "\n";
    } else if (!differences.Same() || !context.quiet) {
        context.out << diff::DifferencesText(differences, before.song, after.song, wording);
    }
    return differences.Same() ? kOk : kFindings;
}

} // namespace

void AddDiffCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<DiffArguments>();
    Command command = app.Add("diff", context.Say(texts::kHelpDiff));
    command.Option("BEFORE", arguments->before, context.Say(texts::kHelpDiffBefore))
        .Required()
        .Value("");
    command.Option("AFTER", arguments->after, context.Say(texts::kHelpDiffAfter))
        .Required()
        .Value("");
    command.Option("--instrument", arguments->instrument, context.Say(texts::kHelpDiffInstrument))
        .Value("NAME");
    command.Flag("--json", arguments->json, context.Say(texts::kHelpDiffJson));
    arguments->reading.AddTo(command, context);
    command.Runs([&context, arguments] { return Compare(context, *arguments); });
}

} // namespace tracksmith::cli
