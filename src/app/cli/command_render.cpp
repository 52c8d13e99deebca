#include <cmath>
#include <limits>
#include <memory>
#include <ostream>

#include "audio/audio_error.h"
#include "audio/render_song.h"
#include "base/display_text.h"
#include "base/system/file_io.h"
#include "base/system/interrupt.h"

#include "app/cli/commands.h"
#include "app/cli/reading_options.h"
#include "app/cli/song_input.h"
#include "app/cli/terminal_line.h"
#include "app/cli/texts.h"
#include "app/output_names.h"
#include "app/save_song.h"

namespace tracksmith::cli {
namespace {

struct RenderArguments {
    std::string file;
    std::string out;
    std::string soundfont;
    ReadingOptions reading;
};

audio::RenderResult Render(const CliContext& context, const RenderArguments& arguments,
                           const session::Workspace& workspace) {
    const system::InterruptWatch watch;
    TerminalLine progress(context);
    audio::RenderOptions options;
    options.soundfont = PathOf(arguments.soundfont);
    return audio::RenderSong(workspace.song, PathOf(arguments.out), options,
                             [&](std::int64_t done, std::int64_t total) {
                                 const std::int64_t percent = total > 0 ? done * 100 / total : 100;
                                 progress.Show(std::to_string(percent) + " %");
                                 return !system::InterruptWatch::Requested();
                             });
}

int RenderInput(CliContext& context, const RenderArguments& arguments, const InputFile& input,
                const session::Workspace& workspace, MessageHost& host) {
    LogChanges(context, input, workspace);
    if (!app::ConfirmOverwrite(PathOf(arguments.out), host)) {
        return kWriteFailed;
    }
    try {
        const audio::RenderResult result = Render(context, arguments, workspace);
        if (result.cancelled) {
            host.ShowMessage(context.Say(texts::kCancelled));
            return kWriteFailed;
        }
        const double peakDb = result.peak > 0 ? 20 * std::log10(double{result.peak})
                                              : -std::numeric_limits<double>::infinity();
        context.out << input.Name() << " -> "
                    << texts::Rendered(context.language, DisplayPath(arguments.out),
                                       result.lengthMs, peakDb, result.limitedSamples)
                    << "\n";
        return kOk;
    } catch (const audio::EAudioError& error) {
        host.ShowMessage(error.In(context.language));
        return error.Fault() == audio::AudioFault::NoInstrument ? kPortOrAudioMissing
                                                                : kWriteFailed;
    }
}

int RunRender(CliContext& context, const RenderArguments& arguments) {
    SongBatch batch(context);
    const std::vector<InputFile>& inputs = batch.Expand({arguments.file});
    if (inputs.size() > 1) {
        context.log << context.Say(texts::kOneSong) << "\n";
        return kUsage;
    }
    if (app::OutputNames({}, PathsOf(inputs)).IsInput(PathOf(arguments.out))) {
        context.log << context.Say(texts::kWouldOverwriteInput) << DisplayPath(arguments.out)
                    << "\n";
        return kWriteFailed;
    }
    batch.SetUp([&](session::WorkOptions& options) { arguments.reading.SetUp(options); });
    return batch.Run([&](SongJob& job) {
        return RenderInput(context, arguments, job.input, job.session.Work(), job.host);
    });
}

} // namespace

void AddRenderCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<RenderArguments>();
    Command command = app.Add("render", context.Say(texts::kHelpRender));
    command.Option("FILE", arguments->file, context.Say(texts::kHelpFile)).Required().Value("");
    command.Option("-o,--out", arguments->out, context.Say(texts::kHelpOutWav))
        .Value("WAV")
        .Required();
    command.Option("--soundfont", arguments->soundfont, context.Say(texts::kHelpSoundfont))
        .Value("SF2");
    arguments->reading.AddTo(command, context);
    arguments->reading.AddNoteLengthTo(command, context);
    command.Runs([&context, arguments] { return RunRender(context, *arguments); });
}

} // namespace tracksmith::cli
