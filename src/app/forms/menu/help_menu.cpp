#include <array>

#include "app/forms/main_form.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr auto kRows = std::to_array<CommandRow>({
    {"MMF_OpenDemoSong", texts::kOpenDemo, &TMainForm::MMF_OpenDemoSongClick},
    {"MMF_About", texts::kAbout, &TMainForm::MMF_AboutClick},
});

} // namespace

constinit const MenuArea kHelpMenu{"Menu_Help", texts::kMenuHelp, kRows};

} // namespace tracksmith::forms
