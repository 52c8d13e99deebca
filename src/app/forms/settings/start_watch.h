#pragma once

#include <filesystem>
#include <vector>

#include "base/system/single_start.h"
#include <QObject>
#include <QTimer>

namespace tracksmith::forms {

class TMainForm;

/// Opens in this window what further starts of the program were given. While a dialog is open the
/// files wait until it is closed. User-interface thread.
class StartWatch : public QObject {
    Q_OBJECT

public:
    /// `form` and `start` must outlive the watch.
    StartWatch(TMainForm& form, system::SingleStart& start);

    /// Brings the window to the front and opens the first of `files`; the others go to the recent
    /// files.
    void Take(const std::vector<std::filesystem::path>& files);

private:
    void OpenWaiting();

    TMainForm& form_;
    std::vector<std::filesystem::path> waiting_;
    QTimer again_;
};

} // namespace tracksmith::forms
