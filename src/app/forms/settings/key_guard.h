#pragma once

#include <QObject>

namespace tracksmith::forms {

/// Leaves keys to the control that has the focus where it has a use of its own for them, so that
/// the window's keys do not take them away: Space and Enter of buttons and choices, letters, digits
/// and movement keys of lists, number boxes and text fields. Works on all windows while it lives.
class KeyGuard : public QObject {
    Q_OBJECT

public:
    explicit KeyGuard(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tracksmith::forms
