#include "mixer/forms/control_slider.h"

#include <algorithm>

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QWheelEvent>

#include "mixer/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr int kCoarseStep = 4;
constexpr int kPageStep = 16;
/// Share of a movement that counts while Shift is held.
constexpr double kFineDrag = 0.25;
/// Angle of one notch of a wheel.
constexpr int kNotch = 120;

int StepOf(Qt::KeyboardModifiers modifiers, int coarse) {
    return modifiers.testFlag(Qt::ShiftModifier) ? 1 : coarse;
}

} // namespace

ControlSlider::ControlSlider(QWidget* parent) : QAbstractSlider(parent) {
    setRange(0, 127);
    setSingleStep(1);
    setPageStep(kPageStep);
    setFocusPolicy(Qt::ClickFocus);
}

void ControlSlider::SetShown(int value, bool hollow, bool live) {
    // While it is held, the hand decides.
    if (dragging_ || (value == this->value() && hollow == hollow_ && live == live_)) {
        return;
    }
    hollow_ = hollow;
    live_ = live;
    showing_ = true;
    setValue(value);
    showing_ = false;
    update();
}

void ControlSlider::SetLanguage(Language language) {
    language_ = language;
    update();
}

QString ControlSlider::ShownText() const {
    return hollow_ && !dragging_ ? QStringLiteral("–") : TextOf(value());
}

void ControlSlider::sliderChange(SliderChange change) {
    QAbstractSlider::sliderChange(change);
    if (change == SliderValueChange && !showing_) {
        emit Moved(value());
    }
}

void ControlSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    dragging_ = true;
    last_ = event->position().toPoint();
    const auto jump = ValueAt(last_);
    if (jump && !event->modifiers().testFlag(Qt::ShiftModifier)) {
        setValue(*jump);
    }
    exact_ = value();
}

void ControlSlider::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_) {
        return;
    }
    const QPoint at = event->position().toPoint();
    const QPoint way = at - last_;
    last_ = at;
    const int pixels = orientation() == Qt::Vertical ? -way.y() : way.x();
    const double fine = event->modifiers().testFlag(Qt::ShiftModifier) ? kFineDrag : 1;
    MoveBy(pixels * fine * (maximum() - minimum()) / std::max(Travel(), 1));
}

// What is dragged beyond the range does not count.
void ControlSlider::MoveBy(double steps) {
    exact_ = std::clamp(exact_ + steps, double(minimum()), double(maximum()));
    setValue(qRound(exact_));
}

void ControlSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !dragging_) {
        return;
    }
    dragging_ = false;
    update();
    if (hollow_) {
        emit HollowMoved();
    }
}

void ControlSlider::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    if (TextPlace().contains(event->position().toPoint())) {
        TypeValue();
    } else {
        emit ResetWanted();
    }
}

void ControlSlider::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) {
        event->ignore();
        return;
    }
    // With Shift some systems turn the wheel sideways.
    const QPoint angle = event->angleDelta();
    wheel_ += angle.y() != 0 ? angle.y() : angle.x();
    const int coarse = maximum() - minimum() > 100 ? kCoarseStep : 1;
    setValue(value() + wheel_ / kNotch * StepOf(event->modifiers(), coarse));
    wheel_ %= kNotch;
    event->accept();
}

void ControlSlider::keyPressEvent(QKeyEvent* event) {
    const int coarse = maximum() - minimum() > 100 ? kCoarseStep : 1;
    const int step = StepOf(event->modifiers(), coarse);
    const QString text = event->text();
    switch (event->key()) {
        case Qt::Key_Up:
            return setValue(value() + step);
        case Qt::Key_Down:
            return setValue(value() - step);
        case Qt::Key_PageUp:
            return setValue(value() + pageStep());
        case Qt::Key_PageDown:
            return setValue(value() - pageStep());
        case Qt::Key_Home:
            return setValue(minimum());
        case Qt::Key_End:
            return setValue(maximum());
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
            emit ResetWanted();
            return;
        case Qt::Key_F2:
            return TypeValue();
        default:
            break;
    }
    if (text.size() == 1 && text[0].isDigit() && event->modifiers() == Qt::NoModifier) {
        TypeValue(text);
    } else {
        event->ignore(); // for the strip
    }
}

void ControlSlider::contextMenuEvent(QContextMenuEvent* event) {
    setFocus(Qt::MouseFocusReason);
    emit MenuWanted(event->reason() == QContextMenuEvent::Mouse ? event->globalPos()
                                                                : mapToGlobal(rect().center()));
}

void ControlSlider::focusInEvent(QFocusEvent* event) {
    QAbstractSlider::focusInEvent(event);
    update();
}

void ControlSlider::focusOutEvent(QFocusEvent* event) {
    QAbstractSlider::focusOutEvent(event);
    wheel_ = 0;
    update();
}

void ControlSlider::TypeValue(const QString& text) {
    if (editor_ == nullptr) {
        editor_ = new QLineEdit(this);
        editor_->setObjectName(objectName() + QStringLiteral("_Edit"));
        editor_->setAccessibleName(accessibleName());
        editor_->setFrame(false);
        editor_->setAlignment(Qt::AlignRight);
        connect(editor_, &QLineEdit::editingFinished, this, &ControlSlider::TakeTyped);
    }
    QRect place = TextPlace();
    place.setLeft(std::max(0, place.right() - std::max(place.width(), fontMetrics().height() * 2)));
    editor_->setGeometry(place);
    editor_->setText(text.isEmpty() ? TextOf(value()) : text);
    editor_->show();
    editor_->setFocus(Qt::OtherFocusReason);
    if (text.isEmpty()) {
        editor_->selectAll();
    }
}

// A text that means nothing leaves the value.
void ControlSlider::TakeTyped() {
    if (editor_ == nullptr || editor_->isHidden()) {
        return;
    }
    const auto typed = ValueOf(editor_->text());
    editor_->hide();
    setFocus(Qt::OtherFocusReason);
    if (typed) {
        setValue(*typed);
    }
}

} // namespace tracksmith::forms
