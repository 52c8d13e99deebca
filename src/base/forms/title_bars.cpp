#include "base/forms/title_bars.h"

#include "base/forms/theme.h"
#include "base/system/title_bar.h"
#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QWidget>

namespace tracksmith::forms {
namespace {

// Asking for the number makes the system's window, which must not happen before its time.
void Shade(const QWidget& window) {
    if (window.isWindow() && window.internalWinId() != 0 &&
        QGuiApplication::platformName() == QLatin1String("windows")) {
        system::SetTitleBarDark(window.internalWinId(), IsDark(QApplication::palette()));
    }
}

// Sees windows when they get their title bar.
class ShownWindows : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show) {
            if (const auto* widget = qobject_cast<const QWidget*>(watched)) {
                Shade(*widget);
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

void ShadeTitleBars() {
    const QString name = QStringLiteral("TitleBars");
    if (qApp->findChild<QObject*>(name, Qt::FindDirectChildrenOnly) == nullptr) {
        auto* watching = new ShownWindows(qApp);
        watching->setObjectName(name);
        qApp->installEventFilter(watching);
    }
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        Shade(*window);
    }
}

} // namespace tracksmith::forms
