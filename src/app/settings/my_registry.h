#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace tracksmith::settings {

/// A failed registry access: unreadable or unwritable storage, a value of another type, a value or
/// name that cannot be stored. Never leaves SettingsStore.
class RegistryError : public std::runtime_error {
public:
    /// `reason` is the system's where the storage itself failed, none where only a value did.
    explicit RegistryError(const char* what, std::error_code reason = {})
        : std::runtime_error(what), reason_(reason) {}

    const std::error_code& Reason() const { return reason_; }

private:
    std::error_code reason_;
};

/// How long opening for writing waits for another program's write, at most.
inline constexpr std::chrono::milliseconds kLongestLockWait{200};

/// The part of the registry that paths start from.
enum class RootKey { None, CurrentUser };

/// What TMyRegistry::DeleteValue removes.
enum class DeleteScope {
    Value,       ///< only a value; a subkey of the same name stays
    ValueAndKey, ///< the value, and the subkey of that name with everything below it
};

/// What one text of a key becomes: another one, or nothing.
struct TextChange {
    std::string name;
    std::optional<std::string> value;
};

/// Typed access to one key at a time of a hierarchical settings registry. Keys are separated by
/// backslashes; texts and names are UTF-8 without zero characters in names. On Windows this is the
/// registry itself. Elsewhere it is one JSON file: an object with one member per key path, whose
/// members are the values of that key.
///
/// Use: set the root and the write flag, open a key, test, read, write or delete, close. An open
/// key is a view of the storage at that moment; while a key is open for writing, other programs'
/// writers wait (in the file form, at most kLongestLockWait). Value and key names differing only in
/// case are the same on Windows and different elsewhere. Not thread safe; one object per thread, or
/// a lock around it.
class TMyRegistry {
public:
    /// The current user's registry, or the file `tracksmith/settings.json` in the user's
    /// configuration folder (`XDG_CONFIG_HOME`, else `~/.config`). Touches nothing yet.
    TMyRegistry();

    /// Keeps everything elsewhere: in the file `location`, or on Windows below the key `location`
    /// of the current user. Touches nothing yet.
    explicit TMyRegistry(std::filesystem::path location);

    TMyRegistry(const TMyRegistry&) = delete;
    TMyRegistry& operator=(const TMyRegistry&) = delete;
    ~TMyRegistry() = default;

    /// Selects where the paths of OpenKey start.
    void SetRootKey(RootKey root) { rootKey_ = root; }

    /// Selects whether OpenKey opens for writing; applies from the next OpenKey on.
    void SetWriteFlag(bool write) { writeFlag_ = write; }

    /// Closes the open key and opens `path` ("\A\B\" and "A\B" are the same key). For writing, a
    /// missing key is created at the latest with its first value. Returns false when the key does
    /// not exist and was not opened for writing. Raises RegistryError when the storage cannot be
    /// read, prepared or locked within kLongestLockWait.
    bool OpenKey(std::string_view path);

    /// Whether the storage held something else than settings when the last key was opened. Then it
    /// counts as empty, and the next write keeps it aside under another name.
    bool FoundDamaged() const { return damaged_; }

    /// Where the settings are kept; empty for the registry of Windows.
    const std::filesystem::path& Location() const { return location_; }

    /// Closes the open key, if any, and lets other writers in.
    void CloseKey();

    /// Whether the open key has a value `name`, of any type.
    bool ValueExists(std::string_view name) const;

    /// The Boolean `name` of the open key. Raises RegistryError when it is missing or no Boolean.
    /// Windows keeps Booleans as the numbers 0 and 1 and cannot tell the two apart.
    bool ReadBool(std::string_view name) const;

    /// The integer `name` of the open key. Raises RegistryError when it is missing, no integer or
    /// outside 32 bits.
    std::int32_t ReadInt(std::string_view name) const;

    /// The text `name` of the open key. Raises RegistryError when it is missing or no text.
    std::string ReadStr(std::string_view name) const;

    /// Store a value of the key opened for writing, replacing one of any type; on disk when the
    /// call returns. Raise RegistryError, with nothing changed, when that fails.
    void WriteBool(std::string_view name, bool value);
    void WriteInt(std::string_view name, std::int32_t value); ///< See WriteBool.
    void WriteStr(std::string_view name,
                  std::string_view value); ///< See WriteBool; valid UTF-8 only.

    /// Stores and removes texts of the key opened for writing; as a file all of them in one step,
    /// on Windows one after the other. Raises RegistryError like WriteStr.
    void WriteStrs(std::span<const TextChange> changes);

    /// Removes the entry `name` of the key opened for writing. Returns whether there was one;
    /// raises RegistryError when it could not be removed.
    bool DeleteValue(std::string_view name, DeleteScope scope = DeleteScope::Value);

private:
    struct OpenedKey;

    const OpenedKey& Opened() const;
    OpenedKey& OpenedForWriting();

    /// Opens the key of a path without outer backslashes, null when it is missing; defined once
    /// per platform.
    std::shared_ptr<OpenedKey> Open(const std::string& path, bool write);

    /// Where the current user's registry is; defined once per platform.
    static std::filesystem::path UserLocation();

    std::filesystem::path location_;
    RootKey rootKey_ = RootKey::None;
    bool writeFlag_ = false;
    bool openedForWriting_ = false;
    bool damaged_ = false;
    // Owned here alone; a shared pointer because it can delete what only the platform's file
    // defines
    std::shared_ptr<OpenedKey> opened_;
};

} // namespace tracksmith::settings
