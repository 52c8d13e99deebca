#include "app/forms/lyrics/lyrics_band.h"

#include <algorithm>

#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QPainter>

#include "app/forms/lyrics/lyrics_model.h"
#include "app/forms/lyrics/sung_line.h"
#include "app/forms/lyrics/texts.h"

namespace tracksmith::forms {
namespace {

/// Size of what is current.
constexpr double kLarge = 1.45;
/// The least to which a long line shrinks.
constexpr double kLeast = 0.9;
constexpr int kChordsAhead = 3;
/// Shares of the words' room: the line before, and the end of the current one.
constexpr double kBefore = 0.24;
constexpr double kCurrentEnd = 0.78;
/// Most of the width that chords take beside words.
constexpr double kMostForChords = 0.4;

double WidthOf(const QFont& font, const QString& text) {
    return QFontMetricsF(font).horizontalAdvance(text);
}

void PaintElided(QPainter& painter, const QRectF& rect, const QString& text, const QColor& colour,
                 Qt::Alignment side = Qt::AlignLeft) {
    painter.setPen(colour);
    const int flags =
        static_cast<int>(side | Qt::AlignVCenter) | static_cast<int>(Qt::TextSingleLine);
    painter.drawText(rect, flags,
                     QFontMetricsF(painter.font()).elidedText(text, Qt::ElideRight, rect.width()));
}

} // namespace

LyricsBand::LyricsBand(LyricsModel& model, QWidget* parent) : QWidget(parent), model_(model) {
    setObjectName(QStringLiteral("LyricsBand"));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    connect(&model_, &LyricsModel::TextChanged, this, &LyricsBand::ShowText);
    connect(&model_, &LyricsModel::PlaceChanged, this, &LyricsBand::TellPlace);
    ShowText();
}

void LyricsBand::ShowText() {
    widestChord_ = 0;
    for (const lyrics::Chord& chord : model_.Text().chords) {
        widestChord_ = std::max(widestChord_, WidthOf(font(), ToQString(chord.name)));
    }
    setVisible(!model_.Text().Empty());
    TellPlace();
}

// A screen reader finds the current line and chord in the description.
void LyricsBand::TellPlace() {
    setAccessibleDescription(model_.Chord() + QStringLiteral(" ") + model_.Line(0));
    update();
}

void LyricsBand::Retranslate(Language language) {
    setAccessibleName(InLanguage(lyrics_texts::kLyrics, language));
}

QSize LyricsBand::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 80,
            QFontMetrics(ScaledFont(font(), kLarge)).height() + Gap() / 2};
}

double LyricsBand::ChordsWidth() const {
    const double all = widestChord_ * (kLarge + kChordsAhead) + Gap() * (kChordsAhead + 3);
    return widestChord_ <= 0             ? 0
           : model_.Text().lines.empty() ? width()
                                         : std::min(all, width() * kMostForChords);
}

void LyricsBand::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    const double chords = ChordsWidth();
    PaintWords(painter, QRectF(rect()).adjusted(0, 0, -chords, 0));
    PaintChords(painter, QRectF(width() - chords, 0, chords, height()));
}

void LyricsBand::PaintWords(QPainter& painter, const QRectF& rect) const {
    if (model_.Text().lines.empty()) {
        return;
    }
    const double before = rect.width() * kBefore;
    const double end = rect.width() * kCurrentEnd;
    painter.setFont(font());
    const QColor dim = DimText(palette());
    PaintElided(painter, {0, 0, before - Gap(), rect.height()}, model_.Line(-1), dim);
    PaintElided(painter, {end + Gap(), 0, rect.width() - end - Gap(), rect.height()},
                model_.Line(1), dim);
    PaintCurrent(painter, {before, 0, end - before, rect.height()});
}

// Too long a line gets smaller; where that does not suffice what is sung is seen.
void LyricsBand::PaintCurrent(QPainter& painter, const QRectF& rect) const {
    const QString text = model_.Line(0);
    const double needed = WidthOf(ScaledFont(font(), kLarge), text);
    const double factor =
        std::clamp(needed > 0 ? kLarge * rect.width() / needed : kLarge, kLeast, kLarge);
    const SungLine line(text, model_.Sung(), ScaledFont(font(), factor), needed,
                        SungLine::Rows::One);
    constexpr double kAhead = 0.6; // of the room, where the sung part of a moved line ends
    const double most = std::max(0.0, line.Width() - rect.width());
    const double moved = std::clamp(line.SungWidth() - rect.width() * kAhead, 0.0, most);
    painter.save();
    painter.setClipRect(rect);
    line.Paint(painter, {rect.left() - moved, rect.top() + (rect.height() - line.Height()) / 2},
               palette().color(QPalette::WindowText));
    painter.restore();
}

void LyricsBand::PaintChords(QPainter& painter, const QRectF& rect) const {
    if (rect.width() <= 0) {
        return;
    }
    QFont large = ScaledFont(font(), kLarge);
    large.setBold(true);
    painter.setFont(large);
    const double now = widestChord_ * kLarge + Gap() * 2;
    PaintElided(painter, {rect.left() + Gap(), rect.top(), now, rect.height()}, model_.Chord(),
                Accent(palette()));
    painter.setFont(font());
    double left = rect.left() + Gap() * 2 + now;
    for (const QString& chord : model_.ChordsAhead(kChordsAhead)) {
        PaintElided(painter, {left, rect.top(), rect.right() - left, rect.height()}, chord,
                    palette().color(QPalette::WindowText));
        left += WidthOf(font(), chord) + Gap() * 1.5;
    }
}

} // namespace tracksmith::forms
