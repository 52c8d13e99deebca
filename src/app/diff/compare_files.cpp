#include "app/diff/compare_files.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "app/diff/alignment.h"
#include "app/diff/compare_songs.h"
#include "app/diff/texts.h"
#include "song/practice_tempo.h"
#include "song/time_map.h"

namespace tracksmith::diff {
namespace {

void Decode(song::Song& song, const std::vector<std::uint8_t>& bytes,
            const song::DecodeOptions& options, MessageHost& host) {
    if (bytes.size() < song::kSmallestFile) {
        RaiseMidiError(host, texts::kNoSong);
    }
    song::DecodeMidiData(song, bytes, options, host);
    song::UpdateTimeZoneData(song);
}

song::PlaceMap PlacesOf(const song::Song& before, const song::Song& after) {
    if (before.division != after.division) {
        return {std::max<std::int32_t>(before.division, 1),
                std::max<std::int32_t>(after.division, 1)};
    }
    std::vector<song::PlaceStretch> stretches;
    for (const Segment& segment : AlignSongs(before, after)) {
        stretches.push_back({segment.begin, segment.end, segment.shift});
    }
    return song::PlaceMap(std::move(stretches));
}

} // namespace

std::unique_ptr<FileComparison> CompareFiles(const FilePair& files, MessageHost& host) {
    auto found = std::make_unique<FileComparison>();
    found->before.runningStatusAcrossSysex = files.runningStatusAcrossSysex ? 1 : 0;
    Decode(found->before, *files.before, files.decodeOptions, host);
    song::Song after;
    Decode(after, *files.after, {}, host);
    if (files.tempoOffset != 0 && !song::BeginsWithTempo(after)) {
        song::InsertFirstTempo(after, song::MovedTempo(song::kDefaultTempo, files.tempoOffset));
        song::UpdateTimeZoneData(after);
    }
    found->differences = CompareSongs(found->before, after);
    found->places = PlacesOf(found->before, after);
    found->beforeMap = static_cast<const song::TimeMap&>(found->before);
    found->afterMap = static_cast<const song::TimeMap&>(after);
    return found;
}

} // namespace tracksmith::diff
