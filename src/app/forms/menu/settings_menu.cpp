#include <array>

#include "app/forms/main_form.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr auto kLanguageRows = std::to_array<CommandRow>({
    {commands::kGerman, texts::kGerman, &TMainForm::MMF_GermanClick},
    {commands::kEnglish, texts::kEnglish, &TMainForm::MMF_EnglishClick},
});
constexpr MenuArea kLanguage{"Menu_Language", texts::kMenuLanguage, kLanguageRows, true};

constexpr auto kRows = std::to_array<CommandRow>({
    {"MMS_MidiPorts", texts::kMidiPorts, &TMainForm::MMS_MidiPortsClick},
    {"MMS_Instruments", texts::kInstrumentSettings, &TMainForm::MMS_InstrumentsClick},
    {.id = commands::kLiveWhileStopped,
     .text = texts::kLiveWhileStopped,
     .handler = &TMainForm::MMS_LiveWhileStoppedClick,
     .checkable = true},
    Submenu(kLanguage),
});

} // namespace

constinit const MenuArea kSettingsMenu{"Menu_Settings", texts::kMenuSettings, kRows};

} // namespace tracksmith::forms
