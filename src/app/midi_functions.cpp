#include "app/midi_functions.h"

namespace tracksmith::app {

song::DecodeResult TMidiFunctions::DecodeMidiData(std::span<const std::uint8_t> file) {
    song::DecodeResult decoded =
        song::DecodeMidiData(workspace_.song, file, workspace_.decodeOptions, host_);
    CheckSysexs();
    CheckEventCounter();
    return decoded;
}

void TMidiFunctions::SetTimesAfterDecoding(const song::DecodeResult& decoded) {
    if (decoded.tempoMapInFirstTrack) {
        song::CompleteTempoTimeSign(workspace_.song);
    } else {
        ReloadTempoTimeSign();
    }
    SetTimeZones();
    if (!decoded.timesAreSet) {
        SetTimePositions();
    }
}

} // namespace tracksmith::app
