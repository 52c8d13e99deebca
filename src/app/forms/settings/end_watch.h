#pragma once

#include "base/system/interrupt.h"
#include <QObject>

namespace tracksmith::forms {

class TMainForm;

/// Ends the window properly when the system wants the program to end: by a signal or
/// Ctrl+C, without a question, or because the desktop's session ends, where the desktop may allow
/// one. While it lives, signals do not end the program by themselves, unless one of a kind comes
/// twice. One at a time, user-interface thread.
class EndWatch : public QObject {
    Q_OBJECT

public:
    /// `form` must outlive the watch.
    explicit EndWatch(TMainForm& form);

private:
    system::InterruptWatch signals_;
};

} // namespace tracksmith::forms
