#include "instruments/voices/voice_tables.h"

#include <algorithm>
#include <new>
#include <tuple>
#include <utility>

#include "base/display_text.h"
#include "base/system/file_io.h"
#include "base/system/folder_listing.h"

#include "instruments/voices/texts.h"
#include "instruments/voices/voice_file_error.h"
#include "instruments/voices/voice_table_reader.h"
#include "instruments/voices/voice_table_writer.h"

namespace tracksmith::instruments {
namespace {

// The code that a file name of the form "NNN-*.tsv" begins with.
std::optional<InstrumentId> CodeOf(const std::string& fileName) {
    if (fileName.size() < 8 || fileName[3] != '-' || !fileName.ends_with(".tsv")) {
        return std::nullopt;
    }
    int code = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        if (fileName[i] < '0' || fileName[i] > '9') {
            return std::nullopt;
        }
        code = code * 10 + (fileName[i] - '0');
    }
    if (code >= static_cast<int>(kInstrumentCount)) {
        return std::nullopt;
    }
    return static_cast<InstrumentId>(code);
}

struct TableFile {
    InstrumentId code;
    // A name that was only begun by hand comes after the one that the program itself writes.
    bool otherName;
    std::filesystem::path path;

    friend bool operator<(const TableFile& a, const TableFile& b) {
        return std::tie(a.code, a.otherName, a.path) < std::tie(b.code, b.otherName, b.path);
    }
};

} // namespace

VoiceTables::VoiceTables(std::vector<std::filesystem::path> folders)
    : folders_(std::move(folders)) {
    outOfMemory_.outOfMemory = true;
}

const VoiceTable* VoiceTables::OwnTable(InstrumentId instrument) const {
    const Loaded& loaded = LoadedOf(instrument);
    return loaded.table ? &*loaded.table : nullptr;
}

std::filesystem::path VoiceTables::PathOf(InstrumentId instrument) const {
    return LoadedOf(instrument).path;
}

std::filesystem::path VoiceTables::UserFolder() const {
    return folders_.empty() ? std::filesystem::path() : folders_.front();
}

bool VoiceTables::HasUserTable(InstrumentId instrument) const {
    LoadedOf(instrument); // so that the files are known
    const std::scoped_lock lock(mutex_);
    return instrument < kInstrumentCount &&
           std::ranges::any_of(files_[instrument], [this](const std::filesystem::path& file) {
               return file.parent_path() == UserFolder();
           });
}

void VoiceTables::Reload(InstrumentId instrument) {
    if (instrument < kInstrumentCount) {
        const std::scoped_lock lock(mutex_);
        filesKnown_ = false;
        slots_[instrument].current.store(nullptr, std::memory_order_release);
    }
}

std::vector<std::string> VoiceTables::Problems(InstrumentId instrument, Language language) const {
    const Loaded& loaded = LoadedOf(instrument);
    std::vector<std::string> texts;
    if (loaded.outOfMemory) {
        texts.emplace_back(texts::kTableNoMemory.In(language));
    }
    const auto add = [&](const Problem& problem) {
        texts.push_back(problem.path + ": " +
                        (language == Language::German ? problem.german : problem.english));
    };
    std::ranges::for_each(loaded.problems, add);
    const std::scoped_lock lock(mutex_);
    std::ranges::for_each(folderProblems_, add);
    return texts;
}

const VoiceTables::Loaded& VoiceTables::LoadedOf(InstrumentId instrument) const {
    if (instrument >= kInstrumentCount) {
        return none_;
    }
    Slot& slot = slots_[instrument];
    if (const Loaded* loaded = slot.current.load(std::memory_order_acquire)) {
        return *loaded;
    }
    const std::scoped_lock lock(mutex_);
    if (const Loaded* loaded = slot.current.load(std::memory_order_relaxed)) {
        return *loaded;
    }
    try {
        FindFiles();
        slot.all.push_back(Load(instrument));
    } catch (const std::bad_alloc&) {
        return outOfMemory_;
    }
    slot.current.store(slot.all.back().get(), std::memory_order_release);
    return *slot.all.back();
}

void VoiceTables::FindFiles() const {
    if (filesKnown_) {
        return;
    }
    std::ranges::for_each(files_, [](auto& files) { files.clear(); });
    folderProblems_.clear();
    for (const std::filesystem::path& folder : folders_) {
        ScanFolder(folder);
    }
    filesKnown_ = true;
}

void VoiceTables::ScanFolder(const std::filesystem::path& folder) const {
    std::vector<TableFile> found;
    const system::FolderListing listing = system::ListFolder(folder);
    for (const std::filesystem::path& entry : listing.names) {
        const std::string name = system::PathText(entry);
        if (const auto code = CodeOf(name)) {
            const bool otherName = name != TableFileName(*FindInstrument(*code));
            found.push_back({*code, otherName, folder / entry});
        }
    }
    if (listing.failed) {
        folderProblems_.push_back({DisplayPath(system::PathText(folder)),
                                   std::string(texts::kTablesUnreadable.german),
                                   std::string(texts::kTablesUnreadable.english)});
    }
    std::sort(found.begin(), found.end());
    for (TableFile& file : found) {
        files_[file.code].push_back(std::move(file.path));
    }
}

std::unique_ptr<const VoiceTables::Loaded> VoiceTables::Load(InstrumentId instrument) const {
    auto loaded = std::make_unique<Loaded>();
    for (const std::filesystem::path& path : files_[instrument]) {
        try {
            loaded->table = ReadVoiceTableFile(path);
            loaded->path = path;
            break;
        } catch (const VoiceFileError& error) {
            loaded->problems.push_back({DisplayPath(system::PathText(path)),
                                        error.Message(Language::German),
                                        error.Message(Language::English)});
        }
    }
    return loaded;
}

} // namespace tracksmith::instruments
