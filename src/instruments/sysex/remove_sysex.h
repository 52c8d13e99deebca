#pragma once

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

/// Each of these gives every message of one kind length 0, in the whole of all tracks that are not
/// ignored; nothing else changes. They raise EMidiError when memory ends.
namespace tracksmith::instruments {

/// Exactly GM System On.
void RemoveGMSysex(song::Song& song, SysexSession& session);

/// Exactly GM2 System On.
void RemoveGM2Sysex(song::Song& song, SysexSession& session);

/// Exactly the set-up message of the Technics KN6000.
void RemoveKN6000Sysex(song::Song& song, SysexSession& session);

/// Exactly the GS Reset of device 10.
void RemoveRolandGSSysex(song::Song& song, SysexSession& session);

/// GS messages of device 10 (41 10 42) and its display messages (41 10 45 12). Messages of device
/// 00 stay: some instruments are set up with them.
void RemoveRolandSysex(song::Song& song, SysexSession& session);

/// Messages of Ketron instruments (26 7B).
void RemoveKetronSysex(song::Song& song, SysexSession& session);

/// Messages of Ketron (manufacturer 26) that are longer than the set-up messages.
void RemoveBigKetronSysex(song::Song& song, SysexSession& session);

/// All messages of Yamaha (manufacturer 43).
void RemoveYamahaSysex(song::Song& song, SysexSession& session);

/// XG messages of the effects (address 02) and insertion effects (03); the master equaliser (02 40)
/// stays with the option motifMasterEq.
void RemoveYamahaDSPSysex(song::Song& song, SysexSession& session);

/// XG messages of the master equaliser (address 02 40).
void RemoveYamahaMasterEQSysex(song::Song& song, SysexSession& session);

/// Messages of the vocal harmony of Yamaha arrangers, see IsVocalHarmony; with the option
/// yamahaAutoVocalHarmony only in songs without lyrics (RP-001, meta 0x05).
void RemoveYamahaVocalHarmonySysex(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
