#pragma once

#include <QObject>
#include <QSize>

class QDialog;
class QWidget;

namespace tracksmith::forms {

/// `wanted`, or as much of it as the screen of `window` has room for beside the window's frame.
QSize FittingSize(const QWidget& window, QSize wanted);

/// Keeps every dialog of the program on its screen: one that is larger is made smaller, and where
/// its contents need more room than there is they get scroll bars. User-interface thread.
class ScreenFit : public QObject {
    Q_OBJECT

public:
    /// From now on, as long as the object lives.
    explicit ScreenFit(QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tracksmith::forms
