#include "app/note_settings.h"

#include <algorithm>
#include <cstdint>

namespace tracksmith::app {
namespace {

constexpr const char* kLength = "MinimumNoteLength";
constexpr const char* kExceptDrums = "MinimumNoteLengthExceptDrums";

} // namespace

song::NoteLengthOptions ReadNoteLength(settings::SettingsStore& store) {
    const std::int32_t length = store.ReadIntFromUserRegistry(kLength, song::kUsualNoteLength);
    return {std::clamp(length, 0, song::kMostNoteLength),
            store.ReadBoolFromUserRegistry(kExceptDrums, false)};
}

bool WriteNoteLength(settings::SettingsStore& store, const song::NoteLengthOptions& options) {
    const bool length = store.WriteIntToUserRegistry(kLength, options.minimum);
    return store.WriteBoolToUserRegistry(kExceptDrums, options.exceptDrums) && length;
}

} // namespace tracksmith::app
