#include <memory>
#include <ostream>
#include <system_error>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "app/cli/commands.h"
#include "app/cli/output_names.h"
#include "app/cli/song_input.h"
#include "app/cli/texts.h"
#include "app/save_song.h"

namespace tracksmith::cli {
namespace {

namespace fs = std::filesystem;

struct ConvertArguments {
    std::vector<std::string> files;
    std::string format;
    std::string out;
    bool runningStatus = false;
    bool omitPortEvents = false;
    bool split = false;
    bool inPlace = false;
    bool dryRun = false;

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
        app::Workspace& workspace = batch_.Workspace();
        workspace.decodeOptions.splitFormat0 = arguments_.split;
        workspace.encodeOptions.useRunningStatus = arguments_.runningStatus;
        workspace.encodeOptions.omitPortEvents = arguments_.omitPortEvents;
        OutputNames names(PathOf(arguments_.out), inputs);
        return batch_.Run([&](const InputFile& input, app::Workspace& song, MessageHost& host) {
            return Convert(input, song, host, names);
        });
    }

private:
    /// What is wrong with the combination of arguments; null when nothing is.
    const Text* FaultOf(const std::vector<InputFile>& inputs) const {
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

    int Convert(const InputFile& input, app::Workspace& workspace, MessageHost& host,
                OutputNames& names) {
        LogChanges(context_, input, workspace);
        const std::span<const std::uint8_t> bytes = app::EncodeSong(workspace, Format(), host);
        if (arguments_.ToStandardOutput()) {
            if (!arguments_.dryRun) {
                context_.out.write(reinterpret_cast<const char*>(bytes.data()),
                                   static_cast<std::streamsize>(bytes.size()));
            }
            return kOk;
        }
        const fs::path target = arguments_.inPlace ? input.path : names.Next(input);
        if (!arguments_.inPlace && names.IsInput(target)) {
            host.ShowMessage(context_.Say(texts::kWouldOverwriteInput) + Shown(target));
            return kWriteFailed;
        }
        return Store(input, target, bytes, host);
    }

    int Store(const InputFile& input, const fs::path& target, std::span<const std::uint8_t> bytes,
              MessageHost& host) {
        if (!arguments_.dryRun) {
            if (!arguments_.inPlace && !app::ConfirmOverwrite(target, host)) {
                return kWriteFailed;
            }
            std::error_code error; // writing reports what cannot be created
            fs::create_directories(target.parent_path(), error);
            app::WriteMidiFile(target, bytes, host);
        }
        context_.out << input.Name() << " -> " << Shown(target) << "\n";
        return kOk;
    }

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
};

} // namespace

void AddConvertCommand(CLI::App& app, CliContext& context) {
    const auto arguments = std::make_shared<ConvertArguments>();
    CLI::App* command = app.add_subcommand("convert", context.Say(texts::kHelpConvert));
    command->add_option("FILE", arguments->files, context.Say(texts::kHelpFiles))
        ->required()
        ->type_name("");
    command->add_option("--format", arguments->format, context.Say(texts::kHelpFormat))
        ->type_name("0|1")
        ->check([](const std::string& value) {
            return value == "0" || value == "1" ? std::string() : "--format: 0, 1";
        });
    command->add_option("-o,--out", arguments->out, context.Say(texts::kHelpOutFolder))
        ->type_name("DIR");
    command->add_flag("--in-place", arguments->inPlace, context.Say(texts::kHelpInPlace));
    command->add_flag("--running-status", arguments->runningStatus,
                      context.Say(texts::kHelpRunningStatus));
    command->add_flag("--omit-port-events", arguments->omitPortEvents,
                      context.Say(texts::kHelpOmitPorts));
    command->add_flag("--split", arguments->split, context.Say(texts::kHelpSplit));
    command->add_flag("-n,--dry-run", arguments->dryRun, context.Say(texts::kHelpDryRun));
    command->callback([&context, arguments] {
        context.run = [&context, arguments] { return Conversion(context, *arguments).Run(); };
    });
}

} // namespace tracksmith::cli
