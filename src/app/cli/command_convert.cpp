#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>
#include <thread>
#include <utility>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "app/cli/commands.h"
#include "app/cli/info_json.h"
#include "app/cli/instrument_choice.h"
#include "app/cli/reading_options.h"
#include "app/cli/revoice_table_file.h"
#include "app/cli/song_input.h"
#include "app/cli/texts.h"
#include "app/cli/user_settings.h"
#include "app/output_names.h"
#include "app/prepare_song.h"
#include "app/revoice.h"
#include "app/save_song.h"
#include "instruments/instrument_settings.h"

namespace tracksmith::cli {
namespace {

namespace fs = std::filesystem;

constexpr int kMostJobs = 64;

struct ConvertArguments {
    std::vector<std::string> files;
    std::string format;
    std::string out;
    std::string instrument;
    std::size_t jobs = std::max(std::thread::hardware_concurrency(), 1U);
    std::optional<std::int32_t> sysexTrack;
    bool gmBeforeGs = false;
    bool withSettings = false;
    bool runningStatus = false;
    bool omitPortEvents = false;
    bool split = false;
    bool inPlace = false;
    std::string leadIn;
    std::string revoice;
    bool skipDone = false;
    bool dryRun = false;
    bool json = false;
    ReadingOptions reading;

    bool ToStandardOutput() const {
        return out == "-" || (out.empty() && !inPlace && files == std::vector<std::string>{"-"});
    }
};

/// One run of `convert`.
class Conversion {
public:
    Conversion(CliContext& context, const ConvertArguments& arguments)
        : context_(context), arguments_(arguments), batch_(context) {}

    int Run() {
        const std::vector<InputFile>& inputs = batch_.Expand(arguments_.files);
        if (const Text* fault = FaultOf(inputs)) {
            context_.log << context_.Say(*fault) << "\n";
            return kUsage;
        }
        if (!arguments_.instrument.empty()) {
            instrument_ = ChooseInstrument(context_, arguments_.instrument);
            if (instrument_ == nullptr) {
                return kUsage;
            }
            stored_ = StoredOptions();
        }
        if (!arguments_.revoice.empty()) {
            auto entries = ReadRevoiceTable(context_, arguments_.revoice);
            if (!entries) {
                return kUnreadable;
            }
            revoicing_ = std::move(*entries);
        }
        NameTargets(inputs);
        batch_.SetUp([this](session::WorkOptions& options) { SetUp(options); });
        if (arguments_.skipDone) {
            batch_.SetDone([this](const InputFile& input, std::size_t index) {
                return IsDone(input, targets_[index].path);
            });
        }
        batch_.SetJobs(inputs.size() > 1 ? arguments_.jobs : 1);
        return batch_.Run([this](SongJob& job) { return Convert(job); });
    }

private:
    // Before the work, so that the names do not depend on who is ready first.
    void NameTargets(const std::vector<InputFile>& inputs) {
        app::OutputNames names(PathOf(arguments_.out), PathsOf(inputs));
        for (const InputFile& input : inputs) {
            const fs::path target = arguments_.inPlace ? input.path : names.Next(input.relative);
            targets_.push_back({target, !arguments_.inPlace && names.IsInput(target)});
        }
    }

    // Read once, as every reading opens the settings.
    instruments::SysexOptions StoredOptions() const {
        if (!arguments_.withSettings) {
            return {};
        }
        settings::SettingsStore store = OpenSettings(context_);
        return instruments::InstrumentSettings(store).ReadOptions(instrument_->name);
    }

    void SetUp(session::WorkOptions& options) const {
        arguments_.reading.SetUp(options);
        options.decodeOptions.splitFormat0 = arguments_.split;
        options.encodeOptions.useRunningStatus = arguments_.runningStatus;
        options.encodeOptions.omitPortEvents = arguments_.omitPortEvents;
        instruments::SysexOptions& sysex = options.sysexOptions;
        sysex = stored_;
        sysex.automatic = instrument_ != nullptr && arguments_.leadIn.empty();
        sysex.gmBeforeGs |= arguments_.gmBeforeGs;
        sysex.fixedTrack |= arguments_.sysexTrack.has_value();
        sysex.defaultTrack = arguments_.sysexTrack.value_or(sysex.defaultTrack + 1) - 1;
        if (instrument_ != nullptr) {
            options.outputs.outputs.front().SetName(instrument_->name);
        }
    }

    /// What is wrong with the combination of arguments; null when nothing is.
    const Text* FaultOf(const std::vector<InputFile>& inputs) const {
        if (!arguments_.leadIn.empty() && arguments_.instrument.empty()) {
            return &texts::kLeadInAlone;
        }
        if (!arguments_.revoice.empty() && arguments_.instrument.empty()) {
            return &texts::kRevoiceAlone;
        }
        if (arguments_.withSettings && arguments_.instrument.empty()) {
            return &texts::kWithSettingsAlone;
        }
        if (arguments_.skipDone && (arguments_.out.empty() || arguments_.ToStandardOutput())) {
            return &texts::kSkipDoneNeedsOut;
        }
        if (arguments_.inPlace && !arguments_.out.empty()) {
            return &texts::kOutAndInPlace;
        }
        if (arguments_.out.empty() && !arguments_.inPlace && !arguments_.ToStandardOutput()) {
            return &texts::kNoOutput;
        }
        if (arguments_.ToStandardOutput() && inputs.size() > 1) {
            return &texts::kOneToStandardOutput;
        }
        for (const InputFile& input : inputs) {
            if (arguments_.inPlace && input.standardInput) {
                return &texts::kStandardInputInPlace;
            }
        }
        return nullptr;
    }

