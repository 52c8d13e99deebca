#include <array>

#include "app/forms/lyrics/texts.h"
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

constexpr CommandRow Encoding(std::string_view id, const Text& text, int value) {
    return {.id = id, .text = text, .handler = &TMainForm::MMV_LyricsEncodingClick, .value = value};
}

constexpr auto kEncodingRows = std::to_array<CommandRow>({
    Encoding("MMV_LyricsAutomatic", lyrics_texts::kAutomatic, 0),
    Encoding("MMV_LyricsUtf8", lyrics_texts::kUtf8, 1),
    Encoding("MMV_LyricsWestern", lyrics_texts::kWestern, 2),
    Encoding("MMV_LyricsCentral", lyrics_texts::kCentral, 3),
    Encoding("MMV_LyricsDos", lyrics_texts::kDos, 4),
    Encoding("MMV_LyricsMac", lyrics_texts::kMac, 5),
});

} // namespace

constinit const MenuArea kTextSizeMenu{"Menu_TextSize", texts::kMenuTextSize, kTextSizeRows, true};
constinit const MenuArea kLyricsEncodingMenu{"Menu_LyricsEncoding", lyrics_texts::kMenuEncoding,
                                             kEncodingRows, true};

namespace {

constexpr auto kViewRows = std::to_array<CommandRow>({
    {"MMV_NextPage", texts::kNextPage, &TMainForm::MMV_NextPageClick, kWithSong, {"F9"}},
    {"MMV_LyricsPage",
     lyrics_texts::kFullScreen,
     &TMainForm::MMV_LyricsPageClick,
     kWithSong,
     {"F11"}},
    Submenu(kLyricsEncodingMenu),
    kLine,
    Submenu(kTheme),
    Submenu(kTextSizeMenu),
});

} // namespace

constinit const MenuArea kViewMenu{"Menu_View", texts::kMenuView, kViewRows};

} // namespace tracksmith::forms
