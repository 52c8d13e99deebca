#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "song/song.h"

namespace tracksmith::lyrics {

/// A text event; the bytes are the song's own.
struct RawText {
    std::int32_t tick = 0;
    std::string_view bytes;
};

/// The texts of a song that are sung, of one track.
struct LyricSource {
    std::vector<RawText> texts;
    /// They are text events of a karaoke file, not lyric events.
    bool karaoke = false;
};

/// Collects the text events of a song, track by track, and tells which of them are sung.
class LyricCollector {
public:
    /// To be called for each track before its events.
    void BeginTrack();
    void Meet(const song::MidiEvent& event);
    /// The track with most lyric events, or with most karaoke texts where these are more.
    LyricSource Take();

private:
    struct TrackTexts {
        std::vector<RawText> lyrics;
        std::vector<RawText> texts;
        /// Texts that begin with a mark of karaoke files.
        std::size_t marks = 0;
    };

    std::vector<TrackTexts> tracks_;
    bool karaokeFile_ = false;
};

} // namespace tracksmith::lyrics
