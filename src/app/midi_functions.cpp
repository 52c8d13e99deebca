#include "app/midi_functions.h"

#include <utility>

#include "instruments/sysex/check_sysexs.h"
#include "song/note_balance.h"
#include "song/note_length.h"

namespace tracksmith::app {

song::DecodeResult TMidiFunctions::DecodeMidiData(std::span<const std::uint8_t> file) {
    song::DecodeOptions options = workspace_.decodeOptions;
    options.minimumNoteLength = workspace_.noteLength.minimum;
    song::DecodeResult decoded = song::DecodeMidiData(workspace_.song, file, options, host_);
    if (workspace_.sysexOptions.automatic) {
        RunSysexCheck(instruments::SysexIndex(std::move(decoded.sysex), decoded.drumBanks));
    }
    CheckEventCounter();
    return decoded;
}

void TMidiFunctions::CheckSysexs() {
    RunSysexCheck(std::nullopt);
}

void TMidiFunctions::RunSysexCheck(std::optional<instruments::SysexIndex> index) {
    instruments::SysexSession session(workspace_.sysexOptions, host_);
    session.index = std::move(index);
    instruments::CheckSysexs(workspace_.song, workspace_.outputs.outputs.front().id, session);
    workspace_.preparation = std::move(session.report);
}

void TMidiFunctions::CheckForNoteOnsNoteOffs(const song::DecodeResult& decoded) {
    // What is paired throughout is in balance.
    workspace_.balanced = decoded.balanced || workspace_.skipNoteCheck ||
                          song::CheckForNoteOnsNoteOffs(workspace_.song).Balanced();
}

void TMidiFunctions::CheckForZeroLength(const song::DecodeResult& decoded) {
    workspace_.loadReport.Add(
        song::LoadChange::NotesLengthened,
        song::LengthenLoadedNotes(workspace_.song, decoded.shortNotes, workspace_.noteLength));
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
