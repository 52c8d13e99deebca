#include <array>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "base/display_text.h"
#include "base/errors.h"
#include "base/system/file_io.h"

#include "app/cli/commands.h"
#include "app/cli/instrument_choice.h"
#include "app/cli/reading_options.h"
#include "app/cli/song_input.h"
#include "app/cli/song_target.h"
#include "app/cli/texts.h"
#include "editing/range_figures.h"
#include "editing/range_tools.h"
#include "instruments/voices/voice_lookup.h"
#include "song/note_balance.h"

namespace tracksmith::cli {
namespace {

using editing::RangeTool;

struct RangeArguments {
    RangeTool tool = RangeTool::Delete;
    const char* name = "";
    std::string file;
    std::string from;
    std::string to;
    std::string destination;
    std::string semitones;
    std::optional<int> channel;
    std::string instrument;
    SongTarget target;
    bool noState = false;
    bool json = false;
    ReadingOptions reading;
};

/// What a tool has done.
struct Outcome {
    editing::RangeFigures figures;
    editing::SeamReport seams;
    std::int64_t moved = 0;
};

/// One run of `range`.
class RangeRun {
public:
    RangeRun(CliContext& context, const RangeArguments& arguments)
        : context_(context), arguments_(arguments), batch_(context) {}

    int Run() {
        const std::vector<InputFile>& inputs = batch_.Expand({arguments_.file});
        if (const int fault = CheckArguments(inputs); fault != kOk) {
            return fault;
        }
        batch_.SetUp([this](session::WorkOptions& options) { arguments_.reading.SetUp(options); });
        return batch_.Run([this](SongJob& job) { return Edit(job); });
    }

private:
    int Complain(const Text& text) const {
        context_.log << context_.Say(text) << "\n";
        return kUsage;
    }

    int CheckArguments(const std::vector<InputFile>& inputs) {
        if (const int fault = arguments_.target.Check(context_, inputs); fault != kOk) {
            return fault;
        }
        if (arguments_.channel == static_cast<int>(song::kDrumChannel) + 1) {
            return Complain(texts::kDrumsStay);
        }
        if (!arguments_.instrument.empty()) {
            instrument_ = ChooseInstrument(context_, arguments_.instrument);
            return instrument_ == nullptr ? kUsage : kOk;
        }
        return kOk;
    }

    editing::RangeWish Wish() const {
        return {arguments_.tool, editing::SplitPosition(arguments_.from),
                editing::SplitPosition(arguments_.to),
                editing::SplitPosition(arguments_.destination)};
    }

    int Edit(SongJob& job) const {
        const editing::RangeReading reading =
            editing::ReadRange(job.session.Song(), Wish(), context_.language);
        if (!reading.fault.empty()) {
            job.host.ShowMessage(reading.fault);
            return kUsage;
        }
        Outcome outcome;
        outcome.figures = editing::CountRange(job.session.Song(), reading.range);
        try {
            RunTool(job, outcome);
        } catch (const EMidiError&) {
            return kFindings; // the tool has said why it does not
        }
        return Store(job, outcome);
    }

    void RunTool(SongJob& job, Outcome& outcome) const {
        editing::Undo undo(job.session);
        editing::RangeTools tools(job.session, undo, job.host);
        switch (arguments_.tool) {
            case RangeTool::Delete:
                outcome.seams = tools.Delete(Wish());
                break;
            case RangeTool::Copy:
                outcome.seams = tools.Copy(Wish(), !arguments_.noState);
                break;
            case RangeTool::Transpose:
                outcome.moved = tools.Transpose(Wish(), Transposing());
        }
    }

    editing::Transposing Transposing() const {
        editing::Transposing transposing;
        transposing.semitones = arguments_.semitones;
        if (arguments_.channel) {
            transposing.channel = static_cast<std::size_t>(*arguments_.channel - 1);
        }
        if (instrument_ != nullptr) {
            transposing.isMegaVoice = [this](const instruments::VoiceNumbers& numbers) {
                const auto found =
                    instruments::FindVoice(*context_.voices, instrument_->id, false, numbers);
                return found.voice != nullptr &&
                       std::string_view(found.voice->name).find("MegaVoice") !=
                           std::string_view::npos;
            };
        }
        return transposing;
    }

