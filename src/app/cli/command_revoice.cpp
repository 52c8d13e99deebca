#include <filesystem>
#include <memory>
#include <ostream>
#include <span>
#include <utility>
#include <vector>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "app/cli/columns.h"
#include "app/cli/commands.h"
#include "app/cli/instrument_choice.h"
#include "app/cli/reading_options.h"
#include "app/cli/revoice_table_file.h"
#include "app/cli/song_input.h"
#include "app/cli/texts.h"
#include "app/output_names.h"
#include "app/revoice.h"
#include "app/save_song.h"
#include "song/song_position.h"

namespace tracksmith::cli {
namespace {

namespace fs = std::filesystem;
using instruments::VoiceNumbers;

constexpr std::size_t kSuggested = 3;

struct RevoiceArguments {
    std::vector<std::string> files;
    std::string instrument;
    std::string table;
    std::string out;
    bool suggest = false;
    bool addBanks = false;
    bool skipDone = false;
    bool dryRun = false;
    ReadingOptions reading;
};

// "104/1/25": the program as people count it.
std::string NumbersText(VoiceNumbers numbers) {
    return std::to_string(numbers.msb) + "/" + std::to_string(numbers.lsb) + "/" +
           std::to_string(numbers.program + 1);
}

/// One run of `revoice`.
class RevoiceRun {
public:
    RevoiceRun(CliContext& context, const RevoiceArguments& arguments)
        : context_(context), arguments_(arguments), batch_(context) {}

    int Run() {
        if (arguments_.table.empty() == !arguments_.suggest) {
            return Complain(texts::kTableOrSuggest);
        }
        if (arguments_.out.empty() && !arguments_.dryRun) {
            return Complain(texts::kNoOutput);
        }
        if (arguments_.skipDone && arguments_.out.empty()) {
            return Complain(texts::kSkipDoneNeedsOut);
        }
        instrument_ = ChooseInstrument(context_, arguments_.instrument);
        if (instrument_ == nullptr) {
            return kUsage;
        }
        if (arguments_.suggest && !context_.voices->HasOwnTable(instrument_->id)) {
            return Complain(texts::kNothingToSuggest);
        }
        if (!arguments_.suggest) {
            auto entries = ReadRevoiceTable(context_, arguments_.table);
            if (!entries) {
                return kUnreadable;
            }
            order_.entries = std::move(*entries);
        }
        order_.addBanks = arguments_.addBanks;
        order_.suggestions = arguments_.suggest ? kSuggested : 0;
        NameTargets(batch_.Expand(arguments_.files));
        if (arguments_.skipDone) {
            batch_.SetDone([this](const InputFile& input, std::size_t index) {
                return IsDone(input, targets_[index].path);
            });
        }
        batch_.SetUp([this](session::WorkOptions& options) {
            arguments_.reading.SetUp(options);
            options.outputs.outputs.front().SetName(instrument_->name);
        });
        return batch_.Run([this](SongJob& job) { return Revoice(job); });
    }

private:
    struct Target {
        fs::path path;
        bool isInput = false;
    };

    int Complain(const Text& text) const {
        context_.log << context_.Say(text) << "\n";
        return kUsage;
    }

    void NameTargets(const std::vector<InputFile>& inputs) {
        app::OutputNames names(PathOf(arguments_.out), PathsOf(inputs));
        for (const InputFile& input : inputs) {
            const fs::path target = names.Next(input.relative);
            targets_.push_back({target, names.IsInput(target)});
        }
    }

    int Revoice(SongJob& job) const {
        const app::RevoicedSong done =
            app::RevoiceBy(order_, job.session, *context_.voices, job.host);
        ShowSuggestions(job, done.suggestions);
        Show(job, done.plan,
             arguments_.suggest ? app::FirstEntries(done.suggestions) : order_.entries);
        const int code = arguments_.dryRun ? kOk : Store(job);
        return code == kOk && done.plan.missingLsb ? kFindings : code;
    }

    static void ShowSuggestions(SongJob& job, std::span<const app::VoiceSuggestion> suggestions) {
        for (const app::VoiceSuggestion& each : suggestions) {
            job.context.out << "  " << NumbersText(each.source.numbers) << " " << each.source.name
                            << ":";
            for (const instruments::SuggestedVoice& voice : each.voices) {
                job.context.out << (&voice == &each.voices.front() ? " " : ", ")
                                << voice.voice->name;
            }
            job.context.out << "\n";
        }
    }

    void Show(SongJob& job, const instruments::Revoicing& plan,
              const std::vector<instruments::RevoiceEntry>& entries) const {
        job.context.out << job.input.Name() << ": "
                        << texts::RevoicingCounts(context_.language, plan.changes.size(),
                                                  plan.programChanges, plan.withoutBank,
                                                  plan.sharingBank)
                        << "\n";
        const song::Song& song = job.session.Song();
        for (const instruments::RevoiceChange& change : plan.changes) {
            const instruments::RevoiceEntry& entry = entries[change.entry];
            job.context.out << "  " << Right(std::to_string(change.channel + 1), 2) << "  "
                            << song::SongPositionToMTC(song, change.tick) << "  "
                            << NumbersText(change.from) << " " << entry.sourceName << " -> "
                            << NumbersText(change.to) << " " << entry.targetName << "\n";
        }
    }

    int Store(SongJob& job) const {
        const Target& target = targets_[job.index];
        if (target.isInput) {
            job.host.ShowMessage(context_.Say(texts::kWouldOverwriteInput) +
                                 DisplayPath(system::PathText(target.path)));
            return kWriteFailed;
        }
        const auto bytes = app::EncodeSong(job.session, app::SaveFormat::AsSong, job.host);
        if (!app::ConfirmOverwrite(target.path, job.host)) {
            return kWriteFailed;
        }
        app::WriteResult(target.path, bytes, job.host);
        job.context.out << job.input.Name() << " -> " << DisplayPath(system::PathText(target.path))
                        << "\n";
        return kOk;
    }

    CliContext& context_;
    const RevoiceArguments& arguments_;
    SongBatch batch_;
    const instruments::Instrument* instrument_ = nullptr;
    app::RevoiceOrder order_;
    std::vector<Target> targets_;
};

} // namespace

void AddRevoiceCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<RevoiceArguments>();
    Command command = app.Add("revoice", context.Say(texts::kHelpRevoice));
    command.Option("FILE", arguments->files, context.Say(texts::kHelpFiles)).Required().Value("");
    command.Option("--instrument", arguments->instrument, context.Say(texts::kHelpRevoiceFor))
        .Required()
        .Value("NAME");
    command.Option("--table", arguments->table, context.Say(texts::kHelpRevoiceTable))
        .Value("FILE");
    command.Flag("--suggest", arguments->suggest, context.Say(texts::kHelpSuggest));
    command.Flag("--add-banks", arguments->addBanks, context.Say(texts::kHelpAddBanks));
    command.Option("-o,--out", arguments->out, context.Say(texts::kHelpRevoiceOut)).Value("DIR");
    command.Flag("--skip-done", arguments->skipDone, context.Say(texts::kHelpSkipDone));
    command.Flag("-n,--dry-run", arguments->dryRun, context.Say(texts::kHelpDryRun));
    arguments->reading.AddTo(command, context);
    arguments->reading.AddNoteLengthTo(command, context);
    command.Runs([&context, arguments] { return RevoiceRun(context, *arguments).Run(); });
}

} // namespace tracksmith::cli
