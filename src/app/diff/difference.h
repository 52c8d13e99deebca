#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tracksmith::diff {

/// What a difference is about.
enum class Kind : std::uint8_t { Voice, Controller, Note, Message, Tempo, Text, Count };

inline constexpr std::size_t kKinds = static_cast<std::size_t>(Kind::Count);

/// What happened.
enum class Change : std::uint8_t {
    Changed,    ///< other values at the same places
    Added,      ///< only in the later song
    Removed,    ///< only in the earlier song
    EndsMoved,  ///< notes are longer or shorter
    Transposed, ///< notes have another pitch, all by the same distance
    Moved,      ///< the same values in the same order stand at other places; not for notes
    Cut,        ///< a stretch of the earlier song is not in the later one
    Copied,     ///< a stretch of the later one stands elsewhere in the earlier one too
    Inserted    ///< any other stretch that is only in the later one
};

/// The channel of what concerns all of them.
inline constexpr std::uint8_t kWholeSong = 0xFF;
/// Most places that a difference names; the count goes on.
inline constexpr std::size_t kMostPlaces = 1000;

/// Beyond the controllers of MIDI, in Difference::control.
inline constexpr std::uint16_t kBend = 128;
inline constexpr std::uint16_t kChannelPressure = 129;
inline constexpr std::uint16_t kPolyPressure = 130;
/// Of Kind::Tempo, beyond the types of meta events.
inline constexpr std::uint16_t kSongLength = 256;
inline constexpr std::uint16_t kResolution = 257;

/// One difference between two songs: of a channel, a kind and a control.
struct Difference {
    /// 0-15, or kWholeSong.
    std::uint8_t channel = kWholeSong;
    Kind kind = Kind::Note;
    Change change = Change::Changed;
    /// Controller, or type of the meta event.
    std::uint16_t control = 0;
    /// How often: events, notes; for a stretch the events at its edges that only set again what is
    /// set elsewhere, and ends of notes. Others there have rows of their own.
    std::int64_t count = 0;
    /// The first value before and after: of a voice MSB, LSB and program in a byte each, of a tempo
    /// microseconds, of notes that are transposed the distance in `after`.
    std::int64_t before = 0;
    std::int64_t after = 0;
    /// All values moved by the same distance.
    bool sameDistance = true;
    /// The first text or message as its bytes; empty where there is none.
    std::string bytesBefore;
    std::string bytesAfter;
    /// First place in each song in ticks. Of a stretch its start; of a copied one `source` is the
    /// start of what was copied, in the earlier song.
    std::int32_t tickBefore = 0;
    std::int32_t tickAfter = 0;
    std::int32_t source = 0;
    /// Of a stretch, in ticks.
    std::int32_t length = 0;
    /// Places in the later song, in order.
    std::vector<std::int32_t> ticks;
};

/// How two songs differ.
struct Differences {
    /// The whole song first, then by channel; within by kind and place.
    std::vector<Difference> rows;
    /// Of each Kind, the sum of the rows' counts.
    std::array<std::int64_t, kKinds> counts{};

    bool Same() const { return rows.empty(); }
};

} // namespace tracksmith::diff
