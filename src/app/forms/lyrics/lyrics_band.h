#pragma once

#include "base/text.h"
#include <QWidget>

namespace tracksmith::forms {

class LyricsModel;

/// The words and chords in a band: the line before, the current one with what has been sung, the
/// next; the chord in force and the next three. Takes no room for a song that has neither. Each
/// part keeps its place, so that nothing jumps while playing.
class LyricsBand : public QWidget {
    Q_OBJECT

public:
    /// `model` must outlive the band.
    explicit LyricsBand(LyricsModel& model, QWidget* parent = nullptr);

    void Retranslate(Language language);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void ShowText();
    void TellPlace();
    double ChordsWidth() const;
    void PaintWords(QPainter& painter, const QRectF& rect) const;
    void PaintCurrent(QPainter& painter, const QRectF& rect) const;
    void PaintChords(QPainter& painter, const QRectF& rect) const;

    LyricsModel& model_;
    /// Width of the longest name of a chord in the font of the others.
    double widestChord_ = 0;
};

} // namespace tracksmith::forms
