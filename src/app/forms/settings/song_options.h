#pragma once

#include <array>

#include "app/forms/menu/main_menu.h"
#include "app/forms/settings/form_settings.h"
#include "app/workspace.h"

namespace tracksmith::forms {

/// A switch of the menu that changes how songs are read or written.
struct SongOption {
    Command command;
    /// Name of the value in the user's settings.
    const char* setting;
    /// Applies the switch to the workspace.
    void (*apply)(app::Workspace& workspace, bool on);
    /// Takes effect only when a song is loaded.
    bool needsReload;
};

inline constexpr std::array<SongOption, 5> kSongOptions{{
    {Command::SplitFormat0, "SplitFormat0",
     [](app::Workspace& workspace, bool on) { workspace.decodeOptions.splitFormat0 = on; }, true},
    {Command::HonourZelIgnore, "HonourZelIgnore",
     [](app::Workspace& workspace, bool on) { workspace.decodeOptions.honourZelIgnore = on; },
     true},
    {Command::RunningAcross, "RunningStatusAcrossSysex",
     [](app::Workspace& workspace, bool on) {
         workspace.song.runningStatusAcrossSysex = on ? 1 : 0;
     },
     true},
    {Command::UseRunning, "UseRunningStatus",
     [](app::Workspace& workspace, bool on) { workspace.encodeOptions.useRunningStatus = on; },
     false},
    {Command::OmitPorts, "OmitPortEvents",
     [](app::Workspace& workspace, bool on) { workspace.encodeOptions.omitPortEvents = on; },
     false},
}};

} // namespace tracksmith::forms
