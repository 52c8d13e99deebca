#include "app/lyrics/lyrics.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "app/lyrics/chord_event.h"
#include "app/lyrics/line_builder.h"
#include "app/lyrics/lyric_source.h"
#include "app/lyrics/song_encoding.h"

namespace tracksmith::lyrics {
namespace {

void ReadTrack(const song::Track& track, LyricCollector& texts, std::vector<Chord>& chords) {
    texts.BeginTrack();
    for (song::ConstEventLink event = track.first; event; event = event->next) {
        if (event->kind != song::kLongMessage) {
            continue;
        }
        if (event->IsMeta(song::kMetaLyric) || event->IsMeta(song::kMetaText)) {
            texts.Meet(*event);
        } else if (auto name = ChordOf(*event)) {
            chords.push_back({event->tick, std::move(*name)});
        }
    }
}

TextEncoding EncodingOf(const LyricSource& source) {
    std::vector<std::string_view> texts;
    texts.reserve(source.texts.size());
    for (const RawText& text : source.texts) {
        texts.push_back(text.bytes);
    }
    return LikelyEncoding(texts);
}

// In order, the last of those at one tick, and none that says what holds already.
void Arrange(std::vector<Chord>& chords) {
    std::ranges::stable_sort(chords, {}, &Chord::tick);
    std::vector<Chord> arranged;
    for (Chord& chord : chords) {
        if (!arranged.empty() && arranged.back().tick == chord.tick) {
            arranged.pop_back();
        }
        const bool isNew =
            arranged.empty() ? !chord.name.empty() : arranged.back().name != chord.name;
        if (isNew) {
            arranged.push_back(std::move(chord));
        }
    }
    chords = std::move(arranged);
}

} // namespace

Lyrics ReadLyrics(const song::Song& song, std::optional<TextEncoding> encoding) {
    Lyrics lyrics;
    LyricCollector collector;
    for (const song::Track& track : song.tracks) {
        if (track.ignored == 0) {
            ReadTrack(track, collector, lyrics.chords);
        }
    }
    const LyricSource source = collector.Take();
    LineBuilder builder(source, encoding ? *encoding : EncodingOf(source), song.division);
    lyrics.lines = builder.Build(lyrics.chords);
    Arrange(lyrics.chords);
    return lyrics;
}

Place PlaceAt(const Lyrics& lyrics, std::int32_t tick) {
    Place place;
    if (!lyrics.lines.empty()) {
        const auto next = std::ranges::upper_bound(lyrics.lines, tick, {}, &Line::showTick);
        place.line =
            static_cast<std::size_t>(std::max<std::ptrdiff_t>(next - lyrics.lines.begin() - 1, 0));
        const auto& syllables = lyrics.lines[place.line].syllables;
        const auto ahead = std::ranges::upper_bound(syllables, tick, {}, &Syllable::tick);
        place.sung = ahead == syllables.begin() ? 0 : (ahead - 1)->end;
    }
    const auto next = std::ranges::upper_bound(lyrics.chords, tick, {}, &Chord::tick);
    if (next != lyrics.chords.begin()) {
        place.chord = static_cast<std::size_t>(next - lyrics.chords.begin() - 1);
    }
    return place;
}

} // namespace tracksmith::lyrics
