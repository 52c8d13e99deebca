#pragma once

#include <cstddef>
#include <cstdint>

#include "instruments/sysex/sysex_session.h"
#include "instruments/sysex/sysex_templates.h"
#include "song/song.h"

/// What the Insert operations have in common.
namespace tracksmith::instruments {

/// Looks for a message in the first 8 quarter notes (or up to `tick` where that is later): the
/// whole `message`, or any that begins with its first `compared` bytes (F0 counted). Its track then
/// becomes the SysEx track. Returns the event, null without one.
song::EventLink FindSetUp(song::Song& song, SysexSession& session, std::int32_t tick,
                          SysexBytes message, std::size_t compared);

/// Puts `message` at `tick` of the chosen track, behind what stands there, unless FindSetUp finds
/// it. Returns the event that was put, null for none.
song::EventLink InsertSetUp(song::Song& song, SysexSession& session, std::int32_t tick,
                            SysexBytes message, std::size_t compared);

/// InsertSetUp for the whole message.
song::EventLink InsertSetUp(song::Song& song, SysexSession& session, std::int32_t tick,
                            SysexBytes message);

} // namespace tracksmith::instruments
