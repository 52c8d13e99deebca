#pragma once

#include <array>
#include <utility>

namespace tracksmith::forms {

/// The commands that open a dialog without asking anything, while a song is open, and the dialogs'
/// object names.
inline constexpr auto kDialogs = std::to_array<std::pair<const char*, const char*>>(
    {{"MMS_MidiPorts", "Dlg_MidiPorts"},
     {"MMI_ChooseInstrument", "Dlg_Instrument"},
     {"MMI_Voices", "PatchesForm"},
     {"MMS_Instruments", "OptionsForm"},
     {"MME_RangeDelete", "Dlg_DeleteRange"},
     {"MME_RangeCopy", "Dlg_CopyRange"},
     {"MME_RangeTranspose", "Dlg_TransposeRange"},
     {"MME_AutoRevoicer", "Dlg_AutoRevoicer"},
     {"MMF_RestoreEarlier", "Dlg_Restore"},
     {"MMF_Health", "Dlg_Health"},
     {"MMF_WhatChanged", "Dlg_WhatChanged"},
     {"MMF_About", "Dlg_About"}});

} // namespace tracksmith::forms
