#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>

#include "app/settings/settings_store.h"

namespace tracksmith::backups {

/// So many records of crashes are kept.
inline constexpr std::size_t kMostCrashRecords = 5;

/// The newest record that a crash has left in `folder` (see system::CrashWatch), if the user was
/// not told of it yet; from now on it counts as told. Removes those that are too many.
std::optional<std::filesystem::path> TakeUntoldCrash(settings::SettingsStore& store,
                                                     const std::filesystem::path& folder);

} // namespace tracksmith::backups
