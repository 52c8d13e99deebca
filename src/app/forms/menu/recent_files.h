#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "app/settings/settings_store.h"

namespace tracksmith::forms {

/// The files that were opened or saved last, newest first, kept in the user's settings as
/// `LastMidifilesList`: one path a line.
class RecentFiles {
public:
    static constexpr std::size_t kMost = 10;

    explicit RecentFiles(settings::SettingsStore& store) : store_(store) {}

    /// The list, at most kMost paths; files that are gone stay in it.
    std::vector<std::filesystem::path> List();

    /// Puts `file` in front, as an absolute path.
    void Add(const std::filesystem::path& file);

    /// Empties the list.
    void Clear();

private:
    settings::SettingsStore& store_;
};

} // namespace tracksmith::forms
