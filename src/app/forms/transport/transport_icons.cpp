#include "app/forms/transport/transport_icons.h"

#include <utility>

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

namespace tracksmith::forms {
namespace {

// Shapes lie in a square from -1 to 1.
QPolygonF Triangle(double left, double right) {
    return {QPolygonF{{left, -0.7}, {right, 0}, {left, 0.7}}};
}

QPainterPath Arrow(double left, double right) {
    QPainterPath path;
    path.addPolygon(Triangle(left, right));
    path.closeSubpath();
    return path;
}

QPainterPath ToStartShape() {
    QPainterPath path = Arrow(0.7, -0.5);
    path.addRect(-0.75, -0.7, 0.2, 1.4);
    return path;
}

QPainterPath TwoArrows(double direction) {
    QPainterPath path = Arrow(-0.8 * direction, 0);
    path.addPath(Arrow(0, 0.8 * direction));
    return path;
}

QPainterPath LoopShape() {
    QPainterPath ring;
    ring.arcMoveTo(-0.65, -0.65, 1.3, 1.3, 60);
    ring.arcTo(-0.65, -0.65, 1.3, 1.3, 60, 300);
    QPainterPathStroker pen;
    pen.setWidth(0.22);
    QPainterPath path = pen.createStroke(ring);
    QPainterPath head;
    head.addPolygon(QPolygonF{{0.25, -0.95}, {0.85, -0.55}, {0.2, -0.2}});
    head.closeSubpath();
    return path.united(head);
}

QPainterPath PanicShape() {
    QPainterPath path;
    path.addRoundedRect(-0.14, -0.8, 0.28, 1.05, 0.12, 0.12);
    path.addEllipse(-0.18, 0.42, 0.36, 0.36);
    return path;
}

QPainterPath StopShape() {
    QPainterPath path;
    path.addRect(-0.6, -0.6, 1.2, 1.2);
    return path;
}

QPainterPath ShapeOf(TransportSign sign) {
    switch (sign) {
        case TransportSign::ToStart:
            return ToStartShape();
        case TransportSign::Back:
            return TwoArrows(-1);
        case TransportSign::Play:
            return Arrow(-0.55, 0.75);
        case TransportSign::Stop:
            return StopShape();
        case TransportSign::Forward:
            return TwoArrows(1);
        case TransportSign::Loop:
            return LoopShape();
        default:
            return PanicShape();
    }
}

// Paints a shape at whatever size and scale is asked for.
class SignEngine : public QIconEngine {
public:
    SignEngine(TransportSign sign, QPalette palette)
        : shape_(ShapeOf(sign)), palette_(std::move(palette)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role = state == QIcon::On ? QPalette::Highlight : QPalette::ButtonText;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center());
        const double half = std::min(rect.width(), rect.height()) / 2.0;
        painter->scale(half, half);
        painter->fillPath(shape_, palette_.color(group, role));
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect({0, 0}, size), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new SignEngine(*this); }

private:
    QPainterPath shape_;
    QPalette palette_;
};

} // namespace

QIcon TransportIcon(TransportSign sign, const QPalette& palette) {
    return QIcon(new SignEngine(sign, palette));
}

} // namespace tracksmith::forms
