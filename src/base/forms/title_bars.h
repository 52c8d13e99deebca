#pragma once

namespace tracksmith::forms {

/// Gives the title bars of all windows, and of those that are shown later, a ground that goes with
/// the palette, where the system paints them and can do that. Call after each change of the
/// palette.
void ShadeTitleBars();

} // namespace tracksmith::forms
