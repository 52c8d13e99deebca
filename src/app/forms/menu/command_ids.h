#pragma once

#include <string_view>

/// The commands that more of the program than their menu knows, by the object names of their rows.
namespace tracksmith::forms::commands {

inline constexpr std::string_view kUndo = "MME_Undo";
inline constexpr std::string_view kPositionUndo = "PMC_Undo";
inline constexpr std::string_view kTakeBack = "MME_TakeBack";
inline constexpr std::string_view kPlayStop = "MMP_PlayStop";
inline constexpr std::string_view kMoveToStart = "MMP_MoveToStart";
inline constexpr std::string_view kMeasureBack = "MMP_MeasureBack";
inline constexpr std::string_view kMeasureForward = "MMP_MeasureForward";
inline constexpr std::string_view kLooping = "MMP_Looping";
inline constexpr std::string_view kPanic = "MMP_Panic";
inline constexpr std::string_view kChooseInstrument = "MMI_ChooseInstrument";
inline constexpr std::string_view kLiveWhileStopped = "MMS_LiveWhileStopped";
inline constexpr std::string_view kFileAssociation = "MMS_FileAssociation";
inline constexpr std::string_view kLyricsPage = "MMV_LyricsPage";
inline constexpr std::string_view kThemeDark = "MMF_ThemeDark";
inline constexpr std::string_view kThemeLight = "MMF_ThemeLight";
inline constexpr std::string_view kThemeSystem = "MMF_ThemeSystem";
inline constexpr std::string_view kGerman = "MMF_German";
inline constexpr std::string_view kEnglish = "MMF_English";

} // namespace tracksmith::forms::commands
