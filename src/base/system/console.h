#pragma once

namespace tracksmith::system {

/// Lets a program with windows write to the console that it was started from, and be ended there by
/// Ctrl+C. Needed on Windows only, where such programs have none; without effect elsewhere.
void JoinParentConsole();

} // namespace tracksmith::system
