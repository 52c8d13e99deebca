#pragma once

#include <array>
#include <string_view>

#include "base/text.h"

/// Texts of the user guide's window.
namespace tracksmith::forms::guide_texts {

inline constexpr Text kMenu{De{"&Benutzerhandbuch"}, En{"&User Guide"}};
inline constexpr Text kTitle{De{"Benutzerhandbuch"}, En{"User Guide"}};
inline constexpr Text kFile{De{"benutzerhandbuch.md"}, En{"user-guide.md"}};
inline constexpr Text kContents{De{"Inhalt"}, En{"Contents"}};
inline constexpr Text kText{De{"Text des Handbuchs"}, En{"Text of the guide"}};
inline constexpr Text kBack{De{"&Zurück"}, En{"&Back"}};
inline constexpr Text kForward{De{"&Vor"}, En{"&Forward"}};
inline constexpr Text kSearch{De{"Im Handbuch suchen (Strg+F)"}, En{"Search the guide (Ctrl+F)"}};
inline constexpr Text kNotFound{De{"nicht gefunden"}, En{"not found"}};
inline constexpr Text kMissing{
    De{"Das Handbuch wurde nicht gefunden. Es gehört in den Ordner share/tracksmith/docs neben dem "
       "Programm. Bitte installieren Sie das Programm noch einmal."},
    En{"The guide was not found. It belongs in the folder share/tracksmith/docs beside the "
       "program. Please install the program again."}};

/// What a part of the guide is about, and its heading there.
struct Section {
    /// Object name or class of the window, or of an area of the main window.
    std::string_view owner;
    Text heading;
};

inline constexpr Text kRanges{De{"Bereiche"}, En{"Ranges"}};
inline constexpr Text kLists{De{"Listen"}, En{"Lists"}};
inline constexpr Text kLyrics{De{"Liedtext und Akkorde"}, En{"Lyrics and chords"}};
inline constexpr Text kInstruments{De{"Instrumente"}, En{"Instruments"}};
inline constexpr Text kMessages{De{"Meldungen"}, En{"Messages"}};

inline constexpr std::array<Section, 27> kSections{{
    {"MainForm", Text{De{"Hauptfenster"}, En{"Main window"}}},
    {"StartPage", Text{De{"Die Seite Erste Schritte"}, En{"The page First Steps"}}},
    {"Overview", Text{De{"Übersicht"}, En{"Overview"}}},
    {"Strips", Text{De{"Mischpult"}, En{"Mixer"}}},
    {"RoutingPage", Text{De{"Kanalwege"}, En{"Routing"}}},
    {"Table_Tracks", kLists},
    {"Table_Tempos", kLists},
    {"Table_TimeSignatures", kLists},
    {"LyricsPage", kLyrics},
    {"Dlg_Instrument", Text{De{"Instrument wählen"}, En{"Choose Instrument"}}},
    {"PatchesForm", Text{De{"Klänge"}, En{"Voices"}}},
    {"PickerForm", Text{De{"Klang für einen Kanal"}, En{"Voice for a channel"}}},
    {"Dlg_AutoRevoicer", Text{De{"Auto-Revoicer"}, En{"Auto Revoicer"}}},
    {"Dlg_RevoiceFolder", Text{De{"Auto-Revoicer"}, En{"Auto Revoicer"}}},
    {"Dlg_Health", Text{De{"Zustand"}, En{"Health"}}},
    {"Dlg_WhatChanged", Text{De{"Was geändert wurde"}, En{"What Changed"}}},
    {"Dlg_Changes", Text{De{"Was beim Laden geändert wurde"}, En{"What Loading Changed"}}},
    {"RangeForm", kRanges},
    {"Dlg_Restore", Text{De{"Früheren Stand wiederherstellen"}, En{"Restore Earlier State"}}},
    {"Dlg_MidiPorts", Text{De{"MIDI und Klang"}, En{"MIDI and Sound"}}},
    {"OptionsForm", kInstruments},
    {"Dlg_AudioRouting", kInstruments},
    {"Dlg_About", kMessages},
    {"QMessageBox", kMessages},
    {"QInputDialog", kMessages},
    {"QFileDialog", Text{De{"Den Song öffnen"}, En{"Open the song"}}},
    {"GuideForm", Text{De{"Dieses Handbuch"}, En{"This guide"}}},
}};

} // namespace tracksmith::forms::guide_texts
