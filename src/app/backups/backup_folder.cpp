#include "app/backups/backup_folder.h"

#include <algorithm>
#include <compare>
#include <set>
#include <utility>

#include "base/system/folder_listing.h"
#include "base/system/known_folders.h"

#include "app/backups/backup_index.h"

namespace tracksmith::backups {
namespace {

namespace fs = std::filesystem;

fs::path NamedPath(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

// The songs are told apart by their files, where those are known.
std::string SongKey(const Backup& backup) {
    return backup.original.empty() ? "_" + backup.name.song : system::PathText(backup.original);
}

// Behind all others of that second, also where one of them is gone already.
BackupName FreeName(const fs::path& folder, const BackupList& list, const BackupSource& source) {
    BackupName name{source.song, source.stamp, 1};
    for (const Backup& backup : list.backups) {
        if (backup.name.song == name.song && backup.name.stamp == name.stamp) {
            name.number = std::max(name.number, backup.name.number + 1);
        }
    }
    std::error_code ignored; // a name that cannot be looked at is free, or writing will say why not
    while (fs::exists(folder / NamedPath(name.FileName()), ignored)) {
        ++name.number;
    }
    return name;
}

} // namespace

std::vector<Backup> BackupsToRemove(const std::vector<Backup>& newestFirst) {
    std::set<std::string> songs;
    std::vector<bool> safe(newestFirst.size());
    for (std::size_t i = 0; i < newestFirst.size() && songs.size() < kSafeSongs; ++i) {
        safe[i] = songs.insert(SongKey(newestFirst[i])).second;
    }
    std::vector<Backup> removed;
    for (std::size_t i = newestFirst.size();
         i-- > 0 && newestFirst.size() - removed.size() > kMostBackups;) {
        if (!safe[i]) {
            removed.push_back(newestFirst[i]);
        }
    }
    return removed;
}

BackupList BackupFolder::List() const {
    BackupList list;
    const system::FolderListing found = system::ListFolder(folder_);
    list.error = found.failed ? found.error : std::error_code();
    const BackupIndex index = ReadBackupIndex(folder_);
    for (const fs::path& file : found.names) {
        const std::string text = system::PathText(file);
        const auto name = ParseBackupName(text);
        std::error_code error;
        if (!name || !fs::is_regular_file(folder_ / file, error)) {
            continue;
        }
        Backup backup{folder_ / file, *name, fs::file_size(folder_ / file, error), {}, {}};
        if (!error) {
            backup.written = fs::last_write_time(folder_ / file, error);
        }
        if (error) {
            continue; // gone meanwhile
        }
        if (const auto entry = index.find(text); entry != index.end()) {
            backup.original = entry->second;
        }
        list.backups.push_back(std::move(backup));
    }
    std::ranges::sort(list.backups, [](const Backup& a, const Backup& b) {
        const auto order = a.name.AgeOrder(b.name);
        return std::is_eq(order) ? a.name.song < b.name.song : std::is_gt(order);
    });
    return list;
}

// The index goes first: an entry without its backup does no harm, but a backup without its entry
// would not know its song.
BackupFolder::Outcome BackupFolder::Write(const BackupSource& source,
                                          std::span<const std::uint8_t> bytes) const {
    std::error_code error;
    fs::create_directories(folder_, error);
    if (error) {
        return {{system::WriteOutcome::CreateFailed, 0, error}, {}};
    }
    const BackupList list = List();
    const BackupName name = FreeName(folder_, list, source);
    // Where not all can be seen, none is forgotten.
    BackupIndex index = list.error ? ReadBackupIndex(folder_) : BackupIndex();
    for (const Backup& backup : list.backups) {
        index.emplace(backup.name.FileName(), backup.original);
    }
    index.insert_or_assign(name.FileName(), source.original);
    const system::WriteResult indexed = WriteBackupIndex(folder_, index);
    const fs::path file = folder_ / NamedPath(name.FileName());
    const system::WriteResult written = system::WriteFileAtomically(file, bytes);
    if (written.outcome != system::WriteOutcome::Written) {
        return {written, file};
    }
    for (const Backup& backup : BackupsToRemove(List().backups)) {
        fs::remove(backup.file, error); // one that cannot go yet goes with the next backup
    }
    return {indexed, file};
}

std::filesystem::path UsualBackupFolder() {
    const fs::path data = system::UserDataFolder();
    return data.empty() ? data : data / "AutoBackups";
}

} // namespace tracksmith::backups
