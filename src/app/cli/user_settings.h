#pragma once

#include "app/cli/cli_context.h"
#include "app/settings/settings_store.h"

namespace tracksmith::cli {

/// The settings that the user has made in the window.
inline settings::SettingsStore OpenSettings(const CliContext& context) {
    return context.settings.empty() ? settings::SettingsStore()
                                    : settings::SettingsStore(context.settings);
}

} // namespace tracksmith::cli
