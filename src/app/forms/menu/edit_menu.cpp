#include <array>

#include "app/forms/main_form.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr auto kRows = std::to_array<CommandRow>({
    {commands::kTakeBack,
     texts::kTakeBack,
     &TMainForm::MME_TakeBackClick,
     kWithTakeBack,
     {"Ctrl+Z", QKeySequence::Undo}},
    kLine,
    {"MME_AutoRevoicer",
     texts::kAutoRevoicer,
     &TMainForm::MME_AutoRevoicerClick,
     kAlways,
     {"Ctrl+Shift+R"}},
});

} // namespace

constinit const MenuArea kEditMenu{"Menu_Edit", texts::kMenuEdit, kRows};

} // namespace tracksmith::forms
