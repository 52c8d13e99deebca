#include <array>

#include "app/forms/guide/texts.h"
#include "app/forms/main_form.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr auto kHelpRows = std::to_array<CommandRow>({
    {"MMF_UserGuide",
     guide_texts::kMenu,
     &TMainForm::MMF_UserGuideClick,
     kAlways,
     {"F1", QKeySequence::HelpContents}},
    {"MMF_OpenDemoSong", texts::kOpenDemo, &TMainForm::MMF_OpenDemoSongClick},
    {"MMF_FirstSteps", texts::kFirstSteps, &TMainForm::MMF_FirstStepsClick},
    {"MMF_About", texts::kAbout, &TMainForm::MMF_AboutClick},
});

} // namespace

constinit const MenuArea kHelpMenu{"Menu_Help", texts::kMenuHelp, kHelpRows};

} // namespace tracksmith::forms
