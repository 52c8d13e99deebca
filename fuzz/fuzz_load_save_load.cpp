#include "fuzz_song.h"

#include "song/midi_file_writer.h"
#include "song/song_position.h"

// What the reader accepts can be saved and loaded again, and from the second generation on the
// bytes stay the same.

using namespace tracksmith;
using namespace tracksmith::fuzz;

namespace {

void CheckMap(song::Song& song) {
    song::UpdateTimeZoneData(song);
    RequireSound(song);
    for (std::size_t i = 1; i < static_cast<std::size_t>(song.timeZoneCount); ++i) {
        Require(song.timeZones[i].tick >= song.timeZones[i - 1].tick, "zones out of order");
        Require(song.timeZones[i].startMs >= song.timeZones[i - 1].startMs, "time runs backwards");
    }
    Require(song.lengthMs >= 0 && song.lengthMeasure >= 1, "no length");
    const std::int32_t middle = song.songLength / 2;
    Require(!song::SongPositionToMTC(song, middle).empty(), "no position text");
    const song::MeasureBeatTick place = song::GetMeasureBeatFromSongPos(song, middle);
    Require(place.measure >= 1 && place.beat >= 1 && place.tick >= 0, "no position");
    song::MTCToSongPosition(song, static_cast<std::int32_t>(place.measure),
                            static_cast<std::int32_t>(place.beat),
                            static_cast<std::int32_t>(place.tick));
    Require(song::TickToMs(song, song::MsToTick(song, song.lengthMs / 2)) <= song.lengthMs / 2,
            "tick behind its time");
}

std::vector<std::uint8_t> Encode(const song::Song& song, const InputOptions& options) {
    song::EncodeOptions encode;
    encode.useRunningStatus = options.useRunningStatus;
    encode.omitPortEvents = options.omitPortEvents;
    RecordingMessageHost host;
    return options.format0 ? song::EncodeFormat0(song, encode, host)
                           : song::EncodeFormat1(song, encode, host);
}

// The bytes of the song, which is then what loading them gives.
std::vector<std::uint8_t> SaveAndLoad(song::Song& song, const InputOptions& options,
                                      song::DecodeResult& result) {
    CheckMap(song);
    const std::vector<std::uint8_t> bytes = Encode(song, options);
    RequireSound(song);
    Require(Decode(song, bytes, options, result), "saved file cannot be loaded");
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static song::Song song; // loads follow each other in one song, as in the program
    if (size == 0) {
        return 0;
    }
    const InputOptions options(data[0]);
    song::DecodeResult result;
    if (!Decode(song, {data + 1, size - 1}, options, result)) {
        return 0;
    }
    SaveAndLoad(song, options, result);
    if (result.report[song::LoadChange::NameBlanked] > 0) {
        // The names that were blanked now are not saved again, which may shorten the song once.
        SaveAndLoad(song, options, result);
    }
    const std::vector<std::uint8_t> second = SaveAndLoad(song, options, result);
    Require(SaveAndLoad(song, options, result) == second, "saving again changes the file");
    return 0;
}
