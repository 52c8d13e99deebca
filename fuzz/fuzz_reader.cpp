#include "fuzz_song.h"

// Any bytes: the reader either builds a sound song or refuses them with a message. The scanner must
// agree with it, and clock times that the reader sets must be those of the time map.

using namespace tracksmith;
using namespace tracksmith::fuzz;

namespace {

void CheckTimes(song::Song& song, const song::DecodeResult& result) {
    result.tempoMapInFirstTrack ? song::CompleteTempoTimeSign(song)
                                : song::ReloadTempoTimeSign(song);
    song::SetTimeZones(song);
    if (!result.timesAreSet) {
        return;
    }
    std::vector<std::int32_t> times;
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            times.push_back(event->timeMs);
        }
    }
    song::SetTimePositions(song);
    auto time = times.begin();
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            Require(*time++ == event->timeMs, "clock time differs from the time map");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static song::Song song; // loads follow each other in one song, as in the program
    if (size == 0) {
        return 0;
    }
    const InputOptions options(data[0]);
    const std::span<const std::uint8_t> file(data + 1, size - 1);
    song::DecodeResult result;
    const bool decoded = Decode(song, file, options, result);
    if (options.runningStatusAcrossSysex == 0) {
        RecordingMessageHost host;
        bool scanned = true;
        try {
            song::ScanMidiData(file, host);
        } catch (const EMidiError&) {
            scanned = false;
        }
        Require(scanned || !decoded, "scanner refuses what the reader reads");
    }
    if (decoded) {
        CheckTimes(song, result);
        RequireSound(song);
    }
    song::ClearSong(song);
    return 0;
}
