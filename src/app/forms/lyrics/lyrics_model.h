#pragma once

#include <optional>

#include <QObject>
#include <QString>
#include <QStringList>

#include "app/lyrics/lyrics.h"

namespace tracksmith::forms {

/// The words and chords of the song in the window and what is current of them. Whoever shows them
/// repaints when it says so, which is only when something else is to be seen.
class LyricsModel : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Reads another song, or the same in another encoding; the likeliest one for none.
    void TakeSong(const song::Song& song, std::optional<TextEncoding> encoding);
    /// The music is at `tick`.
    void ShowTick(std::int32_t tick);

    const lyrics::Lyrics& Text() const { return text_; }

    /// A line counted from the current one, empty where there is none.
    QString Line(std::ptrdiff_t fromCurrent) const;
    /// Characters of the current line that have been sung.
    int Sung() const;
    /// The chord in force, empty for none.
    QString Chord() const;
    /// The next chords, `most` at most.
    QStringList ChordsAhead(int most) const;

signals:
    /// Other words or chords are shown.
    void TextChanged();
    /// Another line, syllable or chord is current.
    void PlaceChanged();

private:
    lyrics::Lyrics text_;
    lyrics::Place place_;
    std::int32_t tick_ = 0;
};

} // namespace tracksmith::forms
