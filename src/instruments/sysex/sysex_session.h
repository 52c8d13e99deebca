#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/message_host.h"

#include "instruments/preparation.h"
#include "instruments/sysex/sysex_index.h"
#include "instruments/sysex/sysex_templates.h"

namespace tracksmith::instruments {

/// Tick of a set-up message for which nothing else is said.
inline constexpr std::int32_t kSetUpTick = 2;

/// What the Search operations look for.
enum class SysexFind : std::uint8_t {
    KorgPartEq,
    Bk9PartEq,
    Integra7PartEq,
    OrganFlute,
    ScInsertEffect,
    YamahaInsertEffect,
    MotifMessage,
    Count
};

/// A change of the song that the report will name.
struct SysexChange {
    SysexNote::What what = SysexNote::What::Inserted;
    song::SysexPlace place;
};

/// What the system-exclusive operations share while they work on one song: what the caller asks
/// for and what they found and did. One thread.
struct SysexSession {
    /// `messages` shows what goes wrong and must outlive the session.
    SysexSession(SysexOptions sysexOptions, MessageHost& messages)
        : options(sysexOptions), host(messages) {}

    SysexOptions options;
    MessageHost& host;
    /// Track that the calling form asks for with the option fixedTrack, from 0; -1 for none.
    std::int32_t callingTrack = -1;
    /// Tick of the next set-up message. InsertGSSysex and its like leave their own tick here.
    std::int32_t insertionTick = kSetUpTick;

    /// Track in which the last reset was found or put, -1 for none yet.
    std::int32_t sysexTrack = -1;
    /// The last InsertGSSysex (or one like it) put the reset itself.
    bool resetInserted = false;
    /// The GS reset that it found or put.
    song::EventLink reset;
    /// Rhythm messages of the 16 channels, placeholders of length 0 included.
    std::array<song::EventLink, 16> partEvents{};
    /// Value of each rhythm message: 0 melody, 1 and 2 drum maps.
    std::array<std::uint8_t, 16> drumMap{};
    /// Resets for which the chosen track has no place, their F0 included.
    std::vector<SysexBytes> homelessResets;
    /// What the Search operations found, by SysexFind.
    std::array<std::vector<song::SysexPlace>, static_cast<std::size_t>(SysexFind::Count)> found;

    /// All system-exclusive events. Hand over what the decoder collected, or leave it empty: it is
    /// then collected when first needed. Empty it after other changes of the song.
    std::optional<SysexIndex> index;

    /// What was done since the last CheckSysexs began, as notes are made of it.
    std::vector<SysexChange> changes;
    /// What the last CheckSysexs did.
    PreparationReport report;
};

} // namespace tracksmith::instruments
