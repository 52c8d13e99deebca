#pragma once

namespace tracksmith::forms {

/// Makes every OverviewWidget known to screen readers as a value: the measure of its cursor, told
/// with its notes. Repeated calls do nothing more.
void InstallOverviewAccessibility();

} // namespace tracksmith::forms
