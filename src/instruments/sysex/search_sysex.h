#pragma once

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

/// Each of these keeps the messages of one kind that the song has, for the editors that show and
/// replace them: the list of its kind in the session is made anew, the song stays as it is. They
/// raise EMidiError when memory ends.
namespace tracksmith::instruments {

/// Part equalisers of Korg Pa instruments.
void SearchKorgPartEQSysex(song::Song& song, SysexSession& session);

/// Part equalisers of the Roland BK-9.
void SearchRolandBK9PartEQSysex(song::Song& song, SysexSession& session);

/// Part equalisers and other part settings of the studio set of the Roland Integra-7 (address
/// 18 00).
void SearchRolandIntegra7PartEQSysex(song::Song& song, SysexSession& session);

/// Organ flutes of Yamaha arrangers, see IsOrganFlute.
void SearchOrganFluteSysex(song::Song& song, SysexSession& session);

/// Insertion effects of the Sound Canvas (address 40 03, and 40 4x 22 that sends part x through
/// them), of any device. Source: Roland's MIDI implementation of SC-88Pro and later.
void SearchRolandSCFXInsertSysex(song::Song& song, SysexSession& session);

/// XG insertion effects (address 03).
void SearchYamahaInsertionSysex(song::Song& song, SysexSession& session);

/// Messages of the Motif-Rack ES itself (43 1n 7F 00), but for its set-up message.
void SearchMotifESSysex(song::Song& song, SysexSession& session);

/// Messages of the Motif XF itself (43 1n 7F 12), but for its set-up message.
void SearchMotifXFSysex(song::Song& song, SysexSession& session);

/// Messages of the Motif-Rack XS itself (43 1n 7F 03), but for its set-up message.
void SearchMotifXSSysex(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
