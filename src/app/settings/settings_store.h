#pragma once

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "base/text.h"

#include "app/settings/my_registry.h"

namespace tracksmith::settings {

/// What can be wrong with the place where settings are kept.
enum class TroubleKind {
    Damaged,    ///< It holds something else than settings; the next write keeps that aside.
    Unreadable, ///< The system refuses reading; the defaults are in force.
    Unwritable  ///< The system refuses writing; changes are lost when the program ends.
};

/// A fault of the place where settings are kept, for the user to be told.
struct SettingsTrouble {
    TroubleKind kind = TroubleKind::Damaged;
    /// The file of the settings; empty for the registry of Windows.
    std::filesystem::path file;
    /// The system's reason; none for damage.
    std::error_code reason;

    /// What the user should know, as plain sentences (UTF-8).
    std::string In(Language language) const;
};

/// The program's settings of the current user: one family of small typed accessors through which
/// windows, tools and the command line read and write them. Values live below the key
/// `\SOFTWARE\Orlavo\Tracksmith 12\`; the Subdir accessors use a subkey of it, normally named like
/// an instrument of the catalogue. Any subkey name is one level (backslashes in it are encoded),
/// and values of a subkey never meet plain values of the same name.
///
/// Every call goes to the storage itself, so a value written anywhere is seen by the next read.
/// No accessor raises an error for a failed access: reads return the caller's default, tests and
/// writes return false; TakeTrouble tells what was wrong with the storage. Another program's write
/// is waited for at most kLongestLockWait. May be called from any thread, but not from the playback
/// thread, as every call may wait for the disk.
class SettingsStore {
public:
    /// The settings of the current user.
    SettingsStore() = default;

    /// Settings kept elsewhere, see TMyRegistry.
    explicit SettingsStore(std::filesystem::path location) : registry_(std::move(location)) {}

    /// The stored value, or `fallback` when it is missing, of another type or unreadable.
    bool ReadBoolFromUserRegistry(std::string_view name, bool fallback);
    std::int32_t ReadIntFromUserRegistry(std::string_view name,
                                         std::int32_t fallback); ///< Likewise, 32 bits.
    std::string ReadStrFromUserRegistry(std::string_view name,
                                        std::string_view fallback); ///< Likewise, UTF-8.

    /// Stores the value and returns whether it is on disk now.
    bool WriteBoolToUserRegistry(std::string_view name, bool value);
    bool WriteIntToUserRegistry(std::string_view name, std::int32_t value); ///< Likewise.
    bool WriteStrToUserRegistry(std::string_view name,
                                std::string_view value); ///< Likewise; valid UTF-8 only.

    /// Whether the value exists, of any type.
    bool KeyInUserRegistry(std::string_view name);

    /// Removes the value; true when it does not exist any more, also when it never did.
    bool DeleteFromUserRegistry(std::string_view name);

    /// The accessors above for the values of one subkey.
    bool ReadBoolFromUserRegistrySubdir(std::string_view subkey, std::string_view name,
                                        bool fallback);
    std::int32_t ReadIntFromUserRegistrySubdir(std::string_view subkey, std::string_view name,
                                               std::int32_t fallback); ///< Likewise.
    std::string ReadStrFromUserRegistrySubdir(std::string_view subkey, std::string_view name,
                                              std::string_view fallback); ///< Likewise.
    bool WriteBoolToUserRegistrySubdir(std::string_view subkey, std::string_view name,
                                       bool value); ///< Likewise.
    bool WriteIntToUserRegistrySubdir(std::string_view subkey, std::string_view name,
                                      std::int32_t value); ///< Likewise.
    bool WriteStrToUserRegistrySubdir(std::string_view subkey, std::string_view name,
                                      std::string_view value);                    ///< Likewise.
    bool KeyInUserRegistrySubdir(std::string_view subkey, std::string_view name); ///< Likewise.
    bool DeleteFromUserRegistrySubdir(std::string_view subkey,
                                      std::string_view name); ///< Likewise.

    /// The texts of these names of a subkey, empty for what ReadStrFromUserRegistrySubdir would
    /// give its default for, with one access of the storage.
    std::vector<std::string> ReadTextsFromUserRegistrySubdir(std::string_view subkey,
                                                             std::span<const std::string> names);
    /// Stores and removes texts of a subkey with one access, for lists of values.
    bool WriteTextsToUserRegistrySubdir(std::string_view subkey,
                                        std::span<const TextChange> changes);

    /// Removes all settings with all subkeys; true when none exist any more.
    bool DeleteAllRegistry();

    /// A trouble that an access met and nobody was told of yet; each kind comes once.
    std::optional<SettingsTrouble> TakeTrouble();

private:
    template <class Action>
    bool WithKey(const std::string& path, bool write, Action action);
    template <class Value, class Read>
    Value ReadOr(const std::string& path, std::string_view name, Value fallback, Read read);
    template <class Value, class Write>
    bool Store(const std::string& path, std::string_view name, Value value, Write write);
    bool Exists(const std::string& path, std::string_view name);
    bool Delete(const std::string& path, std::string_view name, DeleteScope scope);

    void Note(TroubleKind kind, const std::error_code& reason);

    std::mutex mutex_;
    std::vector<SettingsTrouble> troubles_;
    std::size_t told_ = 0;
    TMyRegistry registry_;
};

} // namespace tracksmith::settings
