#pragma once

#include "base/text.h"

namespace tracksmith::instruments::texts {

inline constexpr Text kOnlyKorgPa{
    De{"Nur für Korg MP10 Pro, Pa500, Pa800, Pa2Xpro, Pa3X, Pa4X und Pa5X"},
    En{"Only for Korg MP10 Pro, Pa500, Pa800, Pa2Xpro, Pa3X, Pa4X and Pa5X"}};
inline constexpr Text kOnlyLimex{De{"Nur für Limex HQ200, HQ260 und Quattropack"},
                                 En{"Only for Limex HQ200, HQ260 and Quattropack"}};
inline constexpr Text kOnlyIntegra7{De{"Nur für Roland Integra-7 und Yamaha Motif-Rack XS"},
                                    En{"Only for Roland Integra-7 and Yamaha Motif-Rack XS"}};
inline constexpr Text kOnlyRolandSc{De{"Nur für die Instrumente Roland SC"},
                                    En{"Only for Roland SC instruments"}};
inline constexpr Text kOnlyMotif{De{"Nur für Yamaha Motif XF, Motif-Rack ES und Motif-Rack XS"},
                                 En{"Only for Yamaha Motif XF, Motif-Rack ES and Motif-Rack XS"}};
inline constexpr Text kOnlyYamahaArrangers{
    De{"Nur für Yamaha Tyros, Genos, PSR-S900 bis S970 und PSR-SX"},
    En{"Only for Yamaha Tyros, Genos, PSR-S900 to S970 and PSR-SX"}};
inline constexpr Text kOnlyYamahaMasterEq{
    De{"Nur für Yamaha Tyros 3 bis 5, Genos, PSR-S970 und PSR-SX"},
    En{"Only for Yamaha Tyros 3 to 5, Genos, PSR-S970 and PSR-SX"}};
inline constexpr Text kOnlyYamahaVocalHarmony{
    De{"Nur für Yamaha Tyros 4 und 5, Genos, PSR-S970 und PSR-SX"},
    En{"Only for Yamaha Tyros 4 and 5, Genos, PSR-S970 and PSR-SX"}};

// Switches for how songs are prepared
inline constexpr Text kAutoSysex{De{"Songs beim Laden für das Instrument vorbereiten"},
                                 En{"Prepare songs for the instrument when loading"}};
inline constexpr Text kAutoSysexHint{
    De{"Setzt die Meldungen, die das Instrument am Anfang braucht, und entfernt die der anderen"},
    En{"Puts in the messages that the instrument needs at the start and removes the others'"}};
inline constexpr Text kGmBeforeGs{De{"Vor dem GS-Reset auf General MIDI umschalten"},
                                  En{"Switch to General MIDI before the GS reset"}};
inline constexpr Text kGmBeforeGsHint{
    De{"Für Instrumente der Reihe Roland GS; die Meldungen kommen auf die Spur von Kanal 10"},
    En{"For Roland GS instruments; the messages go to the track of channel 10"}};
inline constexpr Text kFixedTrack{De{"Spur für die Meldungen des Instruments selbst wählen"},
                                  En{"Choose the track of the instrument's messages yourself"}};
inline constexpr Text kFixedTrackHint{
    De{"Sonst kommen sie auf Spur 11, bei Songs mit weniger Spuren auf die erste"},
    En{"Otherwise they go on track 11, or on the first one of a song with fewer tracks"}};
inline constexpr Text kKorgPartEq{Both{"Korg PaXXX Track equalizer"}};
inline constexpr Text kKorgPartEqHint{De{"Zeigt die Equalizer-Meldungen im Song"},
                                      En{"Shows the equaliser messages in the song"}};
inline constexpr Text kYamahaDsps{Both{"DSP management"}};
inline constexpr Text kYamahaDspsHint{De{"Zeigt Insert-Effekte und Orgelzugriegel im Song"},
                                      En{"Shows insertion effects and organ flutes in the song"}};
inline constexpr Text kYamahaMasterEq{De{"Der Song darf den Master-EQ einstellen"},
                                      En{"The song may set the master EQ"}};
inline constexpr Text kYamahaMasterEqHint{
    De{"Sonst werden seine Meldungen für den Master-EQ entfernt"},
    En{"Otherwise its messages for the master EQ are removed"}};
inline constexpr Text kYamahaVocalHarmony{De{"Der Song darf Vocal Harmony einstellen"},
                                          En{"The song may set the vocal harmony"}};
inline constexpr Text kYamahaVocalHarmonyHint{
    De{"Sonst werden seine Meldungen für Vocal Harmony entfernt"},
    En{"Otherwise its messages for the vocal harmony are removed"}};
inline constexpr Text kYamahaAutoVocalHarmony{De{"… aber nur Songs mit Liedtext"},
                                              En{"… but only songs with lyrics"}};
inline constexpr Text kYamahaAutoVocalHarmonyHint{
    De{"Wo niemand singt, werden die Meldungen für Vocal Harmony entfernt"},
    En{"Where nobody sings, the messages for the vocal harmony are removed"}};
inline constexpr Text kMotifDsps{De{"Motif DSP management"}, En{"Motif DSP management"}};
inline constexpr Text kMotifDspsHint{De{"Zeigt die eigenen Meldungen des Instruments im Song"},
                                     En{"Shows the instrument's own messages in the song"}};
inline constexpr Text kMotifMasterEq{De{"Der Song darf Master-EQ und Effekte einstellen"},
                                     En{"The song may set the master EQ and effects"}};
inline constexpr Text kMotifMasterEqHint{
    De{"Sonst werden seine Meldungen dafür mit den XG-Effekten entfernt"},
    En{"Otherwise its messages for them are removed with the XG effects"}};
inline constexpr Text kMotifWithoutGm{De{"Nicht auf General MIDI umschalten"},
                                      En{"Do not switch to General MIDI"}};
inline constexpr Text kMotifWithoutGmHint{
    De{"Damit das Instrument in seiner eigenen Betriebsart bleibt"},
    En{"So that the instrument stays in its own mode"}};

} // namespace tracksmith::instruments::texts