    int Convert(SongJob& job) const {
        if (!arguments_.leadIn.empty() && instrument_ != nullptr &&
            app::PrepareSongWithLeadIn(job.session, job.host) && !context_.quiet) {
            job.context.log << job.input.Name() << ": " << context_.Say(texts::kLeadIn) << "\n";
        }
        LogChanges(job.context, job.input, job.session.Work());
        const bool stopped = Revoice(job);
        const std::span<const std::uint8_t> bytes =
            app::EncodeSong(job.session, Format(), job.host);
        if (arguments_.ToStandardOutput()) {
            if (!arguments_.dryRun) {
                job.context.out.write(reinterpret_cast<const char*>(bytes.data()),
                                      static_cast<std::streamsize>(bytes.size()));
            }
            return stopped ? kFindings : kOk;
        }
        const Target& target = targets_[job.index];
        if (target.isInput) {
            job.host.ShowMessage(context_.Say(texts::kWouldOverwriteInput) + Shown(target.path));
            return kWriteFailed;
        }
        const int code = Store(job, target.path, bytes);
        return code == kOk && stopped ? kFindings : code;
    }

    // True where a missing bank select has ended it early.
    bool Revoice(SongJob& job) const {
        if (arguments_.revoice.empty()) {
            return false;
        }
        const auto plan = app::RevoiceSong(job.session, revoicing_, job.host);
        if (!context_.quiet) {
            job.context.log << job.input.Name() << ": "
                            << texts::RevoicingCounts(context_.language, plan.changes.size(),
                                                      plan.programChanges, plan.withoutBank,
                                                      plan.sharingBank)
                            << "\n";
        }
        return plan.missingLsb.has_value();
    }

    int Store(SongJob& job, const fs::path& target, std::span<const std::uint8_t> bytes) const {
        if (!arguments_.dryRun) {
            if (!arguments_.inPlace && !app::ConfirmOverwrite(target, job.host)) {
                return kWriteFailed;
            }
            app::WriteResult(target, bytes, job.host);
        }
        if (arguments_.json) {
            job.context.out << ConversionJson(job.input.ExactName(), system::PathText(target),
                                              job.session.Work().preparation)
                            << "\n";
        } else {
            job.context.out << job.input.Name() << " -> " << Shown(target) << "\n";
        }
        return kOk;
    }

    struct Target {
        fs::path path;
        bool isInput = false;
    };

    static std::string Shown(const fs::path& path) { return DisplayPath(system::PathText(path)); }

    app::SaveFormat Format() const {
        if (arguments_.format.empty()) {
            return app::SaveFormat::AsSong;
        }
        return arguments_.format == "0" ? app::SaveFormat::Format0 : app::SaveFormat::Format1;
    }

    CliContext& context_;
    const ConvertArguments& arguments_;
    SongBatch batch_;
    const instruments::Instrument* instrument_ = nullptr;
    instruments::SysexOptions stored_; // what the user has chosen for the instrument
    std::vector<instruments::RevoiceEntry> revoicing_;
    std::vector<Target> targets_;
};

} // namespace

void AddConvertCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<ConvertArguments>();
    Command command = app.Add("convert", context.Say(texts::kHelpConvert));
    command.Option("FILE", arguments->files, context.Say(texts::kHelpFiles)).Required().Value("");
    command.Option("--format", arguments->format, context.Say(texts::kHelpFormat))
        .Value("0|1")
        .Check([](const std::string& value) {
            return value == "0" || value == "1" ? std::string() : "--format: 0, 1";
        });
    command.Option("-o,--out", arguments->out, context.Say(texts::kHelpOutFolder)).Value("DIR");
    command.Flag("--skip-done", arguments->skipDone, context.Say(texts::kHelpSkipDone));
    command.Option("--instrument", arguments->instrument, context.Say(texts::kHelpInstrument))
        .Value("NAME");
    command.Flag("--with-settings", arguments->withSettings, context.Say(texts::kHelpWithSettings));
    command.Flag("--gm-before-gs", arguments->gmBeforeGs, context.Say(texts::kHelpGmBeforeGs));
    command.Option("--sysex-track", arguments->sysexTrack, context.Say(texts::kHelpSysexTrack))
        .Value("N")
        .Between(1, instruments::kMostSysexTrack + 1);
    command.Option("--lead-in", arguments->leadIn, context.Say(texts::kHelpLeadIn))
        .Value("auto")
        .Check([](const std::string& value) {
            return value == "auto" ? std::string() : "--lead-in: auto";
        });
    command.Option("--revoice", arguments->revoice, context.Say(texts::kHelpConvertRevoice))
        .Value("FILE");
    command.Option("-j,--jobs", arguments->jobs, context.Say(texts::kHelpJobs))
        .Value("N")
        .Between(1, kMostJobs);
    command.Flag("--in-place", arguments->inPlace, context.Say(texts::kHelpInPlace));
    command.Flag("--running-status", arguments->runningStatus,
                 context.Say(texts::kHelpRunningStatus));
    command.Flag("--omit-port-events", arguments->omitPortEvents,
                 context.Say(texts::kHelpOmitPorts));
    command.Flag("--split", arguments->split, context.Say(texts::kHelpSplit));
    command.Flag("--json", arguments->json, context.Say(texts::kHelpConvertJson));
    command.Flag("-n,--dry-run", arguments->dryRun, context.Say(texts::kHelpDryRun));
    arguments->reading.AddTo(command, context);
    arguments->reading.AddNoteLengthTo(command, context);
    command.Runs([&context, arguments] { return Conversion(context, *arguments).Run(); });
}

} // namespace tracksmith::cli
