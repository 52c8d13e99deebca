#include <algorithm>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>

#include "base/display_text.h"
#include "base/errors.h"
#include "base/system/file_io.h"
#include "base/system_reason.h"

#include "app/backups/backup_folder.h"
#include "app/cli/cli_message_host.h"
#include "app/cli/columns.h"
#include "app/cli/commands.h"
#include "app/cli/input_files.h"
#include "app/cli/texts.h"
#include "app/save_song.h"
#include "app/texts.h"

namespace tracksmith::cli {
namespace {

namespace fs = std::filesystem;
using backups::Backup;

using Json = nlohmann::ordered_json;

constexpr int kBackupsSchema = 1;

struct BackupsArguments {
    bool json = false;
    std::string wanted;
    std::string out;
};

std::string Shown(const fs::path& path) {
    return DisplayPath(system::PathText(path));
}

// "20261122_131803" as "2026-11-22 13:18:03".
std::string DateOf(const backups::BackupName& name) {
    const std::string& stamp = name.stamp;
    return stamp.substr(0, 4) + "-" + stamp.substr(4, 2) + "-" + stamp.substr(6, 2) + " " +
           stamp.substr(9, 2) + ":" + stamp.substr(11, 2) + ":" + stamp.substr(13, 2);
}

// The backups, or what keeps them from being seen, which has been logged.
std::optional<std::vector<Backup>> ReadBackups(const CliContext& context) {
    const fs::path folder = backups::UsualBackupFolder();
    if (folder.empty()) {
        context.log << context.Say(texts::kNoBackupFolder) << "\n";
        return std::nullopt;
    }
    const backups::BackupList list = backups::BackupFolder(folder).List();
    if (list.error) {
        context.log << Shown(folder) << ": " << SystemReason(list.error, context.language) << "\n";
        return std::nullopt;
    }
    return list.backups;
}

void WriteJson(const CliContext& context, std::size_t number, const Backup& backup) {
    const Json json{
        {"schema", kBackupsSchema},
        {"number", number},
        {"name", backup.name.FileName()},
        {"song", backup.name.song},
        {"date", DateOf(backup.name)},
        {"bytes", backup.bytes},
        {"file", system::PathText(backup.file)},
        {"original", backup.original.empty() ? Json() : Json(system::PathText(backup.original))}};
    context.out << json.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
}

void WriteText(const CliContext& context, std::size_t number, const Backup& backup) {
    constexpr std::size_t kNumberWidth = 3;
    constexpr std::size_t kSizeWidth = 9;
    context.out << Right(std::to_string(number), kNumberWidth) << "  " << DateOf(backup.name)
                << Right(std::to_string(backup.bytes), kSizeWidth) << "  "
                << DisplayPath(backup.name.FileName());
    if (!backup.original.empty()) {
        context.out << "  (" << Shown(backup.original) << ")";
    }
    context.out << "\n";
}

int ListBackups(const CliContext& context, const BackupsArguments& arguments) {
    const auto list = ReadBackups(context);
    if (!list) {
        return kUnreadable;
    }
    std::size_t number = 0;
    for (const Backup& backup : *list) {
        ++number;
        arguments.json ? WriteJson(context, number, backup) : WriteText(context, number, backup);
    }
    if (list->empty() && !context.quiet) {
        context.log << context.Say(texts::kNoBackups) << "\n";
    }
    return kOk;
}

// By its number in the list or by its name, with or without the extension.
const Backup* Find(const std::vector<Backup>& list, const std::string& wanted) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(wanted.data(), wanted.data() + wanted.size(), number);
    if (error == std::errc() && end == wanted.data() + wanted.size()) {
        return number >= 1 && number <= list.size() ? &list[number - 1] : nullptr;
    }
    const auto found = std::ranges::find_if(list, [&](const Backup& backup) {
        const std::string name = backup.name.FileName();
        return name == wanted || name == wanted + ".mid";
    });
    return found == list.end() ? nullptr : &*found;
}

int RestoreTo(const CliContext& context, const BackupsArguments& arguments) {
    const auto list = ReadBackups(context);
    const Backup* backup = list ? Find(*list, arguments.wanted) : nullptr;
    if (backup == nullptr) {
        context.log << context.Say(texts::kNoSuchBackup) << DisplayPath(arguments.wanted) << "\n";
        return kUnreadable;
    }
    CliMessageHost host(context);
    const auto bytes = system::ReadRegularFile(backup->file);
    if (!bytes) {
        host.ShowMessage(app::texts::OpenFailed(context.language, system::PathText(backup->file)));
        return kUnreadable;
    }
    const fs::path target = PathOf(arguments.out);
    if (!app::ConfirmOverwrite(target, host)) {
        return kWriteFailed;
    }
    try {
        app::WriteMidiFile(target, *bytes, host);
    } catch (const EMidiError&) {
        return kWriteFailed; // has been told
    }
    if (!context.quiet) {
        context.log << DisplayPath(backup->name.FileName()) << " -> " << Shown(target) << "\n";
    }
    return kOk;
}

} // namespace

void AddBackupsCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<BackupsArguments>();
    Command command = app.Add("backups", context.Say(texts::kHelpBackups));
    command.NeedsCommand();
    Command list = command.Add("list", context.Say(texts::kHelpBackupsList));
    list.Flag("--json", arguments->json, context.Say(texts::kHelpBackupsJson));
    list.Runs([&context, arguments] { return ListBackups(context, *arguments); });
    Command restore = command.Add("restore", context.Say(texts::kHelpBackupsRestore));
    restore.Option("BACKUP", arguments->wanted, context.Say(texts::kHelpBackupWanted))
        .Required()
        .Value("");
    restore.Option("-o,--out", arguments->out, context.Say(texts::kHelpBackupOut))
        .Required()
        .Value("FILE");
    restore.Runs([&context, arguments] { return RestoreTo(context, *arguments); });
}

} // namespace tracksmith::cli
