#pragma once

#include "support/data_folder.h"
#include "support/temporary_folder.h"

#include "app/settings/settings_store.h"

namespace tracksmith::test {

/// Settings of a test's own: a file in a folder of its own, or a key of the Windows registry.
class ScratchSettings {
public:
    ScratchSettings() = default;
    ScratchSettings(const ScratchSettings&) = delete;
    ScratchSettings& operator=(const ScratchSettings&) = delete;
    ~ScratchSettings() { store_.DeleteAllRegistry(); }

    settings::SettingsStore& Store() { return store_; }

    /// Where they are, for another store on the same settings.
    std::filesystem::path Location() const { return SettingsPlace(folder_.Path()); }

private:
    TemporaryFolder folder_;
    settings::SettingsStore store_{Location()};
};

} // namespace tracksmith::test
