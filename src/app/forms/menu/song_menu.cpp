#include <array>

#include "app/forms/main_form.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/settings/song_options.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr SongOption kSplitFormat0{
    "SplitFormat0",
    [](session::WorkOptions& options, bool on) { options.decodeOptions.splitFormat0 = on; }, true};
constexpr SongOption kHonourZelIgnore{
    "HonourZelIgnore",
    [](session::WorkOptions& options, bool on) { options.decodeOptions.honourZelIgnore = on; },
    true};
constexpr SongOption kRunningAcross{
    "RunningStatusAcrossSysex",
    [](session::WorkOptions& options, bool on) { options.runningStatusAcrossSysex = on; }, true};
constexpr SongOption kExceptDrums{
    "MinimumNoteLengthExceptDrums",
    [](session::WorkOptions& options, bool on) { options.noteLength.exceptDrums = on; }, true};
constexpr SongOption kSkipNoteCheck{
    "SkipNoteCheck", [](session::WorkOptions& options, bool on) { options.skipNoteCheck = on; },
    true};
constexpr SongOption kUseRunning{
    "UseRunningStatus",
    [](session::WorkOptions& options, bool on) { options.encodeOptions.useRunningStatus = on; },
    false};
constexpr SongOption kOmitPorts{
    "OmitPortEvents",
    [](session::WorkOptions& options, bool on) { options.encodeOptions.omitPortEvents = on; },
    false};

constexpr CommandRow Switch(std::string_view id, const Text& text, const SongOption& option) {
    return {.id = id, .text = text, .checkable = true, .option = &option};
}

constexpr CommandRow Length(std::string_view id, const Text& text, int ticks) {
    return {.id = id, .text = text, .handler = &TMainForm::MMF_NoteLengthClick, .value = ticks};
}

constexpr auto kNoteLengthRows = std::to_array<CommandRow>({
    Length("MMF_NoteLengthOff", texts::kNoteLengthOff, 0),
    Length("MMF_NoteLength10", texts::kNoteLength10, 10),
    Length("MMF_NoteLength20", texts::kNoteLength20, song::kUsualNoteLength),
    Length("MMF_NoteLength30", texts::kNoteLength30, 30),
    Length("MMF_NoteLength60", texts::kNoteLength60, 60),
});

} // namespace

constinit const MenuArea kNoteLengthMenu{"Menu_NoteLength", texts::kMenuNoteLength, kNoteLengthRows,
                                         true};

namespace {

constexpr auto kReadingRows = std::to_array<CommandRow>({
    Switch("MMF_SplitFormat0", texts::kSplitFormat0, kSplitFormat0),
    Switch("MMF_HonourZelIgnore", texts::kHonourZelIgnore, kHonourZelIgnore),
    Switch("MMF_RunningStatusAcrossSysex", texts::kRunningAcross, kRunningAcross),
    Submenu(kNoteLengthMenu),
    Switch("MMF_NoteLengthExceptDrums", texts::kExceptDrums, kExceptDrums),
    Switch("MMF_SkipNoteCheck", texts::kSkipNoteCheck, kSkipNoteCheck),
});
constexpr auto kWritingRows = std::to_array<CommandRow>({
    Switch("MMF_UseRunningStatus", texts::kUseRunning, kUseRunning),
    Switch("MMF_OmitPortEvents", texts::kOmitPorts, kOmitPorts),
});
constexpr MenuArea kReading{"Menu_Reading", texts::kMenuReading, kReadingRows};
constexpr MenuArea kWriting{"Menu_Writing", texts::kMenuWriting, kWritingRows};

constexpr auto kSongRows = std::to_array<CommandRow>({
    {"MMF_Health", texts::kHealth, &TMainForm::MMF_HealthClick, kWithSong, {"F8"}},
    {"MMF_WhatChanged", texts::kWhatChanged, &TMainForm::MMF_WhatChangedClick, kWithSong},
    kLine,
    Submenu(kReading),
    Submenu(kWriting),
});

} // namespace

constinit const MenuArea kSongMenu{"Menu_Song", texts::kMenuSong, kSongRows};

} // namespace tracksmith::forms
