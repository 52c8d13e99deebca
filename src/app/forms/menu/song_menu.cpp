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

constexpr auto kReadingRows = std::to_array<CommandRow>({
    Switch("MMF_SplitFormat0", texts::kSplitFormat0, kSplitFormat0),
    Switch("MMF_HonourZelIgnore", texts::kHonourZelIgnore, kHonourZelIgnore),
    Switch("MMF_RunningStatusAcrossSysex", texts::kRunningAcross, kRunningAcross),
});
constexpr auto kWritingRows = std::to_array<CommandRow>({
    Switch("MMF_UseRunningStatus", texts::kUseRunning, kUseRunning),
    Switch("MMF_OmitPortEvents", texts::kOmitPorts, kOmitPorts),
});
constexpr MenuArea kReading{"Menu_Reading", texts::kMenuReading, kReadingRows};
constexpr MenuArea kWriting{"Menu_Writing", texts::kMenuWriting, kWritingRows};

constexpr auto kRows = std::to_array<CommandRow>({
    {"MMF_WhatChanged", texts::kWhatChanged, &TMainForm::MMF_WhatChangedClick, kWithSong},
    kLine,
    Submenu(kReading),
    Submenu(kWriting),
});

} // namespace

constinit const MenuArea kSongMenu{"Menu_Song", texts::kMenuSong, kRows};

} // namespace tracksmith::forms
