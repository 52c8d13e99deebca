#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <pwd.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "base/system/descriptor.h"
#include "base/system/file_io.h"

#include "app/settings/my_registry.h"

namespace tracksmith::settings {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

/// A settings file beyond this was not written by this program and is treated as damaged.
constexpr std::size_t kMaxFileBytes = std::size_t{16} << 20;
/// Keys and values need two levels; a deeper file is damaged, and deep nesting costs stack.
constexpr int kMaxDepth = 16;
constexpr std::chrono::milliseconds kLockPoll{1};

std::error_code LastError() {
    return {errno, std::system_category()};
}

fs::path WithSuffix(const fs::path& file, const std::string& suffix) {
    fs::path name = file;
    return name += suffix;
}

/// The writers' lock, held as long as the object lives. A file of its own, since the settings file
/// is replaced by every write; never removed, since a waiting program may have it open.
class WriterLock {
public:
    explicit WriterLock(const fs::path& settingsFile)
        : file_(open(WithSuffix(settingsFile, ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC,
                     S_IRUSR | S_IWUSR)) {
        if (file_.Get() < 0) {
            throw RegistryError("lock file not opened", LastError());
        }
        const auto deadline = std::chrono::steady_clock::now() + kLongestLockWait;
        while (flock(file_.Get(), LOCK_EX | LOCK_NB) != 0) {
            if (errno != EWOULDBLOCK && errno != EINTR) {
                throw RegistryError("lock refused", LastError());
            }
            if (std::chrono::steady_clock::now() >= deadline) {
                throw RegistryError("settings locked by another program",
                                    std::make_error_code(std::errc::device_or_resource_busy));
            }
            std::this_thread::sleep_for(kLockPoll);
        }
    }

private:
    system::Descriptor file_; // closing it ends the lock
};

struct Loaded {
    Json keys = Json::object();
    bool damaged = false;
};

std::optional<Json> ParseKeys(const std::vector<std::uint8_t>& text) {
    const auto limitDepth = [](int depth, Json::parse_event_t /*event*/, Json& /*parsed*/) {
        if (depth > kMaxDepth) {
            throw RegistryError("settings file nested too deeply");
        }
        return true;
    };
    try {
        Json keys = Json::parse(text, limitDepth);
        for (const Json& values : keys) {
            if (!values.is_object()) {
                return std::nullopt;
            }
        }
        return keys.is_object() ? std::optional(std::move(keys)) : std::nullopt;
    } catch (const Json::exception&) {
        return std::nullopt;
    } catch (const RegistryError&) {
        return std::nullopt;
    }
}

/// Raises RegistryError when the file cannot be read, which is no damage: it may be readable next
/// time.
Loaded Load(const fs::path& file) {
    const system::FileStart start = system::ReadFileStart(file, kMaxFileBytes);
    if (start.error == std::errc::no_such_file_or_directory) {
        return {};
    }
    if (start.error) {
        throw RegistryError("settings file not read", start.error);
    }
    std::optional<Json> keys = start.size <= kMaxFileBytes ? ParseKeys(start.bytes) : std::nullopt;
    if (!keys) {
        return {Json::object(), true};
    }
    return {*std::move(keys), false};
}

/// Removes a key with everything below it; returns the number of keys removed.
std::size_t EraseKey(Json& keys, const std::string& path) {
    const std::string below = path + "\\";
    std::vector<std::string> gone;
    for (const auto& [key, values] : keys.items()) {
        if (key == path || key.starts_with(below)) {
            gone.push_back(key);
        }
    }
    for (const std::string& key : gone) {
        keys.erase(key);
    }
    return gone.size();
}

/// Keeps a damaged file under a name that is still free; the caller holds the lock.
void SetAside(const fs::path& file) {
    fs::path kept = WithSuffix(file, ".broken");
    for (int number = 2; fs::exists(fs::symlink_status(kept)); ++number) {
        kept = WithSuffix(file, ".broken." + std::to_string(number));
    }
    fs::rename(file, kept);
}

void Write(const fs::path& file, const std::string& text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const system::WriteResult result =
        system::WriteFileAtomically(file, {bytes, text.size()}, system::NewFileAccess::OnlyOwner);
    if (result.outcome != system::WriteOutcome::Written) {
        throw RegistryError("settings file not written", result.error);
    }
}

/// The file itself where `location` is a link to it, so that a write keeps the link.
fs::path ResolvedFile(const fs::path& location) {
    if (location.empty()) {
        throw RegistryError("no folder for settings",
                            std::make_error_code(std::errc::no_such_file_or_directory));
    }
    return fs::weakly_canonical(location);
}

fs::path HomeFolder() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home == '/') {
        return home;
    }
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    return found != nullptr ? fs::path(found->pw_dir) : fs::path();
}

