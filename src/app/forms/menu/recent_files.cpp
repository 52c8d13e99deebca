#include "app/forms/menu/recent_files.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <system_error>

#include "base/forms/qt_text.h"
#include "base/system/file_io.h"

namespace tracksmith::forms {
namespace {

constexpr const char* kValueName = "LastMidifilesList";

} // namespace

std::vector<std::filesystem::path> RecentFiles::List() {
    std::vector<std::filesystem::path> files;
    std::istringstream lines(store_.ReadStrFromUserRegistry(kValueName, ""));
    std::string line;
    while (files.size() < kMost && std::getline(lines, line)) {
        if (!line.empty()) {
            files.push_back(PathFromQString(ToQString(line)));
        }
    }
    return files;
}

void RecentFiles::Add(const std::filesystem::path& file) {
    std::error_code failed;
    const auto absolute = std::filesystem::absolute(file, failed).lexically_normal();
    if (failed || system::PathText(absolute).find('\n') != std::string::npos) {
        return;
    }
    auto files = List();
    std::erase(files, absolute);
    files.insert(files.begin(), absolute);
    files.resize(std::min(files.size(), kMost));
    std::string lines;
    for (const auto& each : files) {
        lines += system::PathText(each) + '\n';
    }
    store_.WriteStrToUserRegistry(kValueName, lines);
}

void RecentFiles::Clear() {
    store_.DeleteFromUserRegistry(kValueName);
}

} // namespace tracksmith::forms
