#include <array>

#include "app/forms/main_form.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr auto kThemeRows = std::to_array<CommandRow>({
    {commands::kThemeDark, texts::kDark, &TMainForm::MMF_ThemeDarkClick},
    {commands::kThemeLight, texts::kLight, &TMainForm::MMF_ThemeLightClick},
    {commands::kThemeSystem, texts::kSystem, &TMainForm::MMF_ThemeSystemClick},
});
constexpr MenuArea kTheme{"Menu_Theme", texts::kMenuTheme, kThemeRows, true};

constexpr auto kRows = std::to_array<CommandRow>({
    {"MMV_NextPage", texts::kNextPage, &TMainForm::MMV_NextPageClick, kWithSong, {"F9"}},
    Submenu(kTheme),
});

} // namespace

constinit const MenuArea kViewMenu{"Menu_View", texts::kMenuView, kRows};

} // namespace tracksmith::forms
