#include <array>

#include "app/forms/backups/texts.h"
#include "app/forms/main_form.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {

constinit const MenuArea kRecentMenu{"Menu_Recent", texts::kMenuRecent, {}};

namespace {

constexpr auto kFileRows = std::to_array<CommandRow>({
    {"MMF_NewMidifile",
     texts::kNew,
     &TMainForm::MMF_NewMidifileClick,
     kAlways,
     {"Ctrl+N", QKeySequence::New}},
    {"MMF_OpenMidifile",
     texts::kOpen,
     &TMainForm::MMF_OpenMidifileClick,
     kAlways,
     {"Ctrl+O", QKeySequence::Open}},
    Submenu(kRecentMenu),
    {"MMF_ReloadMidifile",
     texts::kReload,
     &TMainForm::MMF_ReloadMidifileClick,
     kWithSongFile,
     {"Ctrl+R"}},
    {"MMF_NextSong",
     texts::kNextSong,
     &TMainForm::MMF_NextSongClick,
     kWithSongList,
     {"Ctrl+PgDown"}},
    {"MMF_PreviousSong",
     texts::kPreviousSong,
     &TMainForm::MMF_PreviousSongClick,
     kWithSongList,
     {"Ctrl+PgUp"}},
    {"MMF_RestoreEarlier", backup_texts::kRestoreEarlier, &TMainForm::MMF_RestoreEarlierClick},
    kLine,
    {"MMF_SaveMidifile",
     texts::kSave,
     &TMainForm::MMF_SaveMidifileClick,
     kWithSong,
     {"Ctrl+S", QKeySequence::Save}},
    {"MMF_SaveMidifileAs",
     texts::kSaveAs,
     &TMainForm::MMF_SaveMidifileAsClick,
     kWithSong,
     {"Ctrl+Shift+S", QKeySequence::SaveAs}},
    {"MMF_SaveFileAsFormat0", texts::kSaveFormat0, &TMainForm::MMF_SaveFileAsFormat0Click,
     kWithSong},
    {"MMF_SaveFileAsFormat1", texts::kSaveFormat1, &TMainForm::MMF_SaveFileAsFormat1Click,
     kWithSong},
    kLine,
    {"MMF_Quit", texts::kQuit, &TMainForm::MMF_QuitClick, kAlways, {"Ctrl+Q", QKeySequence::Quit}},
});

} // namespace

constinit const MenuArea kFileMenu{"Menu_File", texts::kMenuFile, kFileRows};

} // namespace tracksmith::forms
