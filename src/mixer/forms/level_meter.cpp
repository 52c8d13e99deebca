#include "mixer/forms/level_meter.h"

#include <algorithm>

#include "base/forms/theme.h"
#include <QLinearGradient>
#include <QPainter>

#include "mixer/forms/strip_colours.h"

namespace tracksmith::forms {
namespace {

constexpr unsigned kHighest = 127;
/// Frames for which a peak stays.
constexpr int kPeakFrames = 30;
/// From here on a level is shown as loud.
constexpr double kLoud = 0.75;

} // namespace

LevelMeter::LevelMeter(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

QSize LevelMeter::sizeHint() const {
    return {std::max(5, fontMetrics().height() / 2), fontMetrics().height() * 4};
}

int LevelMeter::Height(unsigned level) const {
    return static_cast<int>(level) * height() / static_cast<int>(kHighest);
}

void LevelMeter::ShowLevel(unsigned level) {
    const int before = Height(level_);
    const int peakBefore = Height(peak_);
    level_ = std::min(level, kHighest);
    if (level_ >= peak_ || peakFrames_ == 0) {
        peak_ = level_;
        peakFrames_ = kPeakFrames;
    } else {
        --peakFrames_;
    }
    if (Height(level_) != before || Height(peak_) != peakBefore) {
        update();
    }
}

void LevelMeter::Clear() {
    if (level_ > 0 || peak_ > 0) {
        level_ = peak_ = 0;
        peakFrames_ = 0;
        update();
    }
}

void LevelMeter::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    const int level = Height(level_);
    if (level > 0) {
        QLinearGradient colours(0, height(), 0, 0);
        colours.setColorAt(0, Accent(palette()));
        colours.setColorAt(kLoud, Mixed(Accent(palette()), SoloColour(palette()), 0.5));
        colours.setColorAt(1, SoloColour(palette()));
        painter.fillRect(QRect(0, height() - level, width(), level), colours);
    }
    if (peak_ > 0) {
        painter.fillRect(0, std::max(0, height() - Height(peak_)), width(), 2,
                         palette().color(QPalette::Text));
    }
}

} // namespace tracksmith::forms
