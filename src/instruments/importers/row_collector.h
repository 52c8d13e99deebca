#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "instruments/importers/imported_table.h"
#include "instruments/voices/voice_row.h"

namespace tracksmith::instruments {

/// Gathers the voices that an import finds, instrument after instrument, and bounds the work: a
/// small file can ask for a list any number of times.
class RowCollector {
public:
    /// Counts one entry or reference that is looked at; false when they are too many for any
    /// honest file.
    [[nodiscard]] bool CountVisit() { return ++visits_ <= kMostVisits; }

    /// Adds a voice, or counts it as left out when it has no name; false when there are too many.
    [[nodiscard]] bool Add(VoiceRow row);

    /// Counts an entry that cannot become a voice.
    void LeaveOut() { ++leftOut_; }

    /// Makes tables of the voices gathered since the last call, one for each of `models`; none if
    /// there are no voices. What stands in a bank that is for kits everywhere (GM2, XG) is a kit.
    /// Throws VoiceFileError when they are too many.
    void Finish(const std::vector<std::string>& models);

    /// The tables; throws VoiceFileError when there is none.
    std::vector<ImportedTable> Take();

private:
    // More than a file of the largest size can spell out.
    static constexpr std::size_t kMostVisits = 1'500'000;

    std::vector<VoiceRow> rows_;
    std::size_t leftOut_ = 0;
    std::size_t visits_ = 0;
    std::size_t rowsInAll_ = 0;
    std::vector<ImportedTable> tables_;
};

} // namespace tracksmith::instruments
