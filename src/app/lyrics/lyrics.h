#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/display_text.h"

#include "song/song.h"

/// What is read along while a song plays: its words line by line, and its chords.
namespace tracksmith::lyrics {

/// A part of a line that is sung from its tick on.
struct Syllable {
    std::int32_t tick = 0;
    /// Bytes of the line's text up to the syllable's end.
    std::uint32_t end = 0;
};

/// A line of the words.
struct Line {
    /// UTF-8, safe to show.
    std::string text;
    std::vector<Syllable> syllables;
    /// Where the line becomes the current one, before it is sung.
    std::int32_t showTick = 0;
};

/// A chord that holds from its tick on; an empty name ends the one before.
struct Chord {
    std::int32_t tick = 0;
    /// As arranger keyboards show it: "Am7", "Bb/D".
    std::string name;
};

/// The words and chords of a song in playing order.
struct Lyrics {
    std::vector<Line> lines;
    std::vector<Chord> chords;

    bool Empty() const { return lines.empty() && chords.empty(); }
};

/// What is current at a place of a song.
struct Place {
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// The current line: before the words begin the first one; kNone without words.
    std::size_t line = kNone;
    /// Bytes of its text that have been sung, the syllable that sounds included.
    std::size_t sung = 0;
    /// The chord in force; kNone before the first.
    std::size_t chord = kNone;

    friend bool operator==(const Place&, const Place&) = default;
};

/// Reads lyric events (SMF lyric meta events, RP-017), else karaoke texts (text events with
/// "@", "\" and "/" marks), of the track that has most of them, and the chord events of all tracks.
/// Ignored tracks are left out. Without an `encoding` the likeliest one is taken. Linear in the
/// number of events; throws std::bad_alloc.
Lyrics ReadLyrics(const song::Song& song, std::optional<TextEncoding> encoding = {});

/// What is current at `tick`. Logarithmic.
Place PlaceAt(const Lyrics& lyrics, std::int32_t tick);

} // namespace tracksmith::lyrics
