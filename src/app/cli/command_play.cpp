#include <memory>
#include <ostream>

#include "app/cli/commands.h"
#include "app/cli/play_session.h"
#include "app/cli/play_wishes.h"
#include "app/cli/reading_options.h"
#include "app/cli/song_input.h"
#include "app/cli/texts.h"
#include "app/devices/synth_device.h"

namespace tracksmith::cli {
namespace {

struct PlayArguments {
    std::string file;
    std::string port;
    std::string from;
    std::string to;
    std::string tempo;
    std::string soundfont;
    bool loop = false;
    ReadingOptions reading;
};

/// The arguments as a plan for one song; nothing when they do not fit it, which is logged.
class PlanMaker {
public:
    PlanMaker(const CliContext& context, const PlayArguments& arguments, const song::TimeMap& map)
        : context_(context), arguments_(arguments), map_(map) {}

    std::optional<PlayPlan> Make() const {
        PlayPlan plan;
        plan.port = arguments_.port;
        plan.loop = arguments_.loop;
        return SetRange(plan) && SetTempo(plan) ? std::optional(plan) : std::nullopt;
    }

private:
    bool SetRange(PlayPlan& plan) const {
        const std::optional<std::int32_t> from = Tick("--from", arguments_.from, 0);
        const std::optional<std::int32_t> to = Tick("--to", arguments_.to, map_.songLength);
        if (!from || !to) {
            return false;
        }
        if (*from >= map_.songLength) {
            return Refuse("--from", texts::kBehindEnd);
        }
        if (*from >= *to) {
            return Refuse("--to", texts::kNotBehindStart);
        }
        plan.fromTick = *from;
        if (*to < map_.songLength) {
            plan.toTick = to;
        }
        return true;
    }

    bool SetTempo(PlayPlan& plan) const {
        const std::optional<TempoWish> wish = ParseTempo(arguments_.tempo);
        const std::optional<std::int32_t> offset = TempoOffset(map_, wish.value_or(TempoWish()));
        plan.tempoOffset = offset.value_or(0);
        return offset || Refuse("--tempo", texts::kTempoOutOfRange);
    }

    std::optional<std::int32_t> Tick(const char* option, const std::string& text,
                                     std::int32_t usual) const {
        if (text.empty()) {
            return usual;
        }
        const std::optional<std::int32_t> tick = TickOfPlace(map_, *ParsePlace(text));
        if (!tick) {
            Refuse(option, texts::kNoSuchPlace);
        }
        return tick;
    }

    bool Refuse(const char* option, const Text& reason) const {
        context_.log << context_.Say(texts::kUsageError) << option << ": " << context_.Say(reason)
                     << "\n";
        return false;
    }

    const CliContext& context_;
    const PlayArguments& arguments_;
    const song::TimeMap& map_;
};

int PlayInput(CliContext& context, const PlayArguments& arguments, const InputFile& input,
              session::Session& session, MessageHost& host) {
    LogChanges(context, input, session.Work());
    const std::optional<PlayPlan> plan = PlanMaker(context, arguments, session.Song()).Make();
    if (!plan) {
        return kUsage;
    }
    devices::SynthOptions options;
    options.soundfont = PathOf(arguments.soundfont);
    const std::unique_ptr<devices::MidiDevices> devices = context.openDevices(options);
    if (!arguments.soundfont.empty() && devices->Synth() == nullptr) {
        host.ShowMessage(context.Say(texts::kNoInstrument));
        return kPortOrAudioMissing;
    }
    return PlaySong(context, *plan, *devices, session, host);
}

int RunPlay(CliContext& context, const PlayArguments& arguments) {
    SongBatch batch(context);
    if (batch.Expand({arguments.file}).size() > 1) {
        context.log << context.Say(texts::kOneSong) << "\n";
        return kUsage;
    }
    batch.SetUp([&](session::WorkOptions& options) { arguments.reading.SetUp(options); });
    return batch.Run([&](SongJob& job) {
        return PlayInput(context, arguments, job.input, job.session, job.host);
    });
}

void AddPlaceOption(Command& command, const CliContext& context, const char* name,
                    std::string& place, const Text& help) {
    command.Option(name, place, context.Say(help))
        .Value("M:B")
        .Check([&context](const std::string& value) {
            return ParsePlace(value) ? std::string() : context.Say(texts::kNoPlace);
        });
}

} // namespace

void AddPlayCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<PlayArguments>();
    Command command = app.Add("play", context.Say(texts::kHelpPlay));
    command.Option("FILE", arguments->file, context.Say(texts::kHelpFile)).Required().Value("");
    command.Option("--port", arguments->port, context.Say(texts::kHelpPort)).Value("NAME");
    AddPlaceOption(command, context, "--from", arguments->from, texts::kHelpFrom);
    AddPlaceOption(command, context, "--to", arguments->to, texts::kHelpTo);
    command.Flag("--loop", arguments->loop, context.Say(texts::kHelpLoop));
    command.Option("--tempo", arguments->tempo, context.Say(texts::kHelpTempo))
        .Value("TEMPO")
        .Check([&context](const std::string& value) {
            return ParseTempo(value) ? std::string() : context.Say(texts::kNoTempo);
        });
    const Text& soundfontHelp =
        devices::HasSynthDevice() ? texts::kHelpSoundfont : texts::kHelpNotContained;
    command.Option("--soundfont", arguments->soundfont, context.Say(soundfontHelp)).Value("SF2");
    arguments->reading.AddTo(command, context);
    arguments->reading.AddNoteLengthTo(command, context);
    command.Runs([&context, arguments] { return RunPlay(context, *arguments); });
}

} // namespace tracksmith::cli
