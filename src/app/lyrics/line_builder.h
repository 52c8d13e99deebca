#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "base/display_text.h"

#include "app/lyrics/lyric_source.h"
#include "app/lyrics/lyrics.h"

namespace tracksmith::lyrics {

/// Makes lines of the texts that are sung. Marks end a line ("/" before or behind, carriage return)
/// or a paragraph ("\", line feed); without any, long pauses do. Lines that are too long to be read
/// are broken between words.
class LineBuilder {
public:
    /// `division` is the song's ticks per quarter note.
    LineBuilder(const LyricSource& source, TextEncoding encoding, std::int32_t division);

    /// The lines. Chords that stand in the words ("%Am") go to `chords`.
    std::vector<Line> Build(std::vector<Chord>& chords);

private:
    void Take(const RawText& raw, std::vector<Chord>& chords);
    void Add(std::int32_t tick, std::string_view bytes);
    void EndLine();
    void FindShowTicks();

    const LyricSource& source_;
    TextEncoding encoding_;
    std::int32_t division_;
    /// No text says where a word ends: each is a word, or a part of one with a hyphen behind it.
    bool spaceless_ = false;
    bool hasMarks_ = false;
    /// Each text is a line of several words.
    bool wholeLines_ = false;
    std::vector<Line> lines_;
    Line line_;
};

} // namespace tracksmith::lyrics
