#pragma once

#include <array>
#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

#include "base/text.h"

#include "instruments/catalogue.h"
#include "instruments/voices/voice_table.h"

namespace tracksmith::instruments {

/// The voice tables of all instruments, from files named by the three-digit code of the instrument
/// ("074-yamaha-tyros-5.tsv"). Each is loaded when first asked for and then kept, so that a
/// `Voice*` stays valid as long as this object; a table saved later is seen by a new object.
/// Any thread.
class VoiceTables {
public:
    /// Folders to look in; of several tables of an instrument the one in the earliest folder is
    /// taken that can be read. Folders that do not exist count as empty. Reads nothing yet.
    explicit VoiceTables(std::vector<std::filesystem::path> folders);

    /// The instrument's own table; null without one.
    const VoiceTable* OwnTable(InstrumentId instrument) const;
    bool HasOwnTable(InstrumentId instrument) const { return OwnTable(instrument) != nullptr; }

    /// The file that the instrument's own table came from; empty without one.
    std::filesystem::path PathOf(InstrumentId instrument) const;

    /// What is wrong with files of the instrument's table that had to be passed over, each with
    /// its path; empty when all is well.
    std::vector<std::string> Problems(InstrumentId instrument, Language language) const;

private:
    struct Problem {
        std::string path;
        std::string german;
        std::string english;
    };
    struct Slot {
        std::once_flag once;
        VoiceTable table;
        std::filesystem::path path;
        bool loaded = false;
        std::vector<Problem> problems;
    };

    const Slot& Loaded(InstrumentId instrument) const;
    void FindFiles() const;
    void Load(InstrumentId instrument, Slot& slot) const;

    std::vector<std::filesystem::path> folders_;
    mutable std::once_flag filesOnce_;
    // Files of each instrument, the preferred first.
    mutable std::array<std::vector<std::filesystem::path>, kInstrumentCount> files_;
    mutable std::array<Slot, kInstrumentCount> slots_;
    // What codes above the catalogue get.
    Slot none_;
};

} // namespace tracksmith::instruments
