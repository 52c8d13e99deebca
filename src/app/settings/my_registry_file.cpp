#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <pwd.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "app/settings/my_registry.h"

namespace tracksmith::settings {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

/// A settings file beyond this was not written by this program and is treated as damaged.
constexpr std::streamoff kMaxFileBytes = std::streamoff{16} * 1024 * 1024;
/// Keys and values need two levels; a deeper file is damaged, and deep nesting costs stack.
constexpr int kMaxDepth = 16;
constexpr std::chrono::milliseconds kLockWait{2000};
constexpr std::chrono::milliseconds kLockPoll{1};

class FileDescriptor {
public:
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }
    int Number() const { return number_; }

private:
    int number_;
};

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
        if (file_.Number() < 0) {
            throw RegistryError("lock file not opened");
        }
        const auto deadline = std::chrono::steady_clock::now() + kLockWait;
        while (flock(file_.Number(), LOCK_EX | LOCK_NB) != 0) {
            const bool busy = errno == EWOULDBLOCK || errno == EINTR;
            if (!busy || std::chrono::steady_clock::now() >= deadline) {
                throw RegistryError("settings locked by another program");
            }
            std::this_thread::sleep_for(kLockPoll);
        }
    }

private:
    FileDescriptor file_; // closing it ends the lock
};

struct Loaded {
    Json keys = Json::object();
    bool damaged = false;
};

/// The file's text; nothing when it is too large. Raises RegistryError when it cannot be read,
/// which is no damage: it may be readable next time.
std::optional<std::string> ReadLimited(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    // Asked of the open file: the name may mean another one already
    const std::streamoff size = stream ? std::streamoff(stream.tellg()) : -1;
    if (size > kMaxFileBytes) {
        return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(std::max<std::streamoff>(size, 0)), '\0');
    if (size < 0 || !stream.seekg(0) || !stream.read(text.data(), size)) {
        throw RegistryError("settings file not read");
    }
    return text;
}

std::optional<Json> ParseKeys(const std::string& text) {
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

Loaded Load(const fs::path& file) {
    const fs::file_status status = fs::status(file);
    if (status.type() == fs::file_type::not_found) {
        return {};
    }
    // Opening a pipe or a device would block
    if (status.type() != fs::file_type::regular) {
        throw RegistryError("settings path is no file");
    }
    const std::optional<std::string> text = ReadLimited(file);
    std::optional<Json> keys = text ? ParseKeys(*text) : std::nullopt;
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

bool WriteAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return fsync(descriptor) == 0;
}

/// Replaces the file so that at any moment it holds all of the old or all of the new text.
void WriteAtomically(const fs::path& file, std::string_view text) {
    std::string temporary = file.string() + ".XXXXXX";
    const FileDescriptor target(mkostemp(temporary.data(), O_CLOEXEC));
    if (target.Number() < 0) {
        throw RegistryError("temporary file not created");
    }
    if (!WriteAll(target.Number(), text) || rename(temporary.c_str(), file.c_str()) != 0) {
        unlink(temporary.c_str());
        throw RegistryError("settings file not written");
    }
    // Makes the new name last through a power failure; the text itself is safe already
    const FileDescriptor folder(
        open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.Number() >= 0) {
        fsync(folder.Number());
    }
}

/// The file itself where `location` is a link to it, so that a write keeps the link.
fs::path ResolvedFile(const fs::path& location) {
    if (location.empty()) {
        throw RegistryError("no folder for settings");
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
        if (std::cmp_greater(text.size(), kMaxFileBytes)) {
            throw RegistryError("settings too large");
        }
        if (content.damaged) {
            SetAside(file);
            content.damaged = false;
        }
        WriteAtomically(file, text);
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

std::shared_ptr<TMyRegistry::OpenedKey> TMyRegistry::Open(const fs::path& location,
                                                          const std::string& path, bool write) {
    auto opened = std::make_shared<OpenedKey>();
    opened->file = ResolvedFile(location);
    opened->path = path;
    if (write) {
        fs::create_directories(opened->file.parent_path());
        opened->lock.emplace(opened->file);
    }
    opened->content = Load(opened->file);
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
