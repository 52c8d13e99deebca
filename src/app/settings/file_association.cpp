#include "app/settings/file_association.h"

#include <array>
#include <string_view>
#include <utility>

#include "base/system/file_io.h"

#include "app/settings/texts.h"

namespace tracksmith::settings {
namespace {

constexpr std::string_view kClasses = "Software\\Classes";
constexpr std::string_view kClass = "Tracksmith.Song";
constexpr std::array<std::string_view, 4> kExtensions{".mid", ".midi", ".kar", ".smf"};
// The value of a key itself has no name.
constexpr std::string_view kKeyItself;

std::string Below(std::string_view key, std::string_view subkey) {
    return std::string(key) + '\\' + std::string(subkey);
}

std::string ClassKey() {
    return Below(kClasses, kClass);
}

std::string OpenWithKey(std::string_view extension) {
    return Below(Below(kClasses, extension), "OpenWithProgids");
}

} // namespace

FileAssociation::FileAssociation(const std::filesystem::path& program)
    : program_(system::PathText(program)), possible_(registry_.Location().empty()) {
    registry_.SetRootKey(RootKey::CurrentUser);
}

FileAssociation::FileAssociation(const std::filesystem::path& program,
                                 std::filesystem::path location)
    : program_(system::PathText(program)), registry_(std::move(location)), possible_(true) {
    registry_.SetRootKey(RootKey::CurrentUser);
}

std::string FileAssociation::Command() const {
    return '"' + program_ + R"(" "%1")";
}

bool FileAssociation::Offered() {
    registry_.SetWriteFlag(false);
    bool offered = false;
    try {
        offered = registry_.OpenKey(Below(ClassKey(), "shell\\open\\command")) &&
                  registry_.ValueExists(kKeyItself) && registry_.ReadStr(kKeyItself) == Command() &&
                  registry_.OpenKey(OpenWithKey(kExtensions.front())) &&
                  registry_.ValueExists(kClass);
    } catch (const RegistryError&) {
        offered = false; // another program's values
    }
    registry_.CloseKey();
    return offered;
}

void FileAssociation::WriteClass(Language language) {
    const std::array<std::pair<std::string, std::string>, 3> values{
        {{ClassKey(), std::string(texts::kSongFile.In(language))},
         {Below(ClassKey(), "DefaultIcon"), '"' + program_ + "\",0"},
         {Below(ClassKey(), "shell\\open\\command"), Command()}}};
    for (const auto& [key, value] : values) {
        registry_.OpenKey(key);
        registry_.WriteStr(kKeyItself, value);
    }
}

bool FileAssociation::Offer(Language language) {
    registry_.SetWriteFlag(true);
    bool done = true;
    try {
        WriteClass(language);
        for (const std::string_view extension : kExtensions) {
            registry_.OpenKey(OpenWithKey(extension));
            registry_.WriteStr(kClass, "");
        }
    } catch (const RegistryError&) {
        done = false;
    }
    registry_.CloseKey();
    return done;
}

// What others have there stays.
void FileAssociation::RemoveEntries() {
    for (const std::string_view extension : kExtensions) {
        registry_.SetWriteFlag(false);
        if (registry_.OpenKey(OpenWithKey(extension))) {
            registry_.SetWriteFlag(true);
            registry_.OpenKey(OpenWithKey(extension));
            registry_.DeleteValue(kClass);
        }
    }
    registry_.SetWriteFlag(true);
    registry_.OpenKey(kClasses);
    registry_.DeleteValue(kClass, DeleteScope::ValueAndKey);
}

bool FileAssociation::TakeBack() {
    bool done = true;
    try {
        RemoveEntries();
    } catch (const RegistryError&) {
        done = false;
    }
    registry_.CloseKey();
    return done;
}

} // namespace tracksmith::settings
