#pragma once

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

/// Each of these puts one reset message at tick 2 of the SysEx track, unless the first 8 quarter
/// notes of some track hold it; that track is then the SysEx track. A track whose events all lie
/// behind tick 2 receives none. They raise EMidiError when memory ends.
namespace tracksmith::instruments {

/// GM System On (RP-003).
void InsertGMSysex(song::Song& song, SysexSession& session);

/// GM2 System On (RP-024).
void InsertGM2Sysex(song::Song& song, SysexSession& session);

/// XG System On (Yamaha XG, address 00 00 7E).
void InsertXGSysex(song::Song& song, SysexSession& session);

/// Set-up message of the Technics KN6000.
void InsertKN6000Sysex(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
