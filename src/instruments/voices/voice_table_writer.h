#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "instruments/catalogue.h"
#include "instruments/voices/voice_row.h"
#include "instruments/voices/voice_table.h"

namespace tracksmith::instruments {

/// The bytes of a table's file, records in the order given: what ReadVoiceTable reads.
std::string VoiceTableText(std::span<const Voice> voices);

/// A table of `rows`: families, and the categories of each, in the order in which they first occur,
/// within a category by MSB, LSB and program; of rows that are the same in all fields one remains.
/// Throws VoiceFileError for rows that a table file could not hold.
VoiceTable MakeVoiceTable(std::vector<VoiceRow> rows);

/// Name of an instrument's table file: its code with three digits and its name in small letters
/// and digits, joined by hyphens ("040-ketron-sd2-sd4.tsv").
std::string TableFileName(const Instrument& instrument);

/// Writes `table` into the folder of the user's own tables, which is made if need be, as the table
/// of `instrument`; returns its path. A former table is replaced as a whole or, on any failure,
/// kept: VoiceFileError is thrown then.
std::filesystem::path SaveUserTable(const std::filesystem::path& folder, InstrumentId instrument,
                                    const VoiceTable& table);

} // namespace tracksmith::instruments
