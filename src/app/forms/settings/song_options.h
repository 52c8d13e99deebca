#pragma once

#include "app/session/workspace.h"

namespace tracksmith::forms {

/// What a switch of the menu does that changes how songs are read or written. Off at first.
struct SongOption {
    /// Name of the value in the user's settings.
    const char* setting;
    /// Applies the switch to the options.
    void (*apply)(session::WorkOptions& options, bool on);
    /// Takes effect only when a song is loaded.
    bool needsReload;
};

} // namespace tracksmith::forms
