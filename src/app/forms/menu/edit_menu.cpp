#include <array>

#include "app/forms/main_form.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr auto kEditRows = std::to_array<CommandRow>({
    {commands::kUndo, texts::kUndo, &TMainForm::MME_UndoClick, kWithUndo},
    {commands::kTakeBack,
     texts::kTakeBack,
     &TMainForm::MME_TakeBackClick,
     kWithTakeBack,
     {"Ctrl+Z", QKeySequence::Undo}},
    kLine,
    {"MME_RangeCopy",
     texts::kRangeCopy,
     &TMainForm::MME_RangeCopyClick,
     kWithSong,
     {"Ctrl+Shift+C"}},
    {"MME_RangeDelete",
     texts::kRangeDelete,
     &TMainForm::MME_RangeDeleteClick,
     kWithSong,
     {"Ctrl+Shift+X"}},
    {"MME_RangeTranspose",
     texts::kRangeTranspose,
     &TMainForm::MME_RangeTransposeClick,
     kWithSong,
     {"Ctrl+Shift+T"}},
    kLine,
    {"MME_AutoRevoicer",
     texts::kAutoRevoicer,
     &TMainForm::MME_AutoRevoicerClick,
     kAlways,
     {"Ctrl+Shift+R"}},
});

} // namespace

constinit const MenuArea kEditMenu{"Menu_Edit", texts::kMenuEdit, kEditRows};

} // namespace tracksmith::forms
