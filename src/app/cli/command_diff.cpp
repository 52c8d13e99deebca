#include <memory>
#include <ostream>
#include <string>

#include "app/cli/commands.h"
#include "app/cli/diff_texts.h"
#include "app/cli/info_json.h"
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

int Compare(CliContext& context, const DiffArguments& arguments) {
    LoadedSong before;
    LoadedSong after;
    if (const int code = Load(context, arguments, arguments.before, before); code != kOk) {
        return code;
    }
    if (const int code = Load(context, arguments, arguments.after, after); code != kOk) {
        return code;
    }
    const diff::Differences differences = diff::CompareSongs(before.song, after.song);
    if (arguments.json) {
        context.out << diff::DifferencesJson(differences, before.song, after.song, before.name,
                                             after.name, context.language)
                    << "\n";
    } else if (!differences.Same() || !context.quiet) {
        context.out << diff::DifferencesText(differences, before.song, after.song,
                                             context.language);
    }
    return differences.Same() ? kOk : kFindings;
}

} // namespace

void AddDiffCommand(CLI::App& app, CliContext& context) {
    const auto arguments = std::make_shared<DiffArguments>();
    CLI::App* command = app.add_subcommand("diff", context.Say(texts::kHelpDiff));
    command->add_option("BEFORE", arguments->before, context.Say(texts::kHelpDiffBefore))
        ->required()
        ->type_name("");
    command->add_option("AFTER", arguments->after, context.Say(texts::kHelpDiffAfter))
        ->required()
        ->type_name("");
    command->add_flag("--json", arguments->json, context.Say(texts::kHelpDiffJson));
    arguments->reading.AddTo(*command, context);
    command->callback([&context, arguments] {
        context.run = [&context, arguments] { return Compare(context, *arguments); };
    });
}

} // namespace tracksmith::cli
