#include "mixer/forms/transpose_box.h"

#include "base/forms/theme.h"
#include <QMouseEvent>
#include <QPainter>

#include "mixer/forms/strip_colours.h"
#include "mixer/forms/texts.h"
#include "mixer/transposition.h"

namespace tracksmith::forms {
namespace {

constexpr double kSignText = 0.8;
constexpr int kPixelsOfSemitone = 6;

} // namespace

TransposeBox::TransposeBox(QWidget* parent) : ControlSlider(parent) {
    setOrientation(Qt::Vertical);
    setRange(-mixer::kMostSemitones, mixer::kMostSemitones);
    setPageStep(12);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TransposeBox::ShowDrums(bool drums) {
    drums_ = drums;
    setEnabled(!drums);
    update();
}

QSize TransposeBox::sizeHint() const {
    return {fontMetrics().height() * 2, fontMetrics().height() + 2};
}

int TransposeBox::Travel() const {
    return 2 * mixer::kMostSemitones * kPixelsOfSemitone;
}

QString TransposeBox::TextOf(int value) const {
    return mixer_texts::Semitones(value);
}

std::optional<int> TransposeBox::ValueOf(const QString& text) const {
    bool isNumber = false;
    const int value = text.trimmed().toInt(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

// The text fills the box: a double click always means the file's pitch.
void TransposeBox::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit ResetWanted();
    }
}

void TransposeBox::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setFont(ScaledFont(font(), kSignText));
    if (drums_) {
        const QString drums = InLanguage(mixer_texts::kDrums, InForce());
        painter.setPen(DimText(palette()));
        painter.drawText(rect(), Qt::AlignRight | Qt::AlignVCenter,
                         painter.fontMetrics().elidedText(drums, Qt::ElideRight, width()));
    } else {
        painter.setPen(value() == 0
                           ? Mixed(DimText(palette()), palette().color(QPalette::Button), 0.6)
                           : SoloColour(palette()));
        const QString note = QStringLiteral("♪");
        painter.drawText(rect(), Qt::AlignRight | Qt::AlignVCenter,
                         value() == 0 ? note : note + TextOf(value()));
    }
    if (hasFocus()) {
        painter.setPen(QPen(Accent(palette()), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

} // namespace tracksmith::forms