    int Store(SongJob& job, const Outcome& outcome) const {
        const auto target = arguments_.target.PathFor(job.input);
        if (const int code = arguments_.target.Store(job); code != kOk) {
            return code;
        }
        const std::string out = DisplayPath(system::PathText(target));
        if (arguments_.json) {
            WriteJson(job, outcome, out);
        } else {
            job.context.out << job.input.Name() << " -> " << out << "\n";
            LogFigures(job, outcome);
        }
        return kOk;
    }

    void LogFigures(SongJob& job, const Outcome& outcome) const {
        if (context_.quiet) {
            return;
        }
        const Language language = context_.language;
        job.context.log << texts::RangeDone(language, outcome.figures.measures,
                                            arguments_.tool == RangeTool::Transpose
                                                ? outcome.moved
                                                : outcome.figures.notes)
                        << "\n";
        if (arguments_.tool != RangeTool::Transpose) {
            job.context.log << texts::SeamsDone(language, outcome.seams.closed,
                                                outcome.seams.begunAgain, outcome.seams.carried)
                            << "\n";
        }
        if (!outcome.seams.balance.Balanced()) {
            job.context.log << song::BalanceText(job.session.Song(), outcome.seams.balance,
                                                 language);
        }
        const std::int64_t messages =
            outcome.figures.drumMessages + outcome.figures.instrumentMessages;
        if (arguments_.tool == RangeTool::Delete && messages > 0) {
            job.context.log << texts::MessagesGone(language, messages) << "\n";
        }
    }

    void WriteJson(SongJob& job, const Outcome& outcome, const std::string& out) const {
        const nlohmann::ordered_json object{
            {"schema", 1},
            {"file", job.input.Name()},
            {"out", out},
            {"tool", arguments_.name},
            {"measures", outcome.figures.measures},
            {"lengthMs", outcome.figures.lengthMs},
            {"notes", outcome.figures.notes},
            {"moved", outcome.moved},
            {"drumMessages", outcome.figures.drumMessages},
            {"instrumentMessages", outcome.figures.instrumentMessages},
            {"notesEnded", outcome.seams.closed},
            {"notesBegunAgain", outcome.seams.begunAgain},
            {"settingsCarried", outcome.seams.carried},
            {"songLength", job.session.Song().songLength}};
        job.context.out << object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace)
                        << "\n";
    }

    CliContext& context_;
    const RangeArguments& arguments_;
    SongBatch batch_;
    const instruments::Instrument* instrument_ = nullptr;
};

void AddPosition(Command& command, const char* name, std::string& value, const std::string& help) {
    command.Option(name, value, help).Value("M:B").Required();
}

void AddTool(Command& range, CliContext& context, RangeTool tool, const char* name,
             const Text& help) {
    const auto arguments = std::make_shared<RangeArguments>();
    arguments->tool = tool;
    arguments->name = name;
    Command command = range.Add(name, context.Say(help));
    command.Option("FILE", arguments->file, context.Say(texts::kHelpFile)).Required().Value("");
    AddPosition(command, "--from", arguments->from, context.Say(texts::kHelpFrom));
    AddPosition(command, "--to", arguments->to, context.Say(texts::kHelpTo));
    if (tool == RangeTool::Copy) {
        AddPosition(command, "--dest", arguments->destination, context.Say(texts::kHelpDest));
        command.Flag("--no-state", arguments->noState, context.Say(texts::kHelpNoState));
    } else if (tool == RangeTool::Transpose) {
        command.Option("--semitones", arguments->semitones, context.Say(texts::kHelpSetTranspose))
            .Value("N")
            .Required();
        command.Option("-c,--channel", arguments->channel, context.Say(texts::kHelpOnlyChannel))
            .Value("1-16")
            .Between(1, 16);
        command.Option("--instrument", arguments->instrument, context.Say(texts::kHelpMegaVoices))
            .Value("NAME");
    }
    arguments->target.AddTo(command, context);
    command.Flag("--json", arguments->json, context.Say(texts::kHelpRangeJson));
    arguments->reading.AddTo(command, context);
    command.Runs([&context, arguments] { return RangeRun(context, *arguments).Run(); });
}

} // namespace

void AddRangeCommand(Command& app, CliContext& context) {
    Command range = app.Add("range", context.Say(texts::kHelpRange));
    range.NeedsCommand();
    AddTool(range, context, RangeTool::Delete, "delete", texts::kHelpRangeDelete);
    AddTool(range, context, RangeTool::Copy, "copy", texts::kHelpRangeCopy);
    AddTool(range, context, RangeTool::Transpose, "transpose", texts::kHelpRangeTranspose);
}

} // namespace tracksmith::cli
