#include <array>

#include "app/forms/main_form.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr auto kPlayRows = std::to_array<CommandRow>({
    {commands::kPlayStop, texts::kPlay, &TMainForm::MMP_PlayStopClick, kWithSong, {"Space"}},
    {commands::kMoveToStart,
     texts::kMoveToStart,
     &TMainForm::MMP_MoveToStartClick,
     kWithSong,
     {"Home"}},
    {"MMP_MoveToEnd", texts::kMoveToEnd, &TMainForm::MMP_MoveToEndClick, kWithSong, {"End"}},
    {commands::kMeasureBack,
     texts::kMeasureBack,
     &TMainForm::MMP_MeasureBackClick,
     kWithSong,
     {"PgUp"}},
    {commands::kMeasureForward,
     texts::kMeasureForward,
     &TMainForm::MMP_MeasureForwardClick,
     kWithSong,
     {"PgDown"}},
    kLine,
    {commands::kLooping,
     texts::kLooping,
     &TMainForm::MMP_LoopingClick,
     kWithSong,
     {"Ctrl+L"},
     true},
    {"MMP_LoopFromHere", texts::kLoopFromHere, &TMainForm::MMP_LoopFromHereClick, kWithSong, {"["}},
    {"MMP_LoopToHere", texts::kLoopToHere, &TMainForm::MMP_LoopToHereClick, kWithSong, {"]"}},
    kLine,
    {"MMP_TempoDown", texts::kTempoDown, &TMainForm::MMP_TempoDownClick, kWithSong, {"-"}},
    {"MMP_TempoUp", texts::kTempoUp, &TMainForm::MMP_TempoUpClick, kWithSong, {"+"}},
    {"MMP_TempoReset", texts::kTempoReset, &TMainForm::MMP_TempoResetClick, kWithSong, {"Ctrl+="}},
    kLine,
    {"MMP_TransposeUp",
     texts::kTransposeUp,
     &TMainForm::MMP_TransposeUpClick,
     kWithSong,
     {"Ctrl+Up"}},
    {"MMP_TransposeDown",
     texts::kTransposeDown,
     &TMainForm::MMP_TransposeDownClick,
     kWithSong,
     {"Ctrl+Down"}},
    {"MMP_TransposeReset",
     texts::kTransposeReset,
     &TMainForm::MMP_TransposeResetClick,
     kWithSong,
     {"Ctrl+Shift+0"}},
    kLine,
    {commands::kPanic, texts::kPanic, &TMainForm::MMP_PanicClick, kAlways, {"Ctrl+Alt+P"}},
});

} // namespace

constinit const MenuArea kPlayMenu{"Menu_Play", texts::kMenuPlay, kPlayRows};

} // namespace tracksmith::forms
