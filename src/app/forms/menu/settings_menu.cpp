#include <array>

#include "app/forms/backups/texts.h"
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

constexpr CommandRow Every(std::string_view id, const Text& text, int minutes) {
    return {.id = id, .text = text, .handler = &TMainForm::MMS_AutoBackupClick, .value = minutes};
}

constexpr auto kAutoBackupRows = std::to_array<CommandRow>({
    Every("MMS_AutoBackupOff", backup_texts::kOff, 0),
    Every("MMS_AutoBackup1", backup_texts::kEvery1, 1),
    Every("MMS_AutoBackup2", backup_texts::kEvery2, 2),
    Every("MMS_AutoBackup5", backup_texts::kEvery5, 5),
    Every("MMS_AutoBackup10", backup_texts::kEvery10, 10),
    Every("MMS_AutoBackup30", backup_texts::kEvery30, 30),
});

} // namespace

constinit const MenuArea kAutoBackupMenu{"Menu_AutoBackup", backup_texts::kMenuAutoBackup,
                                         kAutoBackupRows, true};

namespace {

constexpr auto kSettingsRows = std::to_array<CommandRow>({
    {"MMS_MidiPorts", texts::kMidiPorts, &TMainForm::MMS_MidiPortsClick},
    {"MMS_Instruments", texts::kInstrumentSettings, &TMainForm::MMS_InstrumentsClick},
    {.id = commands::kLiveWhileStopped,
     .text = texts::kLiveWhileStopped,
     .handler = &TMainForm::MMS_LiveWhileStoppedClick,
     .checkable = true},
    Submenu(kAutoBackupMenu),
    {.id = commands::kFileAssociation,
     .text = texts::kFileAssociation,
     .handler = &TMainForm::MMS_FileAssociationClick,
     .checkable = true},
    Submenu(kLanguage),
});

} // namespace

constinit const MenuArea kSettingsMenu{"Menu_Settings", texts::kMenuSettings, kSettingsRows};

} // namespace tracksmith::forms
