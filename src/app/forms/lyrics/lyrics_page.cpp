#include "app/forms/lyrics/lyrics_page.h"

#include <algorithm>

#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include "app/forms/lyrics/lyrics_model.h"
#include "app/forms/lyrics/sung_line.h"
#include "app/forms/lyrics/texts.h"

namespace tracksmith::forms {
namespace {

// Shares of the page's height.
constexpr double kMargin = 0.05;
constexpr double kChords = 0.16;
constexpr double kLargest = 0.13;
constexpr double kSmallest = 0.04;
/// Rows that the longest line of the song may take, and how full a row gets.
constexpr int kRows = 2;
constexpr double kFull = 0.88;
/// Sizes of the other lines against the current one.
constexpr double kOthers = 0.62;
/// Distance of the others in heights of their own.
constexpr double kLineStep = 1.5;
constexpr int kLinesAhead = 2;
constexpr int kChordsOnPage = 3;
constexpr double kAnySize = 100;

} // namespace

LyricsPage::LyricsPage(LyricsModel& model, Language language, QWidget* owner)
    : QWidget(owner, Qt::Window), model_(model), language_(language) {
    setObjectName(QStringLiteral("LyricsPage"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    connect(&model_, &LyricsModel::PlaceChanged, this, qOverload<>(&QWidget::update));
    connect(&model_, &LyricsModel::TextChanged, this, [this] {
        FindSize();
        update();
    });
    Retranslate(language);
}

void LyricsPage::ShowLarge() {
    QScreen* screen = parentWidget()->screen();
    winId(); // a window of the system that can be put on a screen
    windowHandle()->setScreen(screen);
    setGeometry(screen->geometry());
    showFullScreen();
    activateWindow();
    setFocus();
}

void LyricsPage::Retranslate(Language language) {
    language_ = language;
    setWindowTitle(InLanguage(lyrics_texts::kLyrics, language));
    setAccessibleName(windowTitle());
    update();
}

void LyricsPage::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void LyricsPage::resizeEvent(QResizeEvent* event) {
    FindSize();
    QWidget::resizeEvent(event);
}

// One size for the whole song, so that the text does not change its size from line to line.
void LyricsPage::FindSize() {
    const QFontMetricsF metrics(FontOf(kAnySize));
    double widest = 1;
    for (const lyrics::Line& line : model_.Text().lines) {
        widest = std::max(widest, metrics.horizontalAdvance(ToQString(line.text)));
    }
    const double room = width() - 2 * height() * kMargin;
    size_ = std::clamp(kAnySize * kRows * kFull * room / widest, height() * kSmallest,
                       height() * kLargest);
}

QFont LyricsPage::FontOf(double pixels) const {
    QFont large = font();
    large.setPixelSize(std::max(1, qRound(pixels)));
    return large;
}

void LyricsPage::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.fillRect(rect(), IsDark(palette()) ? Qt::black : Qt::white);
    const double margin = height() * kMargin;
    const QRectF inside = QRectF(rect()).adjusted(margin, margin / 2, -margin, -margin / 2);
    const double small = height() * kSmallest / 2;
    PaintText(painter, {inside.left(), inside.bottom() - small * 1.5, inside.width(), small * 1.5},
              InLanguage(lyrics_texts::kLeave, language_), small, DimText(palette()));
    if (model_.Text().Empty()) {
        PaintText(painter, inside, InLanguage(lyrics_texts::kNone, language_),
                  height() * kSmallest * 1.2, palette().color(QPalette::WindowText));
        return;
    }
    const bool both = !model_.Text().chords.empty() && !model_.Text().lines.empty();
    const double chords = both ? height() * kChords : inside.height() / 2;
    if (!model_.Text().chords.empty()) {
        PaintChords(painter, {inside.left(), inside.top(), inside.width(), chords});
    }
    if (!model_.Text().lines.empty()) {
        PaintLines(painter, inside.adjusted(0, both ? chords : 0, 0, -small * 2));
    }
}

void LyricsPage::PaintText(QPainter& painter, const QRectF& rect, const QString& text,
                           double pixels, const QColor& colour) const {
    // What does not fit becomes smaller, down to a half.
    const double needed = QFontMetricsF(FontOf(pixels)).horizontalAdvance(text);
    const double fit = needed > rect.width() ? std::max(0.5, rect.width() / needed) : 1;
    painter.setFont(FontOf(pixels * fit));
    painter.setPen(colour);
    painter.drawText(rect, Qt::AlignCenter | Qt::TextSingleLine,
                     QFontMetricsF(painter.font()).elidedText(text, Qt::ElideRight, rect.width()));
}

// The one in force on the left, what comes to the right of it.
void LyricsPage::PaintChords(QPainter& painter, const QRectF& rect) const {
    const double size = rect.height() * 0.6;
    const double now = rect.width() * 0.4;
    PaintText(painter, {rect.left(), rect.top(), now, rect.height()}, model_.Chord(), size,
              Accent(palette()));
    const double step = (rect.width() - now) / kChordsOnPage;
    double left = rect.left() + now;
    for (const QString& chord : model_.ChordsAhead(kChordsOnPage)) {
        PaintText(painter, {left, rect.top(), step, rect.height()}, chord, size * kOthers,
                  DimText(palette()));
        left += step;
    }
}

// The current line may take all its rows without moving the others.
void LyricsPage::PaintLines(QPainter& painter, const QRectF& rect) const {
    const double row = QFontMetricsF(FontOf(size_)).height();
    const double other = row * kOthers;
    const double step = other * kLineStep;
    const double all = step + kRows * row + kLinesAhead * step;
    const double top = rect.top() + std::max(0.0, (rect.height() - all) / 2);
    PaintText(painter, {rect.left(), top, rect.width(), other}, model_.Line(-1), size_ * kOthers,
              DimText(palette()));
    const QRectF current(rect.left(), top + step, rect.width(), kRows * row);
    PaintCurrent(painter, current);
    for (int ahead = 1; ahead <= kLinesAhead; ++ahead) {
        const QColor colour =
            ahead == 1 ? palette().color(QPalette::WindowText) : DimText(palette());
        PaintText(painter,
                  {rect.left(), current.bottom() + step * ahead - other, rect.width(), other},
                  model_.Line(ahead), size_ * kOthers, colour);
    }
}

void LyricsPage::PaintCurrent(QPainter& painter, const QRectF& rect) const {
    constexpr double kStep = 0.92;
    constexpr double kTolerance = 1.02; // for rounding
    for (double size = size_;; size *= kStep) {
        const SungLine line(model_.Line(0), model_.Sung(), FontOf(size), rect.width(),
                            SungLine::Rows::Centred);
        if (line.Height() <= rect.height() * kTolerance || size < size_ / 4) {
            line.Paint(painter, {rect.left(), rect.top() + (rect.height() - line.Height()) / 2},
                       palette().color(QPalette::WindowText));
            return;
        }
    }
}

} // namespace tracksmith::forms
