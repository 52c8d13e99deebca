#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

#include "base/text.h"

/// Every text of the command line.
namespace tracksmith::cli::texts {

// Help.
inline constexpr Text kHelpProgram{
    De{"Song-Dateien (Standard MIDI Files) untersuchen, umwandeln, spielen, als Audio ausgeben."},
    En{"Examine song files (Standard MIDI Files), convert, play and render them to audio."}};
inline constexpr Text kHelpCommands{De{"Befehle"}, En{"Commands"}};
inline constexpr Text kHelpHelp{De{"Zeigt diese Hilfe"}, En{"Shows this help"}};
inline constexpr Text kHelpVersion{De{"Zeigt die Version"}, En{"Shows the version"}};
inline constexpr Text kHelpLang{De{"Sprache der Meldungen"}, En{"Language of the messages"}};
inline constexpr Text kHelpQuiet{De{"Nur Fehler melden"}, En{"Report failures only"}};
inline constexpr Text kHelpYes{De{"Alle Fragen mit Ja beantworten"},
                               En{"Answer all questions with Yes"}};
inline constexpr Text kHelpFile{De{"Song-Datei, - für die Standardeingabe"},
                                En{"Song file, - for the standard input"}};
inline constexpr Text kHelpFiles{De{"Song-Dateien, Ordner, - für die Standardeingabe"},
                                 En{"Song files, folders, - for the standard input"}};
inline constexpr Text kHelpInfo{De{"Beschreibt Songs"}, En{"Describes songs"}};
inline constexpr Text kHelpJson{De{"Ein JSON-Objekt je Datei und Zeile"},
                                En{"One JSON object per file and line"}};
inline constexpr Text kHelpConvertJson{
    De{"Ein JSON-Objekt je geschriebener Datei und Zeile: was das Vorbereiten getan hat"},
    En{"One JSON object per file written and line: what preparing did"}};
inline constexpr Text kHelpLeadIn{
    De{"Einen leeren Takt voranstellen, wo Noten beginnen, bevor das Instrument bereit ist"},
    En{"Put an empty measure in front where notes begin before the instrument is ready"}};
inline constexpr Text kLeadIn{De{"ein leerer Takt steht jetzt davor"},
                              En{"an empty measure stands in front now"}};
inline constexpr Text kHelpWithSettings{
    De{"So vorbereiten, wie es das Einstellungsfenster für das Instrument festlegt; sonst mit den "
       "Vorgaben: ohne GM vor GS, auf der Spur von Kanal 10, Effekte und Master-EQ des Songs "
       "bleiben, Teile am üblichen Ausgang"},
    En{"Prepare as the settings window says for the instrument; else with the defaults: no GM "
       "before GS, on the track of channel 10, the song's effects and master EQ stay, parts at "
       "their usual outputs"}};
inline constexpr Text kWithSettingsAlone{De{"--with-settings braucht --instrument"},
                                         En{"--with-settings needs --instrument"}};
inline constexpr Text kLeadInAlone{De{"--lead-in braucht --instrument"},
                                   En{"--lead-in needs --instrument"}};
inline constexpr Text kHelpAll{De{"Alle Tempo- und Taktwechsel zeigen"},
                               En{"Show all changes of tempo and time signature"}};
inline constexpr Text kHelpConvert{De{"Speichert Songs in anderer Form"},
                                   En{"Saves songs in another form"}};
inline constexpr Text kHelpFormat{De{"Format der Dateien; sonst wie im Song"},
                                  En{"Format of the files; else as in the song"}};
inline constexpr Text kHelpOutFolder{De{"Ordner für die Ergebnisse, - für die Standardausgabe"},
                                     En{"Folder for the results, - for the standard output"}};
inline constexpr Text kHelpInPlace{De{"Die Originale ersetzen"}, En{"Replace the originals"}};
inline constexpr Text kHelpSkipDone{
    De{"Auslassen, wovon ein Ergebnis da ist, das nicht älter ist: ein Lauf lässt sich fortsetzen"},
    En{"Leave out what has a result that is not older: a run can be continued"}};
inline constexpr Text kSkipDoneNeedsOut{De{"--skip-done braucht --out ORDNER."},
                                        En{"--skip-done needs --out DIR."}};
inline constexpr Text kHelpRunningStatus{De{"Wiederholte Statusbytes weglassen"},
                                         En{"Leave out repeated status bytes"}};
inline constexpr Text kHelpOmitPorts{De{"Port-Ereignisse weglassen"}, En{"Leave out port events"}};
inline constexpr Text kHelpSplit{De{"Format 0 auf Kanalspuren verteilen"},
                                 En{"Split format 0 into channel tracks"}};
inline constexpr Text kHelpDryRun{De{"Nichts schreiben, nur zeigen, was geschähe"},
                                  En{"Write nothing, only show what would be done"}};
inline constexpr Text kHelpRunningStatusAcrossSysex{
    De{"Running Status gilt über SysEx und Metaereignisse hinweg"},
    En{"Running status lasts across system exclusive and meta events"}};
inline constexpr Text kHelpHonourZelIgnore{De{"„zel_ignore“ in Spurnamen beachten"},
                                           En{"Honour \"zel_ignore\" in track names"}};
inline constexpr Text kHelpCheck{De{"Prüft Songs auf Fehler und repariert sie"},
                                 En{"Checks songs for faults and repairs them"}};
inline constexpr Text kHelpCheckFor{De{"Auch prüfen, ob dieses Instrument die Klänge hat"},
                                    En{"Check too whether this instrument has the voices"}};
inline constexpr Text kHelpRepair{De{"Reparieren, was sich gefahrlos reparieren lässt"},
                                  En{"Repair what can be repaired safely"}};
inline constexpr Text kHelpRepairOut{De{"Ordner für die reparierten Songs"},
                                     En{"Folder for the repaired songs"}};
inline constexpr Text kHelpStrict{De{"Auch Hinweise ergeben den Code 1"},
                                  En{"Hints give the exit code 1 too"}};
inline constexpr Text kHelpReport{
    De{"Ordner für Berichte über Noten ohne Anfang oder Ende (*_NoteOnOff.txt)"},
    En{"Folder for reports of notes without beginning or end (*_NoteOnOff.txt)"}};
inline constexpr Text kRepairNeedsOut{De{"--repair und --out ORDNER gehören zusammen."},
                                      En{"--repair and --out DIR belong together."}};
inline constexpr Text kHelpMinLength{
    De{"Kürzere Noten auf so viele Ticks verlängern; sonst wie eingestellt"},
    En{"Lengthen shorter notes to so many ticks; else as in the settings"}};
inline constexpr Text kHelpRevoice{De{"Ersetzt Klänge nach einer Tabelle oder nach Vorschlägen"},
                                   En{"Replaces voices by a table or by suggestions"}};
inline constexpr Text kHelpRevoiceFor{De{"Instrument mit den neuen Klängen"},
                                      En{"Instrument that has the new voices"}};
inline constexpr Text kHelpRevoiceTable{
    De{"Tabelle: neue Bank-MSB, LSB, Programm, Name, alte Bank-MSB, LSB, Programm, Name, mit "
       "Tabulatoren"},
    En{"Table: new bank MSB, LSB, program, name, old bank MSB, LSB, program, name, with tabs"}};
inline constexpr Text kHelpSuggest{
    De{"Zu jedem Klang den eigenen des Instruments nehmen, der ihm am nächsten kommt"},
    En{"Take for each voice the instrument's own one that comes nearest"}};
inline constexpr Text kHelpAddBanks{De{"Vorher jedem Programmwechsel eigene Bankwahlen geben"},
                                    En{"Give every program change bank selects of its own first"}};
inline constexpr Text kHelpRevoiceOut{De{"Ordner für die Ergebnisse"},
                                      En{"Folder for the results"}};
inline constexpr Text kHelpConvertRevoice{
    De{"Danach Klänge nach dieser Tabelle ersetzen, siehe revoice"},
    En{"Then replace voices by this table, see revoice"}};
inline constexpr Text kRevoiceAlone{De{"--revoice braucht --instrument."},
                                    En{"--revoice needs --instrument."}};
inline constexpr Text kTableOrSuggest{De{"Entweder --table oder --suggest angeben."},
                                      En{"Give either --table or --suggest."}};
inline constexpr Text kNothingToSuggest{
    De{"Zu diesem Instrument ist keine Klangliste bekannt; voices --import liest eine ein."},
    En{"No voice list is known for this instrument; voices --import reads one."}};
inline constexpr Text kTableUnreadable{De{"Die Tabelle kann nicht gelesen werden."},
                                       En{"The table cannot be read."}};
inline constexpr Text kNoRevoiceEntry{De{"Das ist kein Eintrag aus acht Feldern."},
                                      En{"This is no entry of eight fields."}};
inline constexpr Text kHelpSet{De{"Ändert Klang und Regler eines Kanals"},
                               En{"Changes voice and controllers of a channel"}};
inline constexpr Text kHelpSetChannel{De{"Der Kanal"}, En{"The channel"}};
inline constexpr Text kHelpSetVoice{
    De{"Klang des Instruments: Name, Teil davon oder Bank und Programm (0/112/1)"},
    En{"Voice of the instrument: name, part of it, or bank and program (0/112/1)"}};
inline constexpr Text kHelpController{De{"Am Songanfang geltender Wert von Controller "},
                                      En{"Value in effect at the song's start of controller "}};
inline constexpr Text kHelpSetTranspose{De{"Noten um so viele Halbtöne verschieben"},
                                        En{"Move the notes by so many semitones"}};
inline constexpr Text kHelpSetInsert{De{"Einsetzen, was der Song nicht enthält"},
                                     En{"Insert what the song does not have"}};
inline constexpr Text kHelpRange{
    De{"Schneidet, kopiert oder transponiert einen Bereich von Takten"},
    En{"Cuts, copies or transposes a range of measures"}};
inline constexpr Text kHelpRangeDelete{De{"Schneidet den Bereich heraus und schließt die Lücke"},
                                       En{"Cuts the range out and closes the gap"}};
inline constexpr Text kHelpRangeCopy{De{"Setzt eine Kopie des Bereichs an einer Stelle ein"},
                                     En{"Inserts a copy of the range at a place"}};
inline constexpr Text kHelpRangeTranspose{De{"Verschiebt die Noten des Bereichs"},
                                          En{"Moves the notes of the range"}};
inline constexpr Text kHelpDest{De{"Takt:Schlag, vor dem die Kopie eingesetzt wird"},
                                En{"The measure:beat that the copy goes in front of"}};
inline constexpr Text kHelpNoState{
    De{"Ohne Klänge, Einstellungen und Tempo, die an der Quelle gelten"},
    En{"Without the voices, settings and tempo in force at the source"}};
inline constexpr Text kHelpOnlyChannel{
    De{"Nur dieser Kanal; sonst alle mit Noten außer Schlagzeug"},
    En{"Only this channel; else all that have notes and no drums"}};
inline constexpr Text kHelpMegaVoices{
    De{"Instrument, dessen MegaVoices ihre Effektnoten behalten: Name, Teil davon oder Nummer"},
    En{"Instrument whose MegaVoices keep their effect notes: name, part of it or number"}};
inline constexpr Text kHelpRangeJson{De{"Was getan wurde als JSON-Objekt"},
                                     En{"What was done as a JSON object"}};
inline constexpr Text kDrumsStay{De{"Kanal 10 spielt Schlagzeug und wird nicht transponiert."},
                                 En{"Channel 10 plays drums and is not transposed."}};
inline constexpr Text kHelpOutFile{De{"Die Datei für das Ergebnis"}, En{"The file for the result"}};
inline constexpr Text kHelpRender{De{"Spielt einen Song mit dem eingebauten Instrument als WAV"},
                                  En{"Plays a song on the built-in instrument into a WAV file"}};
inline constexpr Text kHelpNotContained{De{"In dieser Fassung nicht enthalten"},
                                        En{"Not contained in this build"}};
inline constexpr Text kHelpOutWav{De{"Die Audiodatei"}, En{"The audio file"}};
inline constexpr Text kHelpSoundfont{De{"SoundFont (*.sf2, *.sf3) für die Klänge"},
                                     En{"SoundFont (*.sf2, *.sf3) for the sounds"}};

inline constexpr Text kHelpPlay{De{"Spielt einen Song auf einem MIDI-Ausgang"},
                                En{"Plays a song on a MIDI output"}};
inline constexpr Text kHelpPort{
    De{"Der Ausgang oder ein Teil seines Namens; sonst das eingebaute Instrument oder ein "
       "Synthesizer"},
    En{"The output or a part of its name; else the built-in instrument or a synthesizer"}};
inline constexpr Text kHelpFrom{De{"Von Takt:Schlag an"}, En{"From measure:beat"}};
inline constexpr Text kHelpTo{De{"Bis vor Takt:Schlag"}, En{"Up to measure:beat"}};
inline constexpr Text kHelpLoop{De{"Immer wieder, bis zum Abbruch"},
                                En{"Again and again until interrupted"}};
inline constexpr Text kHelpTempo{
    De{"+5 oder -5 (BPM mehr oder weniger), 90% oder 120 (erstes Tempo)"},
    En{"+5 or -5 (BPM more or less), 90% or 120 (first tempo)"}};
inline constexpr Text kHelpPorts{De{"Zeigt die MIDI-Ausgänge und -Eingänge"},
                                 En{"Lists the MIDI outputs and inputs"}};
inline constexpr Text kHelpPortsJson{
    De{"Ein JSON-Objekt je Anschluss, mit --ask je Antwort, und Zeile"},
    En{"One JSON object per port, with --ask per answer, and line"}};
inline constexpr Text kHelpAsk{
    De{"Fragt, welches Instrument an diesem Ausgang angeschlossen ist: Name oder Teil davon"},
    En{"Asks which instrument is connected to this output: name or part of it"}};
inline constexpr Text kHelpAskInput{
    De{"Eingang, an dem die Antwort kommt; sonst der gleich benannte oder einzige"},
    En{"Input at which the answer comes; else that of the same name, or the only one"}};
inline constexpr Text kPrepareFor{De{"Songs dafür vorbereiten: convert --instrument "},
                                  En{"To prepare songs for it: convert --instrument "}};

inline constexpr Text kHelpInstrument{
    De{"Für dieses Instrument vorbereiten: Name, Teil davon oder Nummer"},
    En{"Prepare for this instrument: name, part of it or number"}};
inline constexpr Text kHelpVoicesOf{
    De{"Klangnamen dieses Instruments; sonst nach den Meldungen des Songs"},
    En{"Voice names of this instrument; else by the song's own messages"}};
inline constexpr Text kHelpGmBeforeGs{De{"GM System On vor dem GS Reset"},
                                      En{"GM System On before the GS Reset"}};
inline constexpr Text kHelpSysexTrack{De{"Meldungen des Instruments auf diese Spur (ab 1)"},
                                      En{"The instrument's messages go to this track (from 1)"}};
inline constexpr Text kHelpJobs{De{"So viele Dateien zugleich"}, En{"So many files at once"}};
inline constexpr Text kHelpInstruments{De{"Zeigt die Instrumente des Katalogs"},
                                       En{"Lists the instruments of the catalogue"}};
inline constexpr Text kHelpSearchInstruments{De{"Wörter, die der Name enthält"},
                                             En{"Words that the name contains"}};
inline constexpr Text kHelpInstrumentsJson{De{"Ein JSON-Objekt je Instrument und Zeile"},
                                           En{"One JSON object per instrument and line"}};
inline constexpr Text kHelpMarkdown{De{"Als Tabelle in Markdown"}, En{"As a Markdown table"}};
inline constexpr Text kHelpVoices{
    De{"Zeigt, importiert und exportiert die Klänge eines Instruments"},
    En{"Lists, imports and exports the voices of an instrument"}};
inline constexpr Text kHelpVoicesInstrument{De{"Instrument: Name, Teil davon oder Nummer"},
                                            En{"Instrument: name, part of it or number"}};
inline constexpr Text kHelpSearchVoices{
    De{"Wörter aus Name, Gruppe oder Familie, Bank und Programm (0/112/1)"},
    En{"Words of name, category or family, bank and program (0/112/1)"}};
inline constexpr Text kHelpVoicesJson{De{"Ein JSON-Objekt je Klang und Zeile"},
                                      En{"One JSON object per voice and line"}};
inline constexpr Text kHelpImport{
    De{"Klangliste (.midnam, .ins, .tsv) für das Instrument übernehmen"},
    En{"Take a voice list (.midnam, .ins, .tsv) for the instrument"}};
inline constexpr Text kHelpExport{De{"Klangliste als TSV in diese Datei"},
                                  En{"Write the voice list as TSV to this file"}};
inline constexpr Text kHelpModel{De{"Welches Modell der Datei übernommen wird"},
                                 En{"Which model of the file to take"}};

// Usage.
inline constexpr Text kUsageError{De{"Fehler im Aufruf: "}, En{"Usage error: "}};
inline constexpr Text kUsageHint{De{"Hilfe: tracksmith-cli --help"},
                                 En{"Help: tracksmith-cli --help"}};
inline constexpr Text kOutAndInPlace{De{"--out und --in-place schließen sich aus."},
                                     En{"--out and --in-place exclude each other."}};
inline constexpr Text kNoOutput{De{"Wohin? Bitte --out ORDNER oder --in-place angeben."},
                                En{"Where to? Please give --out DIR or --in-place."}};
inline constexpr Text kNoOutputFile{De{"Wohin? Bitte --out DATEI oder --in-place angeben."},
                                    En{"Where to? Please give --out FILE or --in-place."}};
inline constexpr Text kNothingToSet{De{"Was soll geändert werden? Zum Beispiel --volume 100."},
                                    En{"What is to be changed? For example --volume 100."}};
inline constexpr Text kOneToStandardOutput{De{"In die Standardausgabe passt nur ein Song."},
                                           En{"Only one song fits into the standard output."}};
inline constexpr Text kStandardInputInPlace{De{"Die Standardeingabe kann nicht ersetzt werden."},
                                            En{"The standard input cannot be replaced."}};
inline constexpr Text kOneSong{De{"Bitte nur einen Song angeben."},
                               En{"Please give one song only."}};
inline constexpr Text kNoPlace{De{"Takt:Schlag, zum Beispiel 8:01"},
                               En{"measure:beat, for example 8:01"}};
inline constexpr Text kNoTempo{De{"zum Beispiel +5, -5, 90% oder 120"},
                               En{"for example +5, -5, 90% or 120"}};
inline constexpr Text kNoSuchPlace{De{"Diese Stelle gibt es im Song nicht."},
                                   En{"There is no such place in the song."}};
inline constexpr Text kBehindEnd{De{"Die Stelle liegt hinter dem Ende des Songs."},
                                 En{"The place is behind the end of the song."}};
inline constexpr Text kNotBehindStart{De{"Das Ende liegt nicht hinter dem Anfang."},
                                      En{"The end is not behind the start."}};
inline constexpr Text kLoopTooShort{De{"Die Schleife ist zu kurz."}, En{"The loop is too short."}};
inline constexpr Text kTempoOutOfRange{De{"Das Tempo liegt nicht zwischen 25 und 65535 BPM."},
                                       En{"The tempo is not between 25 and 65535 BPM."}};

// Work.
inline constexpr Text kUnexpected{De{"Unerwarteter Fehler: "}, En{"Unexpected error: "}};
inline constexpr Text kOutputLost{De{"Die Standardausgabe konnte nicht geschrieben werden."},
                                  En{"The standard output could not be written."}};
inline constexpr Text kNoSongs{De{"Der Ordner enthält keine Song-Dateien."},
                               En{"The folder contains no song files."}};
inline constexpr Text kStandardInputTooLong{De{"Die Standardeingabe ist zu lang."},
                                            En{"The standard input is too long."}};
inline constexpr Text kAnsweredNo{De{"Nein (--yes für Ja)"}, En{"No (--yes for Yes)"}};
inline constexpr Text kHelpBackups{De{"Zeigt die automatischen Sicherungen, holt eine zurück"},
                                   En{"Lists the automatic backups, restores one"}};
inline constexpr Text kHelpBackupsList{De{"Alle Sicherungen, die neueste zuerst"},
                                       En{"All backups, the newest first"}};
inline constexpr Text kHelpBackupsJson{De{"Ein JSON-Objekt je Sicherung und Zeile"},
                                       En{"One JSON object per backup and line"}};
inline constexpr Text kHelpBackupsRestore{De{"Schreibt eine Sicherung in eine Datei"},
                                          En{"Writes a backup into a file"}};
inline constexpr Text kHelpBackupWanted{De{"Name der Sicherung oder ihre Nummer in der Liste"},
                                        En{"Name of the backup or its number in the list"}};
inline constexpr Text kHelpBackupOut{De{"Die Datei, die entsteht"}, En{"The file to be written"}};
inline constexpr Text kNoBackups{De{"Es gibt keine Sicherungen."}, En{"There are no backups."}};
inline constexpr Text kNoSuchBackup{De{"Diese Sicherung gibt es nicht: "},
                                    En{"There is no such backup: "}};
inline constexpr Text kNoBackupFolder{De{"Für diesen Benutzer gibt es keinen Ordner für Daten."},
                                      En{"This user has no folder for data."}};
inline constexpr Text kWouldOverwriteInput{De{"Originale werden nicht überschrieben: "},
                                           En{"Originals are not overwritten: "}};
inline constexpr Text kCancelled{De{"Abgebrochen; es wurde nichts geschrieben."},
                                 En{"Cancelled; nothing was written."}};
inline constexpr Text kNoInstrument{
    De{"Diese Fassung des Programms hat kein eingebautes Instrument."},
    En{"This build of the program has no built-in instrument."}};

inline constexpr Text kNothingToPlay{De{"Hier gibt es nichts zu spielen."},
                                     En{"There is nothing to play."}};
inline constexpr Text kPlayingOn{De{"Ausgang: "}, En{"Output: "}};

// Labels of `ports`.
inline constexpr Text kNoPorts{De{"Es gibt keine MIDI-Anschlüsse."},
                               En{"There are no MIDI ports."}};
inline constexpr Text kOutput{De{"Ausgang"}, En{"output"}};
inline constexpr Text kInput{De{"Eingang"}, En{"input"}};
inline constexpr Text kUnknownPort{De{"unbekannt"}, En{"unknown"}};
inline constexpr Text kMidiPort{De{"MIDI-Anschluss"}, En{"MIDI port"}};
inline constexpr Text kSynthesizer{De{"Synthesizer"}, En{"synthesizer"}};
inline constexpr Text kSquareWave{De{"Rechteckwellen"}, En{"square waves"}};
inline constexpr Text kFmSynthesizer{De{"FM-Synthesizer"}, En{"FM synthesizer"}};
inline constexpr Text kMidiMapper{De{"MIDI-Mapper"}, En{"MIDI mapper"}};
inline constexpr Text kUsable{De{"bereit"}, En{"usable"}};
inline constexpr Text kNotUsable{De{"nicht benutzbar"}, En{"not usable"}};

// Instruments and voices.
inline constexpr Text kVoices{De{"Klänge"}, En{"voices"}};
inline constexpr Text kFamilies{De{"Meldungen für"}, En{"Messages for"}};
inline constexpr Text kVoice{De{"Klang"}, En{"Voice"}};
inline constexpr Text kWhichModel{
    De{"Die Datei enthält mehrere Modelle; bitte eines mit --model nennen:"},
    En{"The file holds several models; please name one with --model:"}};
inline constexpr Text kNotWritten{De{"Die Datei konnte nicht geschrieben werden: "},
                                  En{"The file could not be written: "}};
inline constexpr Text kNoVoices{
    De{"Kein Klang passt dazu. Weniger Wörter versuchen, eine Gruppe oder Bank und Programm "
       "(0/112/1)."},
    En{"No voice matches. Try fewer words, a category, or bank and program (0/112/1)."}};

// Labels of `info`.
inline constexpr Text kName{Both{"Name"}};
inline constexpr Text kFormat{Both{"Format"}};
inline constexpr Text kDivision{De{"Auflösung"}, En{"Division"}};
inline constexpr Text kLength{De{"Länge"}, En{"Length"}};
inline constexpr Text kEvents{De{"Ereignisse"}, En{"Events"}};
inline constexpr Text kNotes{De{"Noten"}, En{"Notes"}};
inline constexpr Text kSysex{De{"SysEx"}, En{"SysEx"}};
inline constexpr Text kLyrics{De{"Liedtext"}, En{"Lyrics"}};
inline constexpr Text kKeySignatures{De{"Tonarten"}, En{"Key signatures"}};
inline constexpr Text kTempo{Both{"Tempo"}};
inline constexpr Text kTimeSignature{De{"Taktart"}, En{"Time signature"}};
inline constexpr Text kTracks{De{"Spuren"}, En{"Tracks"}};
inline constexpr Text kChannel{De{"Kanal"}, En{"Channel"}};
inline constexpr Text kChannels{De{"Kanäle"}, En{"Channels"}};
inline constexpr Text kProgram{De{"Programm"}, En{"Program"}};
inline constexpr Text kBank{Both{"Bank"}};
inline constexpr Text kIgnored{De{" (übergangen)"}, En{" (ignored)"}};
inline constexpr Text kChanges{De{"Geändert"}, En{"Changed"}};
inline constexpr Text kNone{De{"nichts"}, En{"nothing"}};

/// The format that the file has, when the song is held in another one.
std::string InFile(Language language, int fileFormat);

/// The unit behind a song's division.
std::string TicksPerQuarter(Language language, int division);

/// The line behind a list that is not shown whole.
std::string AndMore(Language language, std::size_t number);

/// A file that was refused can be loaded with the switch `name`.
std::string LoadableWith(Language language, std::string_view name);

/// A folder that cannot be read, or not to its end.
std::string FolderNotRead(Language language, const std::error_code& error);

/// The line at the end of a batch of `total` songs, some of which failed or were left out.
std::string Summary(Language language, std::size_t total, std::size_t failed, std::size_t skipped);

/// "5 of 12 program changes replaced; 3 have no bank select, 2 share one (--add-banks)".
std::string RevoicingCounts(Language language, std::size_t changed, std::size_t all,
                            std::size_t withoutBank, std::size_t sharingBank);

/// "2 errors, 5 warnings, 4 hints" for the numbers of each severity, "nothing found" for none.
std::string FindingCounts(Language language, const std::array<std::int64_t, 3>& counts);

/// What was rendered: the file, its length in milliseconds, its peak in decibels of full scale.
std::string Rendered(Language language, std::string_view file, std::int64_t lengthMs, double peakDb,
                     std::int64_t limitedSamples);

/// `name` means none of the outputs, or with `input` of the inputs, or several of them; `ports` are
/// those to choose from.
std::string NotOnePort(Language language, bool input, std::string_view name, bool several,
                       std::span<const std::string> ports);

/// `name` means none of the instruments, or several of them, which `matches` names.
std::string NotOneInstrument(Language language, std::string_view name,
                             std::span<const std::string> matches);

/// How many measures a range has and how many of its notes were worked on.
std::string RangeDone(Language language, std::int64_t measures, std::int64_t notes);

/// What was done at the seams of a range: notes ended, begun again, settings carried over.
std::string SeamsDone(Language language, std::int64_t ended, std::int64_t begun,
                      std::int64_t carried);

/// So many messages to instruments have gone with the range.
std::string MessagesGone(Language language, std::int64_t messages);

/// The song has nothing on the channel (from 1).
std::string NoSuchChannel(Language language, int channel);

/// The song has no event that `options` could change.
std::string NoEventToSet(Language language, std::span<const std::string> options);

/// `name` means none of the instrument's voices, or several, of which `matches` names some.
std::string NotOneVoice(Language language, std::string_view name,
                        std::span<const std::string> matches);

/// "XG names": what an instrument without a table of its own is shown with.
std::string NamesOf(Language language, std::string_view set);

/// "1711 + 745 inherited": the instrument's own voices and those of the sets that it has beside.
std::string VoiceCounts(Language language, std::size_t own, std::size_t inherited);

/// `voices` of a model have been imported, `leftOut` entries could not be.
std::string VoicesImported(Language language, std::string_view model, std::size_t voices,
                           std::size_t leftOut);

} // namespace tracksmith::cli::texts