bool IsInt32(const Json& value) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (value.is_number_unsigned()) {
        return value.get<std::uint64_t>() <= static_cast<std::uint64_t>(Limits::max());
    }
    return value.is_number_integer() && value.get<std::int64_t>() >= Limits::min();
}

} // namespace

/// What was in the file when the key was opened, and for writing the lock that keeps it true.
struct TMyRegistry::OpenedKey {
    fs::path file;
    std::string path;
    std::optional<WriterLock> lock;
    Loaded content;

    const Json* Find(std::string_view name) const {
        const auto values = content.keys.find(path);
        if (values == content.keys.end()) {
            return nullptr;
        }
        const auto value = values->find(std::string(name));
        return value != values->end() ? &*value : nullptr;
    }

    const Json& Get(std::string_view name) const {
        if (const Json* value = Find(name)) {
            return *value;
        }
        throw RegistryError("value missing");
    }

    void Save(Json keys) {
        const std::string text = keys.dump(2) + "\n";
        if (text.size() > kMaxFileBytes) {
            throw RegistryError("settings too large");
        }
        if (content.damaged) {
            SetAside(file);
            content.damaged = false;
        }
        Write(file, text);
        content.keys = std::move(keys);
    }

    void Set(std::string_view name, const Json& value) {
        // Spares the disk; compared as written, since 1 and 1.0 compare equal as numbers
        if (const Json* old = Find(name); old != nullptr && old->dump() == value.dump()) {
            return;
        }
        Json keys = content.keys;
        keys[path][std::string(name)] = value;
        Save(std::move(keys));
    }
};

fs::path TMyRegistry::UserLocation() {
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    // XDG Base Directory: a relative path counts as not set
    const bool valid = configuration != nullptr && *configuration == '/';
    const fs::path home = valid ? fs::path() : HomeFolder();
    if (!valid && home.empty()) {
        return {};
    }
    return (valid ? fs::path(configuration) : home / ".config") / "tracksmith" / "settings.json";
}

std::shared_ptr<TMyRegistry::OpenedKey> TMyRegistry::Open(const std::string& path, bool write) {
    auto opened = std::make_shared<OpenedKey>();
    opened->file = ResolvedFile(location_);
    opened->path = path;
    if (write) {
        fs::create_directories(opened->file.parent_path());
        opened->lock.emplace(opened->file);
    }
    opened->content = Load(opened->file);
    damaged_ = opened->content.damaged;
    const bool exists = opened->content.keys.contains(path);
    return exists || write ? opened : nullptr;
}

bool TMyRegistry::ValueExists(std::string_view name) const {
    return Opened().Find(name) != nullptr;
}

bool TMyRegistry::ReadBool(std::string_view name) const {
    return Opened().Get(name).get<bool>();
}

std::int32_t TMyRegistry::ReadInt(std::string_view name) const {
    const Json& value = Opened().Get(name);
    if (!IsInt32(value)) {
        throw RegistryError("stored value is no 32-bit number");
    }
    return value.get<std::int32_t>();
}

std::string TMyRegistry::ReadStr(std::string_view name) const {
    return Opened().Get(name).get<std::string>();
}

void TMyRegistry::WriteBool(std::string_view name, bool value) {
    OpenedForWriting().Set(name, value);
}

void TMyRegistry::WriteInt(std::string_view name, std::int32_t value) {
    OpenedForWriting().Set(name, value);
}

void TMyRegistry::WriteStr(std::string_view name, std::string_view value) {
    OpenedForWriting().Set(name, std::string(value));
}

void TMyRegistry::WriteStrs(std::span<const TextChange> changes) {
    OpenedKey& opened = OpenedForWriting();
    Json keys = opened.content.keys;
    Json& values = keys[opened.path];
    for (const TextChange& change : changes) {
        if (change.value) {
            values[change.name] = *change.value;
        } else {
            values.erase(change.name);
        }
    }
    if (keys != opened.content.keys) {
        opened.Save(std::move(keys));
    }
}

bool TMyRegistry::DeleteValue(std::string_view name, DeleteScope scope) {
    OpenedKey& opened = OpenedForWriting();
    Json keys = opened.content.keys;
    std::size_t removed = 0;
    if (const auto values = keys.find(opened.path); values != keys.end()) {
        removed += values->erase(std::string(name));
    }
    if (scope == DeleteScope::ValueAndKey) {
        removed += EraseKey(keys, opened.path + "\\" + std::string(name));
    }
    if (removed > 0) {
        opened.Save(std::move(keys));
    }
    return removed > 0;
}

} // namespace tracksmith::settings
