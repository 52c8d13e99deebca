#pragma once

#include "base/text.h"
#include <QDialog>

#include "app/session/workspace.h"

namespace tracksmith::forms {

/// Shows over `window` what loading changed, each kind with its number, and each message that
/// preparing the song for its instrument inserted, removed or found. Returns at once; the dialog
/// (object name "Dlg_Changes") deletes itself when it is closed.
void ShowChangesDialog(QWidget* window, const session::Workspace& workspace, Language language);

/// Shows over `window` name, version and licence of the program. Returns at once; the dialog
/// (object name "Dlg_About") deletes itself when it is closed.
void ShowAboutDialog(QWidget* window, Language language);

} // namespace tracksmith::forms
