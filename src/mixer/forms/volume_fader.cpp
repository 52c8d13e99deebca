#include "mixer/forms/volume_fader.h"

#include <algorithm>

#include "base/forms/theme.h"
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>

#include "mixer/forms/strip_colours.h"
#include "mixer/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr double kScaleText = 0.9;
constexpr double kCountSize = 0.75;
constexpr int kScaleParts = 4;

void PaintTriangle(QPainter& painter, QPointF tip, double size) {
    painter.drawPolygon(
        QPolygonF({tip, tip + QPointF(-size, -size * 0.6), tip + QPointF(-size, size * 0.6)}));
}

} // namespace

VolumeFader::VolumeFader(int channel, QWidget* parent) : ControlSlider(parent), channel_(channel) {
    setOrientation(Qt::Vertical);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void VolumeFader::SetChanges(const std::bitset<128>& values, std::size_t changes) {
    if (values != values_ || changes != changes_) {
        values_ = values;
        changes_ = changes;
        update();
    }
}

QSize VolumeFader::sizeHint() const {
    return {fontMetrics().height() * 2, fontMetrics().height() * 12};
}

QSize VolumeFader::minimumSizeHint() const {
    return {fontMetrics().height() * 3 / 2, fontMetrics().height() * 5};
}

QString VolumeFader::TextOf(int value) const {
    return mixer_texts::ValueText(mixer::Control::Volume, value, InForce());
}

std::optional<int> VolumeFader::ValueOf(const QString& text) const {
    return mixer_texts::TypedValue(mixer::Control::Volume, text, InForce());
}

QRect VolumeFader::TextPlace() const {
    const int height = fontMetrics().height();
    return {changes_ > 0 ? width() / 2 : 0, rect().bottom() - height + 1,
            changes_ > 0 ? width() - width() / 2 : width(), height};
}

QRect VolumeFader::ChangesPlace() const {
    const int height = fontMetrics().height();
    return {0, rect().bottom() - height + 1, changes_ > 0 ? width() / 2 : 0, height};
}

// The middle of the handle goes from one end of this to the other.
QRect VolumeFader::TrackPlace() const {
    const int half = fontMetrics().height() / 2;
    return rect().adjusted(0, half, 0, -half - fontMetrics().height() - 2);
}

int VolumeFader::Y(int value) const {
    const QRect track = TrackPlace();
    return track.bottom() - track.height() * value / 127;
}

QRect VolumeFader::HandlePlace() const {
    const int height = fontMetrics().height();
    const int handle = std::min(width() * 2 / 3, height * 7 / 4);
    return {width() / 2 - handle / 2, Y(value()) - height / 2, handle, height};
}

std::optional<int> VolumeFader::ValueAt(const QPoint& at) const {
    const QRect track = TrackPlace();
    if (HandlePlace().contains(at) || at.y() > HandlePlace().height() / 2 + track.bottom()) {
        return std::nullopt;
    }
    return std::clamp((track.bottom() - at.y()) * 127 / std::max(track.height(), 1), 0, 127);
}

void VolumeFader::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && ChangesPlace().contains(event->position().toPoint())) {
        emit ChangesPressed(event->globalPosition().toPoint());
    } else {
        ControlSlider::mousePressEvent(event);
    }
}

QColor VolumeFader::Colour() const {
    return channel_ < 0 ? Accent(palette()) : ChannelColour(channel_, palette());
}

void VolumeFader::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    PaintScale(painter);
    PaintText(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintHandle(painter);
}

void VolumeFader::PaintScale(QPainter& painter) const {
    const QRect track = TrackPlace();
    const int middle = width() / 2;
    painter.setPen(DimText(palette()));
    for (int part = 0; part <= kScaleParts; ++part) {
        const int y = track.bottom() - track.height() * part / kScaleParts;
        painter.drawLine(width() * 5 / 6, y, width() - 2, y);
    }
    painter.fillRect(middle - 1, track.top(), 3, track.height(), palette().color(QPalette::Mid));
    painter.fillRect(middle, track.top(), 1, track.height(), palette().color(QPalette::Base));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Colour());
    const double size = fontMetrics().height() * 0.4;
    for (std::size_t value = 0; value < values_.size(); ++value) {
        if (values_[value]) {
            PaintTriangle(painter, QPointF(size + 1, Y(static_cast<int>(value))), size);
        }
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

// Its focus shows as a ring; hollow where the song never sets the volume.
void VolumeFader::PaintHandle(QPainter& painter) const {
    const QRectF handle = QRectF(HandlePlace()).adjusted(0.5, 0.5, -0.5, -0.5);
    const QColor body = Mixed(palette().color(QPalette::Text), palette().color(QPalette::Button),
                              isEnabled() ? 0.85 : 0.3);
    const bool full = !Hollow() || channel_ < 0;
    QPen outline(hasFocus() ? Accent(palette()) : body, hasFocus() ? 2 : 1);
    outline.setStyle(full || hasFocus() ? Qt::SolidLine : Qt::DashLine);
    painter.setPen(outline);
    painter.setBrush(full ? QBrush(body) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(handle, 3, 3);
    if (full) {
        painter.fillRect(QRectF(handle.left() + 2, handle.center().y() - 1, handle.width() - 4, 2),
                         Colour());
    }
}

void VolumeFader::PaintText(QPainter& painter) const {
    painter.setFont(ScaledFont(font(), kScaleText));
    painter.setPen(Hollow() && channel_ >= 0 ? DimText(palette())
                                             : palette().color(QPalette::ButtonText));
    const QString text = channel_ < 0 ? TextOf(value()) : ShownText();
    painter.drawText(TextPlace(), Qt::AlignCenter, text);
    if (changes_ > 0) {
        const QRect place = ChangesPlace();
        const double size = fontMetrics().height() * 0.4;
        painter.setFont(ScaledFont(font(), kCountSize));
        painter.setPen(DimText(palette()));
        painter.drawText(place.adjusted(static_cast<int>(size) + 3, 0, 0, 0),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                         changes_ > 99 ? QStringLiteral("99+") : QString::number(changes_));
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Colour());
        PaintTriangle(painter, QPointF(size + 1, place.center().y()), size);
    }
}

} // namespace tracksmith::forms
