#pragma once

#include <array>

#include "app/forms/menu/main_menu.h"
#include "app/forms/settings/form_settings.h"
#include "app/session/workspace.h"

namespace tracksmith::forms {

/// A switch of the menu that changes how songs are read or written.
struct SongOption {
    Command command;
    /// Name of the value in the user's settings.
    const char* setting;
    /// Applies the switch to the options.
    void (*apply)(session::WorkOptions& options, bool on);
    /// Takes effect only when a song is loaded.
    bool needsReload;
};

inline constexpr std::array<SongOption, 5> kSongOptions{{
    {Command::SplitFormat0, "SplitFormat0",
     [](session::WorkOptions& options, bool on) { options.decodeOptions.splitFormat0 = on; }, true},
    {Command::HonourZelIgnore, "HonourZelIgnore",
     [](session::WorkOptions& options, bool on) { options.decodeOptions.honourZelIgnore = on; },
     true},
    {Command::RunningAcross, "RunningStatusAcrossSysex",
     [](session::WorkOptions& options, bool on) { options.runningStatusAcrossSysex = on; }, true},
    {Command::UseRunning, "UseRunningStatus",
     [](session::WorkOptions& options, bool on) { options.encodeOptions.useRunningStatus = on; },
     false},
    {Command::OmitPorts, "OmitPortEvents",
     [](session::WorkOptions& options, bool on) { options.encodeOptions.omitPortEvents = on; },
     false},
}};

} // namespace tracksmith::forms
