#include <array>

#include "app/forms/main_form.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr auto kInstrumentRows = std::to_array<CommandRow>({
    {commands::kChooseInstrument,
     texts::kChooseInstrument,
     &TMainForm::MMI_ChooseInstrumentClick,
     kAlways,
     {"Ctrl+I"}},
    {"MMI_PrepareSong",
     texts::kPrepareAgain,
     &TMainForm::MMI_PrepareSongClick,
     kWithSong,
     {"Ctrl+Shift+I"}},
    {"MMI_InsertLeadIn", texts::kInsertLeadIn, &TMainForm::MMI_InsertLeadInClick, kWithEarlyNotes},
    {"MMI_PickVoice",
     texts::kPickVoice,
     &TMainForm::MMI_PickVoiceClick,
     kWithSong,
     {"Ctrl+Shift+K"}},
    {"MMI_Voices", texts::kVoices, &TMainForm::MMI_VoicesClick, kAlways, {"Ctrl+K"}},
});

} // namespace

constinit const MenuArea kInstrumentMenu{"Menu_Instrument", texts::kMenuInstrument,
                                         kInstrumentRows};

} // namespace tracksmith::forms
