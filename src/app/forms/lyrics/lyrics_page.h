#pragma once

#include "base/text.h"
#include <QWidget>

namespace tracksmith::forms {

class LyricsModel;

/// The words and chords on the whole screen, as large as they fit, on black or white as the theme
/// is. Escape leaves. Its object name is "LyricsPage"; it deletes itself.
class LyricsPage : public QWidget {
    Q_OBJECT

public:
    /// Belongs to `owner`, on whose screen it is shown by ShowLarge. `model` must outlive it.
    LyricsPage(LyricsModel& model, Language language, QWidget* owner);

    /// Covers the screen that the owner is on.
    void ShowLarge();
    void Retranslate(Language language);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void FindSize();
    QFont FontOf(double pixels) const;
    void PaintText(QPainter& painter, const QRectF& rect, const QString& text, double pixels,
                   const QColor& colour) const;
    void PaintChords(QPainter& painter, const QRectF& rect) const;
    void PaintLines(QPainter& painter, const QRectF& rect) const;
    void PaintCurrent(QPainter& painter, const QRectF& rect) const;

    LyricsModel& model_;
    Language language_;
    /// Height of the current line's font in pixels.
    double size_ = 1;
};

} // namespace tracksmith::forms
