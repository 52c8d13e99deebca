#pragma once

#include "base/text.h"
#include <QDialog>

#include "song/load_report.h"

namespace tracksmith::forms {

/// Shows over `window` what loading changed, each kind with its number. Returns at once; the dialog
/// (object name "Dlg_Changes") deletes itself when it is closed.
void ShowChangesDialog(QWidget* window, const song::LoadReport& report, Language language);

/// Shows over `window` name, version and licence of the program. Returns at once; the dialog
/// (object name "Dlg_About") deletes itself when it is closed.
void ShowAboutDialog(QWidget* window, Language language);

} // namespace tracksmith::forms
