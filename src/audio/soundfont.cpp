#include "audio/soundfont.h"

#include <array>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "audio/audio_error.h"
#include "audio/texts.h"
#include "base/display_text.h"
#include "base/system/file_io.h"

namespace tracksmith::audio {
namespace {

constexpr std::array<std::string_view, 2> kFolders{"/usr/share/sounds", "/usr/share/soundfonts"};
// In order of preference: small and quick to load first.
constexpr std::array<std::string_view, 6> kFiles{"TimGM6mb.sf2",   "default-GM.sf2",
                                                 "default-GM.sf3", "FluidR3_GM.sf2",
                                                 "FluidR3_GM.sf3", "FluidR3_GS.sf2"};
constexpr std::array<std::string_view, 3> kSubfolders{"sf2", "sf3", ""};

bool IsFile(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

std::filesystem::path Installed() {
    for (const std::string_view file : kFiles) {
        for (const std::string_view folder : kFolders) {
            for (const std::string_view subfolder : kSubfolders) {
                std::filesystem::path path = std::filesystem::path(folder) / subfolder / file;
                if (IsFile(path)) {
                    return path;
                }
            }
        }
    }
    throw EAudioError(AudioFault::NoInstrument, texts::kNoSoundfont);
}

std::filesystem::path Named(const std::filesystem::path& path) {
    if (!IsFile(path)) {
        throw EAudioError(AudioFault::NoInstrument, texts::kSoundfontMissing,
                          DisplayPath(system::PathText(path)));
    }
    return path;
}

} // namespace

std::filesystem::path FindSoundfont(const std::filesystem::path& chosen) {
    if (!chosen.empty()) {
        return Named(chosen);
    }
    const char* fromEnvironment = std::getenv("TRACKSMITH_SOUNDFONT");
    if (fromEnvironment != nullptr && *fromEnvironment != '\0') {
        return Named(fromEnvironment);
    }
    return Installed();
}

} // namespace tracksmith::audio
