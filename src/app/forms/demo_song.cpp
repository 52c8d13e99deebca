#include "app/forms/demo_song.h"

#include <system_error>
#include <vector>

#include <QCoreApplication>
#include <QStandardPaths>
#include <QStringList>

#include "app/forms/qt_text.h"

namespace tracksmith::forms {
namespace {

/// Folders above the program that may hold a source tree with its build folder.
constexpr int kLevelsUp = 4;

std::vector<std::filesystem::path> DataFolders() {
    const auto program = PathFromQString(QCoreApplication::applicationDirPath());
    std::vector<std::filesystem::path> folders{program.parent_path() / "share" / "tracksmith"};
    auto folder = program;
    for (int level = 0; level <= kLevelsUp; ++level) {
        folders.push_back(folder / "data");
        folder = folder.parent_path();
    }
    for (const QString& shared :
         QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        folders.push_back(PathFromQString(shared) / "tracksmith");
    }
    return folders;
}

} // namespace

std::optional<std::filesystem::path> FindDemoSong() {
    for (const auto& folder : DataFolders()) {
        const auto file = folder / "demo" / "demo.mid";
        std::error_code ignored;
        if (std::filesystem::is_regular_file(file, ignored)) {
            return file;
        }
    }
    return std::nullopt;
}

} // namespace tracksmith::forms
