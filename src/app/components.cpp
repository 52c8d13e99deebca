#include "app/components.h"

#include <array>

#include "app/component_texts.h"

namespace tracksmith::app {
namespace {

#ifdef TRACKSMITH_WITH_AUDIO
constexpr bool kWithAudio = true;
#else
constexpr bool kWithAudio = false;
#endif
#ifdef _WIN32
constexpr bool kOnLinux = false;
#else
constexpr bool kOnLinux = true;
#endif

// Where a component is used.
enum class Part { Both, Windows, CommandLine, Audio, LinuxPorts };

struct Component {
    std::string_view name;
    std::string_view licence;
    Part part;
};

// Their texts are in packaging/debian/copyright.
constexpr auto kComponents = std::to_array<Component>({
    {"Qt", "LGPL 3", Part::Windows},
    {"CLI11", "BSD (3 clauses)", Part::CommandLine},
    {"JSON for Modern C++", "MIT", Part::Both},
    {"pugixml", "MIT", Part::Both},
    {"FluidSynth", "LGPL 2.1", Part::Audio},
    {"SDL", "zlib", Part::Audio},
    {"libsndfile", "LGPL 2.1", Part::Audio},
    {"RtMidi", "MIT", Part::LinuxPorts},
    {"ALSA library", "LGPL 2.1", Part::LinuxPorts},
    {"JACK library", "LGPL 2.1", Part::LinuxPorts},
});

bool IsIn(Part part, Program program) {
    switch (part) {
        case Part::Windows:
            return program == Program::Windows;
        case Part::CommandLine:
            return program == Program::CommandLine;
        case Part::Audio:
            return kWithAudio;
        case Part::LinuxPorts:
            return kOnLinux;
        case Part::Both:
            break;
    }
    return true;
}

} // namespace

std::string ComponentLines(Program program, Language language) {
    std::string lines(texts::kComponents.In(language));
    for (const Component& component : kComponents) {
        if (IsIn(component.part, program)) {
            lines.append("\n  ").append(component.name);
            lines.append(": ").append(component.licence);
        }
    }
    return lines;
}

std::string VersionText(std::string_view nameAndVersion, Program program, Language language) {
    std::string text(nameAndVersion);
    text.append("\n").append(texts::kLicence.In(language));
    return text.append("\n").append(ComponentLines(program, language));
}

} // namespace tracksmith::app
