#pragma once

#include <cstdint>
#include <span>

#include "song/song.h"

namespace tracksmith::song {

/// A new short message (0x80-0xFC) of the pool at `tick`, not yet in a chain; `length` follows from
/// the status. Throws std::bad_alloc.
EventLink NewShortEvent(EventPool& pool, std::int32_t tick, std::uint8_t status, std::uint8_t data1,
                        std::uint8_t data2);

/// A new meta event of the pool at `tick` with a copy of `bytes`. Throws std::bad_alloc.
EventLink NewMetaEvent(EventPool& pool, std::int32_t tick, std::uint8_t type,
                       std::span<const std::uint8_t> bytes);

/// A new system exclusive event (status 0xF0) at `tick`; `bytes` follow the F0 and end with F7.
/// Throws std::bad_alloc.
EventLink NewSysexEvent(EventPool& pool, std::int32_t tick, std::span<const std::uint8_t> bytes);

/// Gives an empty track its creation values and its head event. Throws std::bad_alloc.
void InitTrack(Song& song, Track& track);

/// Links `event` behind the track's last event.
void AppendEvent(Track& track, EventLink event);

/// Links `event` directly behind `place`, which is in the track.
void InsertAfter(Track& track, EventLink place, EventLink event);

/// Links `event` at its tick: behind all events of the same tick, but never behind End of Track nor
/// before the head.
void InsertByTick(Track& track, EventLink event);

/// Takes `event` out of the chain without freeing it; its own links become null.
void UnlinkEvent(Track& track, EventLink event);

/// Unlinks `event` and frees it with its payload. Links of other events to it are not looked for.
void RemoveEvent(Song& song, Track& track, EventLink event);

} // namespace tracksmith::song
