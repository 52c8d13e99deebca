#pragma once

#include "app/forms/menu/command_row.h"

/// The menus of the menu bar, each in a file of its own.
namespace tracksmith::forms {

extern const MenuArea kFileMenu;
extern const MenuArea kEditMenu;
extern const MenuArea kSongMenu;
extern const MenuArea kPlayMenu;
extern const MenuArea kInstrumentMenu;
extern const MenuArea kViewMenu;
extern const MenuArea kSettingsMenu;
extern const MenuArea kHelpMenu;

/// The context menu of the position display.
extern const MenuArea kPositionMenu;

/// In the view menu; the values are per cent.
extern const MenuArea kTextSizeMenu;

/// In the view menu; the values are those of TextEncoding from 1 on, 0 for the likeliest one.
extern const MenuArea kLyricsEncodingMenu;

/// In the song menu; the values are ticks, 0 for off.
extern const MenuArea kNoteLengthMenu;

/// In the settings menu; the values are minutes, 0 for off.
extern const MenuArea kAutoBackupMenu;

/// In the file menu; filled at run time.
extern const MenuArea kRecentMenu;

} // namespace tracksmith::forms
