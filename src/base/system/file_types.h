#pragma once

namespace tracksmith::system {

/// Tells the desktop that programs offer themselves for other types of files than before, on
/// Windows; without effect elsewhere.
void TellFileTypesChanged();

} // namespace tracksmith::system
