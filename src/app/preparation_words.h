#pragma once

#include <string>
#include <vector>

#include "base/text.h"

#include "instruments/preparation.h"
#include "song/song.h"

/// What preparing a song did, in words.
namespace tracksmith::app {

/// One line, for example "Prepared for Yamaha Genos: +1 XG System On, −1 GM System On"; empty while
/// the song has not been prepared.
std::string PreparationLine(const instruments::PreparationReport& report, Language language);

/// One message that was inserted, removed or found.
struct PreparationRow {
    std::string what;
    /// What the message means.
    std::string words;
    /// All bytes, F0 and F7 included, in hexadecimal; long messages end with an ellipsis.
    std::string bytes;
    /// Track, counted from 1.
    std::int32_t track = 1;
    std::int32_t tick = 0;
    /// For example "001.01.002".
    std::string position;
};

/// The messages that the report has kept, in its order. `song` must have a time map.
std::vector<PreparationRow> PreparationRows(const instruments::PreparationReport& report,
                                            const song::TimeMap& song, Language language);

} // namespace tracksmith::app
