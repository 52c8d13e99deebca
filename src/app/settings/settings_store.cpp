#include "app/settings/settings_store.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "base/display_text.h"
#include "base/system/file_io.h"
#include "base/system_reason.h"

#include "app/settings/texts.h"

namespace tracksmith::settings {
namespace {

constexpr std::string_view kMakerKey = R"(\SOFTWARE\Orlavo\)";
constexpr std::string_view kProductEntry = "Tracksmith 12";

std::string SettingsPath() {
    return std::string(kMakerKey).append(kProductEntry).append("\\");
}

/// One path component for any text: what would split or cut a path becomes %XX, and the empty text
/// a lone %, which no other text becomes.
std::string EncodedSubkey(std::string_view subkey) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    if (subkey.empty()) {
        return "%";
    }
    std::string encoded;
    for (const char c : subkey) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\\' || c == '%' || byte < 0x20) {
            encoded += {'%', kHex[byte >> 4U], kHex[byte & 0x0FU]};
        } else {
            encoded += c;
        }
    }
    return encoded;
}

std::string SubkeyPath(std::string_view subkey) {
    return SettingsPath() + EncodedSubkey(subkey) + "\\";
}

/// Closes the key and clears the write flag however the access ends.
class AccessEnd {
public:
    explicit AccessEnd(TMyRegistry& registry) : registry_(registry) {}
    AccessEnd(const AccessEnd&) = delete;
    AccessEnd& operator=(const AccessEnd&) = delete;
    ~AccessEnd() {
        registry_.CloseKey();
        registry_.SetWriteFlag(false);
    }

private:
    TMyRegistry& registry_;
};

} // namespace

/// Runs `action` on the opened key; false when the key is missing or anything failed.
template <class Action>
bool SettingsStore::WithKey(const std::string& path, bool write, Action action) {
    const std::lock_guard lock(mutex_);
    const TroubleKind kind = write ? TroubleKind::Unwritable : TroubleKind::Unreadable;
    try {
        const AccessEnd end(registry_);
        registry_.SetWriteFlag(write);
        registry_.SetRootKey(RootKey::CurrentUser);
        const bool opened = registry_.OpenKey(path);
        if (registry_.FoundDamaged()) {
            Note(TroubleKind::Damaged, {});
        }
        return opened && action();
    } catch (const RegistryError& error) {
        if (error.Reason()) {
            Note(kind, error.Reason());
        }
    } catch (const std::system_error& error) {
        Note(kind, error.code());
    } catch (const std::exception&) {
        return false; // a settings access never ends the command that made it
    }
    return false;
}

void SettingsStore::Note(TroubleKind kind, const std::error_code& reason) {
    try {
        if (std::ranges::find(troubles_, kind, &SettingsTrouble::kind) == troubles_.end()) {
            troubles_.push_back({kind, registry_.Location(), reason});
        }
    } catch (const std::bad_alloc&) {
        return; // the next access meets it again
    }
}

std::optional<SettingsTrouble> SettingsStore::TakeTrouble() {
    const std::lock_guard lock(mutex_);
    return told_ < troubles_.size() ? std::optional(troubles_[told_++]) : std::nullopt;
}

std::string SettingsTrouble::In(Language language) const {
    const std::string name = DisplayPath(system::PathText(file));
    return texts::Trouble(language, kind, name, SystemReason(reason, language));
}

template <class Value, class Read>
Value SettingsStore::ReadOr(const std::string& path, std::string_view name, Value fallback,
                            Read read) {
    Value result = std::move(fallback);
    WithKey(path, false, [&] {
        if (registry_.ValueExists(name)) {
            result = (registry_.*read)(name);
        }
        return true;
    });
    return result;
}

template <class Value, class Write>
bool SettingsStore::Store(const std::string& path, std::string_view name, Value value,
                          Write write) {
    return WithKey(path, true, [&] {
        (registry_.*write)(name, value);
        return true;
    });
}

bool SettingsStore::Exists(const std::string& path, std::string_view name) {
    return WithKey(path, false, [&] { return registry_.ValueExists(name); });
}

bool SettingsStore::Delete(const std::string& path, std::string_view name, DeleteScope scope) {
    return WithKey(path, true, [&] {
        registry_.DeleteValue(name, scope);
        return true;
    });
}

