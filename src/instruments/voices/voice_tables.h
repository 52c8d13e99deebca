#pragma once

#include <array>
#include <atomic>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"

#include "instruments/catalogue.h"
#include "instruments/voices/voice_table.h"

namespace tracksmith::instruments {

/// The voice tables of all instruments, from files named by the three-digit code of the instrument
/// ("074-yamaha-tyros-5.tsv"). A program has one object of it. Each table is read when its
/// instrument is first asked for and then kept; also one that was replaced, so that a `Voice*`
/// stays valid as long as this object. Any thread.
class VoiceTables {
public:
    /// Folders to look in, the user's own first; of several tables of an instrument the one in the
    /// earliest folder is taken that can be read. Folders that do not exist count as empty. Reads
    /// nothing yet.
    explicit VoiceTables(std::vector<std::filesystem::path> folders);

    /// The instrument's own table; null without one, and where reading it failed: see Problems.
    const VoiceTable* OwnTable(InstrumentId instrument) const;
    bool HasOwnTable(InstrumentId instrument) const { return OwnTable(instrument) != nullptr; }

    /// The file that the instrument's own table came from; empty without one.
    std::filesystem::path PathOf(InstrumentId instrument) const;

    /// The folder of the user's own tables; empty when there is none.
    std::filesystem::path UserFolder() const;

    /// Whether saving a table of the instrument in the user's folder takes the place of another one
    /// of the user's, readable or not.
    bool HasUserTable(InstrumentId instrument) const;

    /// Looks for the instrument's table anew, after it has been saved.
    void Reload(InstrumentId instrument);

    /// What is wrong with the folders and with files of the instrument's table that had to be
    /// passed over, each with its path; empty when all is well.
    std::vector<std::string> Problems(InstrumentId instrument, Language language) const;

private:
    struct Problem {
        std::string path;
        std::string german;
        std::string english;
    };
    /// What one reading of an instrument's files gave.
    struct Loaded {
        std::optional<VoiceTable> table;
        std::filesystem::path path;
        std::vector<Problem> problems;
        bool outOfMemory = false;
    };
    struct Slot {
        std::atomic<const Loaded*> current = nullptr;
        std::vector<std::unique_ptr<const Loaded>> all;
    };

    const Loaded& LoadedOf(InstrumentId instrument) const;
    void FindFiles() const;
    void ScanFolder(const std::filesystem::path& folder) const;
    std::unique_ptr<const Loaded> Load(InstrumentId instrument) const;

    std::vector<std::filesystem::path> folders_;
    mutable std::mutex mutex_;
    mutable bool filesKnown_ = false;
    // Files of each instrument, the preferred first.
    mutable std::array<std::vector<std::filesystem::path>, kInstrumentCount> files_;
    mutable std::vector<Problem> folderProblems_;
    mutable std::array<Slot, kInstrumentCount> slots_;
    // What codes above the catalogue get, and what all get while memory is short.
    Loaded none_;
    Loaded outOfMemory_;
};

} // namespace tracksmith::instruments
