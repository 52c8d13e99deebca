#include "app/lyrics/lyric_source.h"

#include <algorithm>
#include <utility>

namespace tracksmith::lyrics {
namespace {

constexpr std::string_view kKaraokeMark = "@K";

// Some programs write the zero that ends a text in memory.
std::string_view TextOf(const song::MidiEvent& event) {
    const auto bytes = event.Payload();
    std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    while (text.ends_with('\0')) {
        text.remove_suffix(1);
    }
    return text;
}

} // namespace

void LyricCollector::BeginTrack() {
    tracks_.emplace_back();
}

void LyricCollector::Meet(const song::MidiEvent& event) {
    const std::string_view text = TextOf(event);
    if (text.empty()) {
        return;
    }
    TrackTexts& track = tracks_.back();
    if (event.metaType == song::kMetaLyric) {
        track.lyrics.push_back({event.tick, text});
    } else if (text.front() == '@') {
        karaokeFile_ = karaokeFile_ || text.starts_with(kKaraokeMark);
    } else {
        track.marks += text.front() == '\\' || text.front() == '/' ? 1 : 0;
        track.texts.push_back({event.tick, text});
    }
}

LyricSource LyricCollector::Take() {
    LyricSource best;
    const auto offer = [&best](std::vector<RawText>& texts, bool karaoke) {
        if (texts.size() > best.texts.size()) {
            best = {std::move(texts), karaoke};
        }
    };
    for (TrackTexts& track : tracks_) {
        offer(track.lyrics, false);
    }
    // Remarks of the author are texts, too.
    constexpr std::size_t kLeastMarks = 2;
    for (TrackTexts& track : tracks_) {
        if (track.marks >= (karaokeFile_ ? 1 : kLeastMarks)) {
            offer(track.texts, true);
        }
    }
    return best;
}

} // namespace tracksmith::lyrics