bool SettingsStore::ReadBoolFromUserRegistry(std::string_view name, bool fallback) {
    return ReadOr(SettingsPath(), name, fallback, &TMyRegistry::ReadBool);
}

std::int32_t SettingsStore::ReadIntFromUserRegistry(std::string_view name, std::int32_t fallback) {
    return ReadOr(SettingsPath(), name, fallback, &TMyRegistry::ReadInt);
}

std::string SettingsStore::ReadStrFromUserRegistry(std::string_view name,
                                                   std::string_view fallback) {
    return ReadOr(SettingsPath(), name, std::string(fallback), &TMyRegistry::ReadStr);
}

bool SettingsStore::WriteBoolToUserRegistry(std::string_view name, bool value) {
    return Store(SettingsPath(), name, value, &TMyRegistry::WriteBool);
}

bool SettingsStore::WriteIntToUserRegistry(std::string_view name, std::int32_t value) {
    return Store(SettingsPath(), name, value, &TMyRegistry::WriteInt);
}

bool SettingsStore::WriteStrToUserRegistry(std::string_view name, std::string_view value) {
    return Store(SettingsPath(), name, value, &TMyRegistry::WriteStr);
}

bool SettingsStore::KeyInUserRegistry(std::string_view name) {
    return Exists(SettingsPath(), name);
}

bool SettingsStore::DeleteFromUserRegistry(std::string_view name) {
    return Delete(SettingsPath(), name, DeleteScope::Value);
}

bool SettingsStore::ReadBoolFromUserRegistrySubdir(std::string_view subkey, std::string_view name,
                                                   bool fallback) {
    return ReadOr(SubkeyPath(subkey), name, fallback, &TMyRegistry::ReadBool);
}

std::int32_t SettingsStore::ReadIntFromUserRegistrySubdir(std::string_view subkey,
                                                          std::string_view name,
                                                          std::int32_t fallback) {
    return ReadOr(SubkeyPath(subkey), name, fallback, &TMyRegistry::ReadInt);
}

std::string SettingsStore::ReadStrFromUserRegistrySubdir(std::string_view subkey,
                                                         std::string_view name,
                                                         std::string_view fallback) {
    return ReadOr(SubkeyPath(subkey), name, std::string(fallback), &TMyRegistry::ReadStr);
}

bool SettingsStore::WriteBoolToUserRegistrySubdir(std::string_view subkey, std::string_view name,
                                                  bool value) {
    return Store(SubkeyPath(subkey), name, value, &TMyRegistry::WriteBool);
}

bool SettingsStore::WriteIntToUserRegistrySubdir(std::string_view subkey, std::string_view name,
                                                 std::int32_t value) {
    return Store(SubkeyPath(subkey), name, value, &TMyRegistry::WriteInt);
}

bool SettingsStore::WriteStrToUserRegistrySubdir(std::string_view subkey, std::string_view name,
                                                 std::string_view value) {
    return Store(SubkeyPath(subkey), name, value, &TMyRegistry::WriteStr);
}

bool SettingsStore::KeyInUserRegistrySubdir(std::string_view subkey, std::string_view name) {
    return Exists(SubkeyPath(subkey), name);
}

bool SettingsStore::DeleteFromUserRegistrySubdir(std::string_view subkey, std::string_view name) {
    return Delete(SubkeyPath(subkey), name, DeleteScope::Value);
}

std::vector<std::string> SettingsStore::ReadTextsFromUserRegistrySubdir(
    std::string_view subkey, std::span<const std::string> names) {
    std::vector<std::string> texts(names.size());
    WithKey(SubkeyPath(subkey), false, [&] {
        for (std::size_t i = 0; i < names.size(); ++i) {
            try {
                if (registry_.ValueExists(names[i])) {
                    texts[i] = registry_.ReadStr(names[i]);
                }
            } catch (const std::exception&) {
                texts[i].clear(); // no text: the others count all the same
            }
        }
        return true;
    });
    return texts;
}

bool SettingsStore::WriteTextsToUserRegistrySubdir(std::string_view subkey,
                                                   std::span<const TextChange> changes) {
    return WithKey(SubkeyPath(subkey), true, [&] {
        registry_.WriteStrs(changes);
        return true;
    });
}

bool SettingsStore::DeleteAllRegistry() {
    return Delete(std::string(kMakerKey), kProductEntry, DeleteScope::ValueAndKey);
}

} // namespace tracksmith::settings
