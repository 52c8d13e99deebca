#include <array>

#include "app/forms/main_form.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr auto kPositionRows = std::to_array<CommandRow>({
    {"PMC_CopyStartPosition", texts::kCopyStartPosition, &TMainForm::PMC_CopyStartPositionClick,
     kWithSong},
    {"PMC_CopyEndPosition", texts::kCopyEndPosition, &TMainForm::PMC_CopyEndPositionClick,
     kWithSong},
    {"PMC_CopyDestPosition", texts::kCopyDestPosition, &TMainForm::PMC_CopyDestPositionClick,
     kWithSong},
    kLine,
    {"PMC_DeleteStartPosition", texts::kDeleteStartPosition,
     &TMainForm::PMC_DeleteStartPositionClick, kWithSong},
    {"PMC_DeleteEndPosition", texts::kDeleteEndPosition, &TMainForm::PMC_DeleteEndPositionClick,
     kWithSong},
    kLine,
    {commands::kPositionUndo, texts::kUndo, &TMainForm::PMC_UndoClick, kWithUndo},
});

} // namespace

constinit const MenuArea kPositionMenu{"Menu_Position", texts::kMenuPosition, kPositionRows};

} // namespace tracksmith::forms
