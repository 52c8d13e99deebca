#include "instruments/voices/voice_tables.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <tuple>
#include <utility>

#include "base/display_text.h"
#include "base/system/file_io.h"

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

std::vector<TableFile> TableFilesIn(const std::filesystem::path& folder) {
    std::vector<TableFile> files;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = system::PathText(entry->path().filename());
        if (const auto code = CodeOf(name)) {
            const bool otherName = name != TableFileName(*FindInstrument(*code));
            files.push_back({*code, otherName, entry->path()});
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

VoiceTables::VoiceTables(std::vector<std::filesystem::path> folders)
    : folders_(std::move(folders)) {}

const VoiceTable* VoiceTables::OwnTable(InstrumentId instrument) const {
    const Slot& slot = Loaded(instrument);
    return slot.loaded ? &slot.table : nullptr;
}

std::filesystem::path VoiceTables::PathOf(InstrumentId instrument) const {
    return Loaded(instrument).path;
}

std::vector<std::string> VoiceTables::Problems(InstrumentId instrument, Language language) const {
    std::vector<std::string> texts;
    for (const Problem& problem : Loaded(instrument).problems) {
        texts.push_back(problem.path + ": " +
                        (language == Language::German ? problem.german : problem.english));
    }
    return texts;
}

const VoiceTables::Slot& VoiceTables::Loaded(InstrumentId instrument) const {
    if (instrument >= kInstrumentCount) {
        return none_;
    }
    Slot& slot = slots_[instrument];
    std::call_once(slot.once, [&] { Load(instrument, slot); });
    return slot;
}

void VoiceTables::FindFiles() const {
    for (const std::filesystem::path& folder : folders_) {
        for (TableFile& file : TableFilesIn(folder)) {
            files_[file.code].push_back(std::move(file.path));
        }
    }
}

void VoiceTables::Load(InstrumentId instrument, Slot& slot) const {
    std::call_once(filesOnce_, [this] { FindFiles(); });
    for (const std::filesystem::path& path : files_[instrument]) {
        try {
            slot.table = ReadVoiceTableFile(path);
            slot.path = path;
            slot.loaded = true;
            return;
        } catch (const VoiceFileError& error) {
            slot.problems.push_back({DisplayPath(system::PathText(path)),
                                     error.Message(Language::German),
                                     error.Message(Language::English)});
        }
    }
}

} // namespace tracksmith::instruments
