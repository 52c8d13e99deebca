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

constexpr CommandRow Size(std::string_view id, const Text& text, int percent) {
    return {.id = id, .text = text, .handler = &TMainForm::MMV_TextSizeClick, .value = percent};
}

// Each a good fifth larger than the one before.
constexpr auto kTextSizeRows = std::to_array<CommandRow>({
    Size("MMV_TextSize100", texts::kTextSize100, 100),
    Size("MMV_TextSize120", texts::kTextSize120, 120),
    Size("MMV_TextSize140", texts::kTextSize140, 140),
    Size("MMV_TextSize170", texts::kTextSize170, 170),
    Size("MMV_TextSize200", texts::kTextSize200, 200),
    Size("MMV_TextSize250", texts::kTextSize250, 250),
});

} // namespace

constinit const MenuArea kTextSizeMenu{"Menu_TextSize", texts::kMenuTextSize, kTextSizeRows, true};

namespace {

constexpr auto kRows = std::to_array<CommandRow>({
    {"MMV_NextPage", texts::kNextPage, &TMainForm::MMV_NextPageClick, kWithSong, {"F9"}},
    Submenu(kTheme),
    Submenu(kTextSizeMenu),
});

} // namespace

constinit const MenuArea kViewMenu{"Menu_View", texts::kMenuView, kRows};

} // namespace tracksmith::forms
