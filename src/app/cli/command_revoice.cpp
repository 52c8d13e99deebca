#include <filesystem>
#include <memory>
#include <ostream>
#include <system_error>
#include <utility>
#include <vector>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "app/cli/columns.h"
#include "app/cli/commands.h"
#include "app/cli/instrument_choice.h"
#include "app/cli/output_names.h"
#include "app/cli/reading_options.h"
#include "app/cli/revoice_table_file.h"
#include "app/cli/song_input.h"
#include "app/cli/texts.h"
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
            entries_ = std::move(*entries);
        }
        NameTargets(batch_.Expand(arguments_.files));
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
        OutputNames names(PathOf(arguments_.out), inputs);
        for (const InputFile& input : inputs) {
            const fs::path target = names.Next(input);
            targets_.push_back({target, names.IsInput(target)});
        }
    }

    int Revoice(SongJob& job) const {
        session::Session& session = job.session;
        const auto start = app::StartBanksOf(
            session.Work(), *context_.voices, app::DescribeSong(session.Work()),
            [](instruments::InstrumentId) { return instruments::LookupOptions(); });
        if (arguments_.addBanks) {
            app::AddBankSelects(session, start, job.host);
        }
        const auto entries = arguments_.suggest ? Suggest(job, start) : entries_;
        const auto plan = app::RevoiceSong(session, entries, job.host);
        Show(job, plan, entries);
        const int code = arguments_.dryRun ? kOk : Store(job);
        return code == kOk && plan.missingLsb ? kFindings : code;
    }

    std::vector<instruments::RevoiceEntry> Suggest(SongJob& job,
                                                   const instruments::StartBanks& start) const {
        const auto rule = instruments::RevoiceRuleOf(job.session.Work().outputs);
        const auto voices = app::VoicesInSong(job.session.Song(), *context_.voices, rule, start);
        const auto suggestions =
            app::SuggestVoices(voices, *context_.voices, instrument_->id, {}, kSuggested);
        for (const app::VoiceSuggestion& each : suggestions) {
            job.context.out << "  " << NumbersText(each.source.numbers) << " " << each.source.name
                            << ":";
            for (const instruments::SuggestedVoice& voice : each.voices) {
                job.context.out << (&voice == &each.voices.front() ? " " : ", ")
                                << voice.voice->name;
            }
            job.context.out << "\n";
        }
        return app::FirstEntries(suggestions);
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
        std::error_code ignored; // writing reports what cannot be created
        fs::create_directories(target.path.parent_path(), ignored);
        app::WriteMidiFile(target.path, bytes, job.host);
        job.context.out << job.input.Name() << " -> " << DisplayPath(system::PathText(target.path))
                        << "\n";
        return kOk;
    }

    CliContext& context_;
    const RevoiceArguments& arguments_;
    SongBatch batch_;
    const instruments::Instrument* instrument_ = nullptr;
    std::vector<instruments::RevoiceEntry> entries_;
    std::vector<Target> targets_;
};

} // namespace

void AddRevoiceCommand(CLI::App& app, CliContext& context) {
    const auto arguments = std::make_shared<RevoiceArguments>();
    CLI::App* command = app.add_subcommand("revoice", context.Say(texts::kHelpRevoice));
    command->add_option("FILE", arguments->files, context.Say(texts::kHelpFiles))
        ->required()
        ->type_name("");
    command->add_option("--instrument", arguments->instrument, context.Say(texts::kHelpRevoiceFor))
        ->required()
        ->type_name("NAME");
    command->add_option("--table", arguments->table, context.Say(texts::kHelpRevoiceTable))
        ->type_name("FILE");
    command->add_flag("--suggest", arguments->suggest, context.Say(texts::kHelpSuggest));
    command->add_flag("--add-banks", arguments->addBanks, context.Say(texts::kHelpAddBanks));
    command->add_option("-o,--out", arguments->out, context.Say(texts::kHelpRevoiceOut))
        ->type_name("DIR");
    command->add_flag("-n,--dry-run", arguments->dryRun, context.Say(texts::kHelpDryRun));
    arguments->reading.AddTo(*command, context);
    arguments->reading.AddNoteLengthTo(*command, context);
    command->callback([&context, arguments] {
        context.run = [&context, arguments] { return RevoiceRun(context, *arguments).Run(); };
    });
}

} // namespace tracksmith::cli
