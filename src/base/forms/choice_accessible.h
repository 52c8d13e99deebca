#pragma once

namespace tracksmith::forms {

/// Lets screen readers call every QComboBox by its accessible name and take the chosen entry as its
/// value; on some systems Qt gives the entry as the name. Repeated calls do nothing more.
void InstallChoiceAccessibility();

} // namespace tracksmith::forms
