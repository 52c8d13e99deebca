#include "app/forms/settings/key_guard.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>

namespace tracksmith::forms {
namespace {

bool IsMovement(int key) {
    return key == Qt::Key_Home || key == Qt::Key_End || key == Qt::Key_PageUp ||
           key == Qt::Key_PageDown || (key >= Qt::Key_Left && key <= Qt::Key_Down);
}

bool IsPrintable(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.text().at(0).isPrint();
}

// Whether `control` does something with a key that is pressed without Ctrl or Alt.
bool Uses(const QObject& control, const QKeyEvent& event) {
    if (qobject_cast<const QAbstractButton*>(&control) != nullptr) {
        return event.key() == Qt::Key_Space;
    }
    if (qobject_cast<const QAbstractSlider*>(&control) != nullptr) {
        return IsMovement(event.key());
    }
    const bool takesText = qobject_cast<const QComboBox*>(&control) != nullptr ||
                           qobject_cast<const QAbstractItemView*>(&control) != nullptr ||
                           qobject_cast<const QAbstractSpinBox*>(&control) != nullptr ||
                           qobject_cast<const QLineEdit*>(&control) != nullptr;
    return takesText && (IsMovement(event.key()) || IsPrintable(event));
}

} // namespace

KeyGuard::KeyGuard(QObject* parent) : QObject(parent) {
    qApp->installEventFilter(this);
}

bool KeyGuard::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        constexpr Qt::KeyboardModifiers kCommands =
            Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
        if ((key.modifiers() & kCommands) == 0 && Uses(*watched, key)) {
            event->accept();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tracksmith::forms
