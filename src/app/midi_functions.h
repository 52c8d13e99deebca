#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "base/message_host.h"

#include "app/session/workspace.h"
#include "instruments/sysex/sysex_index.h"
#include "mixer/controller_index.h"
#include "song/midi_file_reader.h"
#include "song/note_pairing.h"
#include "song/time_map.h"

namespace tracksmith::app {

/// The song-wide operations under their names, for windows and commands: each forwards to the
/// function of the folder that owns the work. No logic here beyond sequences that cross folders.
/// Used from the thread that owns the workspace.
class TMidiFunctions {
public:
    /// Both must outlive this object.
    TMidiFunctions(session::Workspace& workspace, MessageHost& host)
        : workspace_(workspace), host_(host) {}

    /// Decodes a Standard MIDI File into the emptied song and then runs the instrument's check.
    /// Raises EMidiError.
    song::DecodeResult DecodeMidiData(std::span<const std::uint8_t> file);

    /// Takes no action; called where the load sequence names it.
    void CheckEventCounter() {}

    /// Puts the messages that the instrument of the first output needs into the song, takes out
    /// those of other instruments, and keeps the report in the workspace.
    void CheckSysexs();

    /// Removal of count-ins by time signature: empty until that tool is built.
    void RemoveCountIns() {}

    /// What the song sets first on every channel: the values that count as in effect at its start.
    /// The mixer shows them as soon as it hears of the song.
    mixer::FirstValues SetFirstValues() const { return mixer::ReadFirstValues(workspace_.song); }

    /// The balance of note-ons and note-offs of the song that has just been decoded, into the
    /// workspace.
    void CheckForNoteOnsNoteOffs(const song::DecodeResult& decoded);

    /// The minimum length for the notes of the song that has just been decoded, and how many got
    /// it into the load report.
    void CheckForZeroLength(const song::DecodeResult& decoded);

    /// Pairs note-offs with their note-ons: see song/note_pairing.h. The decoder has done it for
    /// what it read.
    void SetNoteOnOffPointers() { song::SetNoteOnOffPointers(workspace_.song); }

    /// Tempo and time signature: see song/time_map.h.
    void ReloadTempoTimeSign() { song::ReloadTempoTimeSign(workspace_.song); }
    void SetTimeZones() { song::SetTimeZones(workspace_.song); }
    void UpdateTimeZones() { song::UpdateTimeZones(workspace_.song); }
    void SetTimePositions() { song::SetTimePositions(workspace_.song); }
    void UpdateTimeZoneData() { song::UpdateTimeZoneData(workspace_.song); }

    /// ReloadTempoTimeSign, SetTimeZones and SetTimePositions after decoding, without the walks
    /// whose results the decoder already has.
    void SetTimesAfterDecoding(const song::DecodeResult& decoded);

private:
    void RunSysexCheck(std::optional<instruments::SysexIndex> index);

    session::Workspace& workspace_;
    MessageHost& host_;
};

} // namespace tracksmith::app
