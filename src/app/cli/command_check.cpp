#include <algorithm>
#include <atomic>
#include <filesystem>
#include <memory>
#include <ostream>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "app/cli/columns.h"
#include "app/cli/commands.h"
#include "app/cli/info_json.h"
#include "app/cli/instrument_choice.h"
#include "app/cli/reading_options.h"
#include "app/cli/song_input.h"
#include "app/cli/texts.h"
#include "app/health/repair.h"
#include "app/note_report.h"
#include "app/output_names.h"
#include "app/save_song.h"
#include "song/song_position.h"

namespace tracksmith::cli {
namespace {

namespace fs = std::filesystem;

struct CheckArguments {
    std::vector<std::string> files;
    std::string instrument;
    std::string out;
    std::string report;
    bool repair = false;
    bool skipDone = false;
    bool strict = false;
    bool json = false;
    ReadingOptions reading;
};

/// One run of `check`.
class Check {
public:
    Check(CliContext& context, const CheckArguments& arguments)
        : context_(context), arguments_(arguments), batch_(context) {}

    int Run() {
        if (arguments_.repair == arguments_.out.empty()) {
            context_.log << context_.Say(texts::kRepairNeedsOut) << "\n";
            return kUsage;
        }
        if (arguments_.skipDone && !arguments_.repair) {
            context_.log << context_.Say(texts::kSkipDoneNeedsOut) << "\n";
            return kUsage;
        }
        if (!arguments_.instrument.empty()) {
            const auto* instrument = ChooseInstrument(context_, arguments_.instrument);
            if (instrument == nullptr) {
                return kUsage;
            }
            instrument_ = instrument->name;
            options_.instrument = instrument->id;
            options_.voices = context_.voices;
        }
        NameFiles(batch_.Expand(arguments_.files));
        if (arguments_.skipDone) {
            batch_.SetDone([this](const InputFile& input, std::size_t index) {
                return IsDone(input, targets_[index].song);
            });
        }
        batch_.SetUp([&](session::WorkOptions& options) { arguments_.reading.SetUp(options); });
        const int code = batch_.Run([this](SongJob& job) { return Examine(job); },
                                    [this](CliContext& sink, const InputFailure& failure) {
                                        if (arguments_.json) {
                                            sink.out << InfoFailureJson(failure, sink.language)
                                                     << "\n";
                                        }
                                    });
        return code == kOk && found_ ? kFindings : code;
    }

private:
    struct Target {
        fs::path song;
        fs::path report;
        bool isInput = false;
    };

    void NameFiles(const std::vector<InputFile>& inputs) {
        app::OutputNames songs(PathOf(arguments_.out), PathsOf(inputs));
        app::OutputNames reports(PathOf(arguments_.report), PathsOf(inputs));
        for (const InputFile& input : inputs) {
            const fs::path song = songs.Next(input.relative);
            const fs::path report = reports.Next(input.relative);
            targets_.push_back(
                {song, app::NoteReportFile(report.parent_path(), report), songs.IsInput(song)});
        }
    }

    int Examine(SongJob& job) {
        const Target& target = targets_[job.index];
        if (!arguments_.report.empty()) {
            app::WriteNoteReport(job.session.Work(), target.report, job.host);
        }
        health::HealthReport report = health::CheckHealth(job.session.Work(), options_);
        Show(job, report);
        if (arguments_.repair) {
            if (target.isInput) {
                job.host.ShowMessage(context_.Say(texts::kWouldOverwriteInput) +
                                     DisplayPath(system::PathText(target.song)));
                return kWriteFailed;
            }
            health::RepairAll(job.session, options_, job.host);
            report = health::CheckHealth(job.session.Work(), options_);
            if (const int code = Store(job, target.song); code != kOk) {
                return code;
            }
        }
        // What a repair leaves counts.
        const auto fatal =
            report.counts[0] + report.counts[1] + (arguments_.strict ? report.counts[2] : 0);
        found_ = found_ || fatal > 0;
        return kOk;
    }

    int Store(SongJob& job, const fs::path& target) const {
        if (!app::ConfirmOverwrite(target, job.host)) {
            return kWriteFailed;
        }
        app::WriteResult(target, app::EncodeSong(job.session, app::SaveFormat::AsSong, job.host),
                         job.host);
        if (!context_.quiet) {
            job.context.log << job.input.Name() << " -> " << DisplayPath(system::PathText(target))
                            << "\n";
        }
        return kOk;
    }

    void Show(SongJob& job, const health::HealthReport& report) const {
        const song::Song& song = job.session.Song();
        std::ostream& out = job.context.out;
        if (arguments_.json) {
            out << CheckJson(job.input.ExactName(), song, report, instrument_, context_.language)
                << "\n";
            return;
        }
        out << job.input.Name() << ": " << texts::FindingCounts(context_.language, report.counts)
            << "\n";
        for (const health::Finding& finding : report.findings) {
            constexpr std::size_t kSeverityWidth = 8;
            const bool all = finding.channel == health::kAllChannels;
            out << "  "
                << Left(context_.Say(health::SeverityText(finding.severity)), kSeverityWidth)
                << Right(all ? "-" : std::to_string(finding.channel + 1), 3) << "  "
                << Left(finding.ticks.empty()
                            ? "-"
                            : song::SongPositionToMTC(song, finding.ticks.front()),
                        static_cast<std::size_t>(song.positionWidth))
                << "  " << health::Title(finding, instrument_, context_.language)
                << (finding.count > 1 ? " (" + std::to_string(finding.count) + ")" : "") << "\n";
        }
    }

    CliContext& context_;
    const CheckArguments& arguments_;
    SongBatch batch_;
    health::HealthOptions options_;
    std::string instrument_;
    std::vector<Target> targets_;
    std::atomic<bool> found_ = false;
};

} // namespace

void AddCheckCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<CheckArguments>();
    Command command = app.Add("check", context.Say(texts::kHelpCheck));
    command.Option("FILE", arguments->files, context.Say(texts::kHelpFiles)).Required().Value("");
    command.Option("--instrument", arguments->instrument, context.Say(texts::kHelpCheckFor))
        .Value("NAME");
    command.Flag("--repair", arguments->repair, context.Say(texts::kHelpRepair));
    command.Option("-o,--out", arguments->out, context.Say(texts::kHelpRepairOut)).Value("DIR");
    command.Flag("--skip-done", arguments->skipDone, context.Say(texts::kHelpSkipDone));
    command.Flag("--strict", arguments->strict, context.Say(texts::kHelpStrict));
    command.Option("--report", arguments->report, context.Say(texts::kHelpReport)).Value("DIR");
    command.Flag("--json", arguments->json, context.Say(texts::kHelpJson));
    arguments->reading.AddTo(command, context);
    command.Runs([&context, arguments] { return Check(context, *arguments).Run(); });
}

} // namespace tracksmith::cli
