#include "app/forms/lyrics/lyrics_model.h"

#include "base/forms/qt_text.h"

namespace tracksmith::forms {

void LyricsModel::TakeSong(const song::Song& song, std::optional<TextEncoding> encoding) {
    text_ = lyrics::ReadLyrics(song, encoding);
    place_ = lyrics::PlaceAt(text_, tick_);
    emit TextChanged();
}

void LyricsModel::ShowTick(std::int32_t tick) {
    tick_ = tick;
    const lyrics::Place place = lyrics::PlaceAt(text_, tick);
    if (place != place_) {
        place_ = place;
        emit PlaceChanged();
    }
}

QString LyricsModel::Line(std::ptrdiff_t fromCurrent) const {
    const std::ptrdiff_t line = static_cast<std::ptrdiff_t>(place_.line) + fromCurrent;
    return line < 0 || line >= std::ssize(text_.lines)
               ? QString()
               : ToQString(text_.lines[static_cast<std::size_t>(line)].text);
}

int LyricsModel::Sung() const {
    if (place_.line >= text_.lines.size()) {
        return 0;
    }
    const std::string_view line = text_.lines[place_.line].text;
    return static_cast<int>(ToQString(line.substr(0, place_.sung)).size());
}

QString LyricsModel::Chord() const {
    return place_.chord < text_.chords.size() ? ToQString(text_.chords[place_.chord].name)
                                              : QString();
}

// The ends of chords are passed over. Before the first chord the wrap-around leads to it.
QStringList LyricsModel::ChordsAhead(int most) const {
    QStringList ahead;
    for (std::size_t i = place_.chord + 1; i < text_.chords.size() && ahead.size() < most; ++i) {
        if (!text_.chords[i].name.empty()) {
            ahead << ToQString(text_.chords[i].name);
        }
    }
    return ahead;
}

} // namespace tracksmith::forms
