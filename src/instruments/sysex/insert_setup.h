#pragma once

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

/// Set-up messages of instruments. Each goes to the chosen SysEx track unless the first 8 quarter
/// notes hold it already. Where no tick is named it is the insertion tick of the session (2 unless
/// the caller asks for another one), and the second message of a pair stands 2 ticks behind the
/// first. Templates are put with the bytes they have. They raise EMidiError when memory ends.
namespace tracksmith::instruments {

/// Set-up message of Ketron instruments.
void InsertKetronSysex(song::Song& song, SysexSession& session);

/// Set-up message of Ketron instruments and, unless the song has one of this kind (26 7B 0F 00),
/// the second message of SD1000 and its kin.
void InsertKetronSD1000Sysex(song::Song& song, SysexSession& session);

/// GM System On and, unless the song sets it itself, the message that makes part 1 melodic
/// (40 11 15 00, device 00), put as it stands, without a checksum.
void InsertLimexSysex(song::Song& song, SysexSession& session);

/// Insertion effects of the Motif-Rack ES, at tick 95.
void InsertMotifESInsertsSysex(song::Song& song, SysexSession& session);

/// Insertion effects of the Motif XF, at tick 95.
void InsertMotifXFInsertsSysex(song::Song& song, SysexSession& session);

/// Insertion effects of the Motif-Rack XS, at tick 95.
void InsertMotifXSInsertsSysex(song::Song& song, SysexSession& session);

/// Reverb level of the Sonic Cell, at tick 50.
void InsertSonicCellReverbLevelSysex(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
