#pragma once

#include <span>
#include <string_view>

#include "base/text.h"
#include <QKeySequence>

namespace tracksmith::forms {

class TMainForm;
struct MenuArea;
struct SongOption;

/// What decides which commands are enabled.
struct MenuState {
    /// A song is open.
    bool song = false;
    /// The open song came from a file, which can be read again.
    bool songFile = false;
    /// There are songs to go through one after the other.
    bool songList = false;
    /// The last range that was edited can be put back.
    bool undo = false;
    /// The last change of the whole song can be taken back.
    bool takeBack = false;
    /// An empty measure in front would help the instrument to be ready in time.
    bool leadIn = false;
};

/// A field of MenuState that must be true for a command to be enabled.
using Condition = bool MenuState::*;
inline constexpr Condition kAlways = nullptr;
inline constexpr Condition kWithSong = &MenuState::song;
inline constexpr Condition kWithSongFile = &MenuState::songFile;
inline constexpr Condition kWithSongList = &MenuState::songList;
inline constexpr Condition kWithUndo = &MenuState::undo;
inline constexpr Condition kWithTakeBack = &MenuState::takeBack;
inline constexpr Condition kWithEarlyNotes = &MenuState::leadIn;

/// The keys of a command.
struct CommandKeys {
    /// Names as QKeySequence reads them, separated by "; "; empty for none.
    const char* names = "";
    /// Goes before `names` where the platform has a key for it.
    QKeySequence::StandardKey standard = QKeySequence::UnknownKey;
};

/// A row of a menu. Everything about a command is in its row, its handler and its text.
struct CommandRow {
    /// Object name of the action, by which everybody finds it. Empty for a line between commands.
    std::string_view id{};
    Text text{Both{""}};
    void (TMainForm::*handler)() = nullptr;
    Condition enabledWhen = kAlways;
    CommandKeys keys{};
    bool checkable = false;
    /// Set instead of `handler` for a switch that changes how songs are read or written.
    const SongOption* option = nullptr;
    /// What the row chooses in an exclusive menu, for MainMenu::Chosen.
    int value = 0;
    /// Set alone for a menu in the menu.
    const MenuArea* submenu = nullptr;
};

/// A menu with its rows.
struct MenuArea {
    /// Object name of the menu.
    std::string_view id;
    Text title;
    std::span<const CommandRow> rows;
    /// The rows exclude each other, one of them is always checked.
    bool exclusive = false;
};

/// A line between commands.
inline constexpr CommandRow kLine{};

/// The row that opens `menu`.
constexpr CommandRow Submenu(const MenuArea& menu) {
    return {.submenu = &menu};
}

} // namespace tracksmith::forms
