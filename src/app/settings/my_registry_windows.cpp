#include <bit>
#include <type_traits>
#include <vector>
#include <windows.h>

#include "app/settings/my_registry.h"

namespace tracksmith::settings {
namespace {

/// More than any setting needs; a larger value is treated as unreadable.
constexpr std::size_t kMaxTextBytes = 16U * 1024U * 1024U;

struct KeyCloser {
    void operator()(HKEY key) const { RegCloseKey(key); }
};
using KeyHandle = std::unique_ptr<std::remove_pointer_t<HKEY>, KeyCloser>;

void Require(LSTATUS status, const char* what) {
    if (status != ERROR_SUCCESS) {
        throw RegistryError(what, {static_cast<int>(status), std::system_category()});
    }
}

std::wstring ToUtf16(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    if (text.size() > kMaxTextBytes) {
        throw RegistryError("text too long");
    }
    const int length = static_cast<int>(text.size());
    const int units =
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), length, nullptr, 0);
    if (units <= 0) {
        throw RegistryError("text is not UTF-8");
    }
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), length, wide.data(), units);
    return wide;
}

std::string ToUtf8(const std::wstring& wide) {
    if (wide.empty()) {
        return {};
    }
    const int length = static_cast<int>(wide.size());
    const int bytes = WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), length,
                                          nullptr, 0, nullptr, nullptr);
    if (bytes <= 0) {
        throw RegistryError("stored text is not UTF-16");
    }
    std::string text(static_cast<std::size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), length, text.data(), bytes,
                        nullptr, nullptr);
    return text;
}

/// The system would cut a name at a zero character and so reach another entry.
std::wstring ToName(std::string_view name) {
    if (name.find('\0') != std::string_view::npos) {
        throw RegistryError("zero character in a name");
    }
    return ToUtf16(name);
}

struct RawValue {
    DWORD type = REG_NONE;
    std::vector<BYTE> bytes;
};

/// The value as stored. It may grow between asking for its size and reading it, hence the loop.
RawValue ReadRaw(HKEY key, const std::wstring& name) {
    RawValue value;
    DWORD size = 0;
    LSTATUS status = RegQueryValueExW(key, name.c_str(), nullptr, &value.type, nullptr, &size);
    while (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
        if (size > kMaxTextBytes) {
            throw RegistryError("stored value too long");
        }
        value.bytes.resize(size);
        // A null buffer would again only ask for the size
        BYTE nothing = 0;
        BYTE* target = value.bytes.empty() ? &nothing : value.bytes.data();
        status = RegQueryValueExW(key, name.c_str(), nullptr, &value.type, target, &size);
        if (status == ERROR_SUCCESS) {
            value.bytes.resize(size);
            return value;
        }
    }
    throw RegistryError("value missing or unreadable");
}

std::uint32_t ReadNumber(HKEY key, const std::wstring& name) {
    const RawValue value = ReadRaw(key, name);
    if (value.type != REG_DWORD || value.bytes.size() != sizeof(std::uint32_t)) {
        throw RegistryError("stored value is no 32-bit number");
    }
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < sizeof number; ++i) {
        number |= static_cast<std::uint32_t>(value.bytes[i]) << (8U * i);
    }
    return number;
}

void WriteRaw(HKEY key, std::string_view name, DWORD type, const void* data, std::size_t size) {
    Require(RegSetValueExW(key, ToName(name).c_str(), 0, type, static_cast<const BYTE*>(data),
                           static_cast<DWORD>(size)),
            "value not written");
}

bool Removed(LSTATUS status) {
    if (status == ERROR_FILE_NOT_FOUND) {
        return false;
    }
    Require(status, "entry not deleted");
    return true;
}

} // namespace

struct TMyRegistry::OpenedKey {
    KeyHandle handle;
};

std::filesystem::path TMyRegistry::UserLocation() {
    return {};
}

std::shared_ptr<TMyRegistry::OpenedKey> TMyRegistry::Open(const std::string& path, bool write) {
    std::wstring full = location_.native();
    if (!full.empty()) {
        full += L'\\';
    }
    full += ToName(path);
    HKEY key = nullptr;
    const LSTATUS status =
        write
            ? RegCreateKeyExW(HKEY_CURRENT_USER, full.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                              KEY_READ | KEY_WRITE | DELETE, nullptr, &key, nullptr)
            : RegOpenKeyExW(HKEY_CURRENT_USER, full.c_str(), 0, KEY_READ, &key);
    if (!write && status == ERROR_FILE_NOT_FOUND) {
        return nullptr;
    }
    Require(status, "key not opened");
    auto opened = std::make_shared<OpenedKey>();
    opened->handle.reset(key);
    return opened;
}

bool TMyRegistry::ValueExists(std::string_view name) const {
    const LSTATUS status = RegQueryValueExW(Opened().handle.get(), ToName(name).c_str(), nullptr,
                                            nullptr, nullptr, nullptr);
    return status == ERROR_SUCCESS;
}

bool TMyRegistry::ReadBool(std::string_view name) const {
    const std::uint32_t number = ReadNumber(Opened().handle.get(), ToName(name));
    if (number > 1) {
        throw RegistryError("stored value is no Boolean");
    }
    return number == 1;
}

std::int32_t TMyRegistry::ReadInt(std::string_view name) const {
    return std::bit_cast<std::int32_t>(ReadNumber(Opened().handle.get(), ToName(name)));
}

std::string TMyRegistry::ReadStr(std::string_view name) const {
    const RawValue value = ReadRaw(Opened().handle.get(), ToName(name));
    if (value.type != REG_SZ && value.type != REG_EXPAND_SZ) {
        throw RegistryError("stored value is no text");
    }
    std::wstring wide;
    for (std::size_t i = 0; i + 1 < value.bytes.size(); i += 2) {
        wide += static_cast<wchar_t>(value.bytes[i] | value.bytes[i + 1] << 8);
    }
    // The terminator belongs to the stored form, though other programs may have left it out
    if (!wide.empty() && wide.back() == L'\0') {
        wide.pop_back();
    }
    return ToUtf8(wide);
}

void TMyRegistry::WriteBool(std::string_view name, bool value) {
    WriteInt(name, value ? 1 : 0);
}

void TMyRegistry::WriteInt(std::string_view name, std::int32_t value) {
    const auto number = std::bit_cast<DWORD>(value);
    WriteRaw(OpenedForWriting().handle.get(), name, REG_DWORD, &number, sizeof number);
}

void TMyRegistry::WriteStr(std::string_view name, std::string_view value) {
    const std::wstring wide = ToUtf16(value);
    const std::size_t size = (wide.size() + 1) * sizeof(wchar_t);
    WriteRaw(OpenedForWriting().handle.get(), name, REG_SZ, wide.c_str(), size);
}

void TMyRegistry::WriteStrs(std::span<const TextChange> changes) {
    for (const TextChange& change : changes) {
        if (change.value) {
            WriteStr(change.name, *change.value);
        } else {
            DeleteValue(change.name);
        }
    }
}

bool TMyRegistry::DeleteValue(std::string_view name, DeleteScope scope) {
    const std::wstring wide = ToName(name);
    HKEY key = OpenedForWriting().handle.get();
    bool removed = Removed(RegDeleteValueW(key, wide.c_str()));
    // An empty name would mean the open key itself
    if (scope == DeleteScope::ValueAndKey && !wide.empty()) {
        removed = Removed(RegDeleteTreeW(key, wide.c_str())) || removed;
    }
    return removed;
}

} // namespace tracksmith::settings
