#pragma once

#include <cstdint>

#include "base/forms/qt_text.h"
#include "base/text.h"
#include <QString>
#include <QStringList>

#include "instruments/preparation.h"
#include "song/load_report.h"

/// Every text that the windows show. An ampersand marks the key of a menu entry.
namespace tracksmith::forms::texts {

inline constexpr Text kProgram{Both{"Tracksmith"}};

// Buttons of message boxes and bars
inline constexpr Text kOk{Both{"OK"}};
inline constexpr Text kYes{De{"&Ja"}, En{"&Yes"}};
inline constexpr Text kNo{De{"&Nein"}, En{"&No"}};
inline constexpr Text kSaveButton{De{"&Speichern"}, En{"&Save"}};
inline constexpr Text kDiscard{De{"&Verwerfen"}, En{"&Discard"}};
inline constexpr Text kClose{De{"&Schließen"}, En{"&Close"}};
inline constexpr Text kCancel{De{"&Abbrechen"}, En{"&Cancel"}};
inline constexpr Text kDetails{De{"De&tails"}, En{"&Details"}};
inline constexpr Text kReloadButton{De{"&Neu laden"}, En{"&Reload"}};

// Menus
inline constexpr Text kMenuBar{De{"Menüleiste"}, En{"Menu bar"}};
inline constexpr Text kMenuFile{De{"&Datei"}, En{"&File"}};
inline constexpr Text kMenuEdit{De{"&Bearbeiten"}, En{"&Edit"}};
inline constexpr Text kMenuSong{De{"&Song"}, En{"&Song"}};
inline constexpr Text kMenuPlay{De{"S&pielen"}, En{"&Play"}};
inline constexpr Text kMenuView{De{"&Ansicht"}, En{"&View"}};
inline constexpr Text kMenuSettings{De{"&Einstellungen"}, En{"Se&ttings"}};
inline constexpr Text kMenuHelp{De{"&Hilfe"}, En{"&Help"}};
inline constexpr Text kMenuRecent{De{"&Zuletzt geöffnet"}, En{"Open &Recent"}};
inline constexpr Text kMenuReading{De{"Beim &Laden"}, En{"When &Loading"}};
inline constexpr Text kMenuWriting{De{"Beim S&peichern"}, En{"When &Saving"}};
inline constexpr Text kMenuTheme{De{"&Farben"}, En{"&Theme"}};
inline constexpr Text kMenuNoteLength{De{"&Mindestlänge der Noten"}, En{"&Minimum Note Length"}};
inline constexpr Text kNoteLengthOff{De{"&Aus"}, En{"&Off"}};
inline constexpr Text kNoteLength10{De{"&10 Ticks"}, En{"&10 ticks"}};
inline constexpr Text kNoteLength20{De{"&20 Ticks"}, En{"&20 ticks"}};
inline constexpr Text kNoteLength30{De{"&30 Ticks"}, En{"&30 ticks"}};
inline constexpr Text kNoteLength60{De{"&60 Ticks"}, En{"&60 ticks"}};
inline constexpr Text kExceptDrums{De{"&Schlagzeug nicht verlängern"},
                                   En{"Leave &Drum Parts Alone"}};
inline constexpr Text kSkipNoteCheck{De{"&Noten nicht prüfen"}, En{"Do Not &Check Notes"}};
inline constexpr Text kNoteFault{De{"Fehler bei der Midifile-Überprüfung!"},
                                 En{"Error while checking the midi file!"}};
inline constexpr Text kNoteCheckOff{De{"Midifile-Überprüfung ist abgeschaltet!"},
                                    En{"General MIDI check is disabled!"}};
inline constexpr Text kMenuTextSize{De{"&Textgröße"}, En{"Text &Size"}};
inline constexpr Text kMenuLanguage{De{"&Sprache"}, En{"&Language"}};
inline constexpr Text kNew{De{"&Neu"}, En{"&New"}};
inline constexpr Text kOpen{De{"Ö&ffnen…"}, En{"&Open…"}};
inline constexpr Text kReload{De{"Neu &laden"}, En{"Re&load"}};
inline constexpr Text kNextSong{De{"Nächs&ter Song"}, En{"Nex&t Song"}};
inline constexpr Text kPreviousSong{De{"Vo&riger Song"}, En{"Pre&vious Song"}};
inline constexpr Text kSave{De{"&Speichern"}, En{"&Save"}};
inline constexpr Text kSaveAs{De{"Speichern &unter…"}, En{"Save &As…"}};
inline constexpr Text kSaveFormat0{De{"Speichern als Format &0…"}, En{"Save as Format &0…"}};
inline constexpr Text kSaveFormat1{De{"Speichern als Format &1…"}, En{"Save as Format &1…"}};
inline constexpr Text kQuit{De{"&Beenden"}, En{"&Quit"}};
inline constexpr Text kClearRecent{De{"Liste &leeren"}, En{"&Clear List"}};
inline constexpr Text kNoRecent{De{"Noch keine Dateien"}, En{"No files yet"}};
inline constexpr Text kUndo{De{"&Rückgängig"}, En{"&Undo"}};
inline constexpr Text kRangeCopy{De{"Bereich &kopieren…"}, En{"&Copy Range…"}};
inline constexpr Text kRangeDelete{De{"Bereich &löschen…"}, En{"&Delete Range…"}};
inline constexpr Text kRangeTranspose{De{"Bereich &transponieren…"}, En{"Tra&nspose Range…"}};
inline constexpr Text kPositionHint{
    De{"Rechte Maustaste oder Menütaste: die Stelle für einen Bereich nehmen"},
    En{"Right mouse button or menu key: take the place for a range"}};
inline constexpr Text kMenuPosition{De{"Stelle"}, En{"Position"}};
inline constexpr Text kCopyStartPosition{De{"Bereich kopieren: &Von hier"},
                                         En{"Copy Range: &From Here"}};
inline constexpr Text kCopyEndPosition{De{"Bereich kopieren: &Bis hier"},
                                       En{"Copy Range: &To Here"}};
inline constexpr Text kCopyDestPosition{De{"Bereich kopieren: &Nach hier"},
                                        En{"Copy Range: &Destination Here"}};
inline constexpr Text kDeleteStartPosition{De{"Bereich löschen: V&on hier"},
                                           En{"Delete Range: F&rom Here"}};
inline constexpr Text kDeleteEndPosition{De{"Bereich löschen: B&is hier"},
                                         En{"Delete Range: T&o Here"}};
inline constexpr Text kAutoRevoicer{De{"Auto-Re&voicer…"}, En{"Auto &Revoicer…"}};
inline constexpr Text kRevoiced{De{"Ersetzte Programmwechsel: "}, En{"Program changes replaced: "}};
inline constexpr Text kBanksAdded{De{"Programmwechsel mit neuer Bankwahl: "},
                                  En{"Program changes with new bank selects: "}};
inline constexpr Text kOpenRevoicerTable{De{"Tabelle einlesen"}, En{"Import Table"}};
inline constexpr Text kSaveRevoicerTable{De{"Tabelle exportieren"}, En{"Export Table"}};
inline constexpr Text kTableFiles{De{"Tabellen"}, En{"Tables"}};
inline constexpr Text kHealth{De{"&Zustand…"}, En{"&Health…"}};
inline constexpr Text kWhatChanged{De{"Was wurde &geändert…"}, En{"&What Changed…"}};
inline constexpr Text kPlay{De{"&Abspielen"}, En{"&Play"}};
inline constexpr Text kStop{De{"An&halten"}, En{"&Stop"}};
inline constexpr Text kMoveToStart{De{"Zum An&fang"}, En{"To the S&tart"}};
inline constexpr Text kMoveToEnd{De{"Zum &Ende"}, En{"To the &End"}};
inline constexpr Text kMeasureBack{De{"Takt &zurück"}, En{"Measure &Back"}};
inline constexpr Text kMeasureForward{De{"Takt &vor"}, En{"Measure &Forward"}};
inline constexpr Text kLooping{De{"&Schleife"}, En{"&Loop"}};
inline constexpr Text kLoopFromHere{De{"Schleife von h&ier"}, En{"Loop F&rom Here"}};
inline constexpr Text kLoopToHere{De{"Schleife &bis hier"}, En{"Loop T&o Here"}};
inline constexpr Text kTempoDown{De{"&Langsamer"}, En{"Slo&wer"}};
inline constexpr Text kTempoUp{De{"S&chneller"}, En{"F&aster"}};
inline constexpr Text kTempoReset{De{"&Tempo der Datei"}, En{"File's Te&mpo"}};
inline constexpr Text kTransposeUp{De{"Halbt&on höher"}, En{"Semitone &Up"}};
inline constexpr Text kTransposeDown{De{"Halbto&n tiefer"}, En{"Semitone &Down"}};
inline constexpr Text kTransposeReset{De{"Tonhöhe &der Datei"}, En{"File's P&itch"}};
inline constexpr Text kPanic{De{"&Panik: alle Töne aus"}, En{"Pa&nic: All Notes Off"}};
inline constexpr Text kNextPage{De{"&Nächste Seite"}, En{"&Next Page"}};
inline constexpr Text kMidiPorts{De{"&MIDI und Klang…"}, En{"&MIDI and Sound…"}};
inline constexpr Text kLiveWhileStopped{De{"Regler auch bei &gestopptem Song senden"},
                                        En{"Send Mixer Moves While Sto&pped"}};
inline constexpr Text kSplitFormat0{De{"Format 0 in Kanalspuren &aufteilen"},
                                    En{"&Split format 0 into channel tracks"}};
inline constexpr Text kHonourZelIgnore{De{"„&zel_ignore“ in Spurnamen beachten"},
                                       En{"Honour \"&zel_ignore\" in track names"}};
inline constexpr Text kRunningAcross{De{"&Running Status über SysEx hinweg"},
                                     En{"&Running status across system exclusive"}};
inline constexpr Text kUseRunning{De{"&Running Status verwenden"}, En{"Use &running status"}};
inline constexpr Text kOmitPorts{De{"&Port-Ereignisse weglassen"}, En{"Omit &port events"}};
inline constexpr Text kDark{De{"&Dunkel"}, En{"&Dark"}};
inline constexpr Text kLight{De{"&Hell"}, En{"&Light"}};
inline constexpr Text kSystem{De{"Wie das &System"}, En{"&System"}};
inline constexpr Text kTextSize100{Both{"&100 %"}};
inline constexpr Text kTextSize120{Both{"1&20 %"}};
inline constexpr Text kTextSize140{Both{"1&40 %"}};
inline constexpr Text kTextSize170{Both{"1&70 %"}};
inline constexpr Text kTextSize200{Both{"2&00 %"}};
inline constexpr Text kTextSize250{Both{"2&50 %"}};
inline constexpr Text kGerman{Both{"&Deutsch"}};
inline constexpr Text kEnglish{Both{"&English"}};
inline constexpr Text kOpenDemo{De{"De&mosong öffnen"}, En{"Open the &Demo Song"}};
inline constexpr Text kFirstSteps{De{"&Erste Schritte"}, En{"&First Steps"}};
inline constexpr Text kAbout{De{"&Über Tracksmith"}, En{"&About Tracksmith"}};

inline constexpr Text kMenuInstrument{De{"&Instrument"}, En{"&Instrument"}};
inline constexpr Text kChooseInstrument{De{"Instrument &wählen…"}, En{"&Choose…"}};
inline constexpr Text kPrepareAgain{De{"Song &neu vorbereiten"}, En{"&Prepare Song Again"}};
inline constexpr Text kInsertLeadIn{De{"&Vortakt einsetzen"}, En{"Insert &Lead-In Measure"}};
inline constexpr Text kPickVoice{De{"Klang &für den Kanal wählen…"},
                                 En{"Pick Voice for the C&hannel…"}};
inline constexpr Text kPortBusy{De{"Das ist gerade nicht zu hören: Der Ausgang ist nicht bereit."},
                                En{"This cannot be heard now: the output is not ready."}};
inline constexpr Text kVoices{De{"&Klänge…"}, En{"&Voices…"}};
inline constexpr Text kFileAssociation{De{"Für MIDI-Dateien an&bieten"},
                                       En{"Offer for Opening MIDI &Files"}};
inline constexpr Text kInstrumentSettings{De{"&Instrumente…"}, En{"&Instruments…"}};

// Dialogs
inline constexpr Text kImportVoicesTitle{De{"Klangliste importieren"}, En{"Import Voice List"}};
inline constexpr Text kExportVoicesTitle{De{"Klangliste exportieren"}, En{"Export Voice List"}};
inline constexpr Text kVoiceFiles{De{"Klanglisten"}, En{"Voice lists"}};
inline constexpr Text kMessages{De{"Meldungen für das Instrument"},
                                En{"Messages for the Instrument"}};
inline constexpr Text kWhatHappened{De{"Was"}, En{"What"}};
inline constexpr Text kMessage{De{"Meldung"}, En{"Message"}};
inline constexpr Text kTrack{De{"Spur"}, En{"Track"}};
inline constexpr Text kBytes{Both{"Bytes"}};
inline constexpr Text kOpenTitle{De{"Mididatei öffnen"}, En{"Open Midi File"}};
inline constexpr Text kSaveTitle{De{"Mididatei speichern"}, En{"Save Midi File"}};
inline constexpr Text kMidiFiles{De{"Mididateien"}, En{"Midi files"}};
inline constexpr Text kAllFiles{De{"Alle Dateien"}, En{"All files"}};
inline constexpr Text kChangesTitle{De{"Was beim Laden geändert wurde"},
                                    En{"What Loading Changed"}};
inline constexpr Text kChange{De{"Änderung"}, En{"Change"}};
inline constexpr Text kCount{De{"Anzahl"}, En{"Count"}};
inline constexpr Text kNothingChanged{
    De{"Das Laden hat nichts verändert: Der Song entspricht der Datei."},
    En{"Loading changed nothing: the song is as the file has it."}};
inline constexpr Text kChangesAdvice{De{"Die Datei selbst ist unverändert, bis Sie speichern."},
                                     En{"The file itself stays as it is until you save."}};
inline constexpr Text kAboutText{
    De{"Für Musiker mit Arranger-Keyboards: Mididateien für das eigene Instrument einrichten,\n"
       "abspielen, mischen, bearbeiten und speichern.\n"
       "Freie Software unter der MIT-Lizenz."},
    En{"For musicians with arranger keyboards: make MIDI files sound right on your own instrument,\n"
       "play, mix, edit and save them.\n"
       "Free software under the MIT licence."}};

// Window without a song
inline constexpr Text kNoSong{De{"Kein Song geöffnet"}, En{"No song open"}};
inline constexpr Text kDropHint{
    De{"Öffnen Sie eine Mididatei oder ziehen Sie sie in dieses Fenster."},
    En{"Open a Midi file or drop one onto this window."}};
inline constexpr Text kRecentFiles{De{"Zuletzt geöffnete Dateien"}, En{"Recent files"}};
inline constexpr Text kMissing{De{"nicht gefunden"}, En{"not found"}};

// Song
inline constexpr Text kPosition{De{"Takt . Schlag . Tick"}, En{"measure . beat . tick"}};
inline constexpr Text kTime{De{"Zeit"}, En{"time"}};
inline constexpr Text kTimeSignature{De{"Taktart"}, En{"time signature"}};
inline constexpr Text kTempo{De{"Tempo"}, En{"tempo"}};
inline constexpr Text kNotesHere{De{"Noten hier"}, En{"notes here"}};
inline constexpr Text kFormat{Both{"Format"}};
inline constexpr Text kDivision{De{"Auflösung"}, En{"Division"}};
inline constexpr Text kLength{De{"Länge"}, En{"Length"}};
inline constexpr Text kEvents{De{"Ereignisse"}, En{"Events"}};
inline constexpr Text kNotes{De{"Noten"}, En{"Notes"}};
inline constexpr Text kTracks{De{"Spuren"}, En{"Tracks"}};
inline constexpr Text kTempos{Both{"Tempo"}};
inline constexpr Text kTimeSignatures{De{"Taktart"}, En{"Time signature"}};
inline constexpr Text kNumber{De{"Nr."}, En{"No."}};
inline constexpr Text kName{Both{"Name"}};
inline constexpr Text kChannel{De{"Kanal"}, En{"Channel"}};
inline constexpr Text kPlace{Both{"Position"}};
inline constexpr Text kBpm{Both{"BPM"}};
inline constexpr Text kClock{De{"Zeit"}, En{"Time"}};
inline constexpr Text kIgnored{De{"ignoriert"}, En{"ignored"}};
inline constexpr Text kOverview{De{"Notenübersicht"}, En{"Note overview"}};
inline constexpr Text kOverviewHint{
    De{"Noten je Takt und Kanal. Pfeiltasten, Bild auf/ab, Pos1 und Ende bewegen die Marke."},
    En{"Notes per measure and channel. Arrow keys, PgUp, PgDn, Home and End move the mark."}};

// Playing
inline constexpr Text kTempoBpm{De{"Tempo in Schlägen je Minute"}, En{"Tempo in beats per minute"}};
inline constexpr Text kTempoPercent{De{"Tempo in Prozent der Datei"},
                                    En{"Tempo in per cent of the file's"}};
inline constexpr Text kTempoHint{
    De{"Viertel je Minute an dieser Stelle, daneben der Anteil am Tempo der Datei. Tasten − und +, "
       "Strg+= stellt das Tempo der Datei wieder her."},
    En{"Quarter notes per minute at this place, beside it the share of the file's tempo. Keys − "
       "and +; Ctrl+= brings back the file's tempo."}};
inline constexpr Text kOutput{De{"Ausgang"}, En{"Output"}};
inline constexpr Text kOutputHint{De{"Das Gerät, auf dem der Song gespielt wird."},
                                  En{"The device that the song is played on."}};
inline constexpr Text kPortReady{De{"bereit"}, En{"ready"}};
inline constexpr Text kPortNotOpened{De{"nicht geöffnet"}, En{"not opened"}};
inline constexpr Text kPortLost{De{"antwortet nicht"}, En{"not responding"}};
inline constexpr Text kPortHanging{De{"hängt fest"}, En{"stuck"}};
inline constexpr Text kOutputMissing{
    De{"Der MIDI-Ausgang „%1“ ist nicht angeschlossen. Es spielt: %2."},
    En{"The MIDI output \"%1\" is not connected. Playing on: %2."}};
inline constexpr Text kPages{De{"Seiten"}, En{"Pages"}};
inline constexpr Text kPageMix{De{"Mischen"}, En{"Mix"}};
inline constexpr Text kPageSound{De{"Klang 71–74 · 94"}, En{"Sound 71–74 · 94"}};
inline constexpr Text kPageLists{De{"Listen"}, En{"Lists"}};
inline constexpr Text kPageRouting{De{"Kanalwege"}, En{"Routing"}};
inline constexpr Text kCommonOutput{De{"wie Ausgang oben"}, En{"same as output above"}};
inline constexpr Text kTargetChannel{De{"auf Kanal"}, En{"to channel"}};
inline constexpr Text kResetRoutes{De{"Alle &zurücksetzen"}, En{"Reset &All"}};
inline constexpr Text kPortsTitle{De{"MIDI und Klang"}, En{"MIDI and Sound"}};
inline constexpr Text kInput{De{"Eingang"}, En{"Input"}};
inline constexpr Text kNoInput{De{"keiner"}, En{"none"}};
inline constexpr Text kThru{De{"Eingang zum Ausgang &durchreichen"},
                            En{"Pass the input on to the &output"}};
inline constexpr Text kAskInstrument{De{"Instrument &fragen"}, En{"&Ask the Instrument"}};
inline constexpr Text kAskInstrumentHint{
    De{"Fragt am Ausgang, welches Instrument angeschlossen ist, und wartet am Eingang auf seine "
       "Antwort."},
    En{"Asks at the output which instrument is connected and waits for its answer at the input."}};
inline constexpr Text kChooseAnswered{De{"%1 wähle&n"}, En{"Choose %1 &now"}};
inline constexpr Text kChosenNow{De{"Gewählt: Songs werden für %1 vorbereitet."},
                                 En{"Chosen: songs are prepared for %1."}};
inline constexpr Text kSoundfont{Both{"SoundFont"}};
inline constexpr Text kSoundfontUsual{De{"des Systems"}, En{"the system's"}};
inline constexpr Text kChooseSoundfont{De{"&Wählen…"}, En{"C&hoose…"}};
inline constexpr Text kUsualSoundfont{De{"Des S&ystems"}, En{"The S&ystem's"}};
inline constexpr Text kSoundfontFiles{De{"SoundFonts"}, En{"SoundFonts"}};
inline constexpr Text kVolume{De{"Lautstärke"}, En{"Volume"}};
inline constexpr Text kPolyphony{De{"Stimmen"}, En{"Voices"}};
inline constexpr Text kBuiltIn{De{"Eingebautes Instrument"}, En{"Built-in instrument"}};

// Instrument
inline constexpr Text kInstrument{De{"Instrument"}, En{"Instrument"}};
inline constexpr Text kNoInstrument{De{"bitte wählen…"}, En{"please choose…"}};
inline constexpr Text kInstrumentHint{
    De{"Das Instrument am Ausgang: Für dieses werden Songs vorbereitet, seine Klangnamen werden "
       "gezeigt."},
    En{"The instrument at the output: songs are prepared for it and its voice names are shown."}};
inline constexpr Text kVoice{De{"Klang"}, En{"Voice"}};
inline constexpr Text kSettingNotStored{De{"Die Einstellung konnte nicht gespeichert werden."},
                                        En{"The setting could not be stored."}};

// Notice bar and status bar
inline constexpr Text kNotice{De{"Hinweis"}, En{"Notice"}};
inline constexpr Text kCloseNotice{De{"Hinweis schließen"}, En{"Close the notice"}};
inline constexpr Text kReloadOffer{De{"Die Einstellung gilt, wenn ein Song geladen wird."},
                                   En{"The setting takes effect when a song is loaded."}};
inline constexpr Text kReady{De{"Bereit"}, En{"Ready"}};
inline constexpr Text kModified{De{"Geändert"}, En{"Modified"}};
inline constexpr Text kLoaded{De{"Geladen: "}, En{"Loaded: "}};
inline constexpr Text kSaved{De{"Gespeichert: "}, En{"Saved: "}};
inline constexpr Text kLoadingProgress{De{"Fortschritt beim Laden"}, En{"Progress of loading"}};
inline constexpr Text kCancelLoading{De{"Abbrechen (Esc)"}, En{"Cancel (Esc)"}};
inline constexpr Text kLoadingCancelled{De{"Laden abgebrochen: Es ist alles, wie es war."},
                                        En{"Loading cancelled: everything is as it was."}};
inline constexpr Text kLastSong{De{"Das ist der letzte Song."}, En{"This is the last song."}};
inline constexpr Text kFirstSong{De{"Das ist der erste Song."}, En{"This is the first song."}};
inline constexpr Text kNoDemo{De{"Der Demosong wurde nicht gefunden."},
                              En{"The demo song was not found."}};
inline constexpr Text kDemoName{De{"Demosong"}, En{"Demo song"}};

/// "Kanal 3" / "Channel 3"; `channel` counts from 0.
QString ChannelName(int channel, Language language);

/// The song was saved with the notes of some channels moved, of all by `semitones`.
QString SavedTransposed(int semitones, Language language);

/// What dropping the dragged file and `more` others does.
QString DropOpens(const QString& fileName, std::size_t more, Language language);

/// "waltz.mid (2 of 5)": a song and its place among those that one goes through.
QString SongOfList(const QString& fileName, std::size_t number, std::size_t count,
                   Language language);

/// "Takt 12" or "Takte 12–15", measures from 1.
QString MeasureName(std::int64_t first, std::int64_t last, Language language);

/// "3 Noten" / "3 notes".
QString NoteCount(std::int64_t notes, Language language);

/// "4 Spuren" / "4 tracks".
QString TrackCount(std::int64_t tracks, Language language);

/// The question before changes in `fileName` are lost.
QString SaveChangesQuestion(const QString& fileName, Language language);

/// What loading and preparing changed, in one line; empty when they changed nothing. `unprepared`
/// names an instrument that the song was not prepared for.
QString ChangesSummary(const song::LoadReport& report,
                       const instruments::PreparationReport& preparation,
                       const std::string& unprepared, Language language);

/// "Ausgang von Kanal 3" / "Output of channel 3"; `channel` counts from 0.
QString RouteOutputName(int channel, Language language);

/// "Zielkanal von Kanal 3" / "Target of channel 3"; `channel` counts from 0.
QString RouteTargetName(int channel, Language language);

inline constexpr Text kTakeBack{De{"&Zurücknehmen"}, En{"&Take Back"}};
inline constexpr Text kLeadInInserted{De{"Ein leerer Takt steht jetzt am Anfang."},
                                      En{"An empty measure stands in front now."}};
inline constexpr Text kNoLeadIn{De{"Kein Takt eingesetzt."}, En{"No measure was inserted."}};
inline constexpr Text kPrepareNow{De{"Jetzt vor&bereiten"}, En{"Prepare &Now"}};
inline constexpr Text kPrepare{De{"&Vorbereiten"}, En{"&Prepare"}};
inline constexpr Text kLeaveAsItIs{De{"&Lassen, wie er ist"}, En{"&Leave as It Is"}};
inline constexpr Text kLeadInButton{De{"&Vortakt einsetzen"}, En{"Insert a &Lead-In Measure"}};
inline constexpr Text kTakeBackButton{De{"&Zurücknehmen"}, En{"&Take Back"}};

/// The menu's text for taking back `change`, or for carrying it out again once `taken`.
QString TakeBackChange(const Text& change, bool taken, Language language);

/// The note-pairing report lies in the file `path`.
QString ReportWritten(const QString& path, Language language);

/// How many notices wait behind the one that is shown.
QString NoticesWaiting(std::size_t number, Language language);

/// A file that is being loaded, by its name.
QString Loading(const QString& fileName, Language language);

/// A file that was refused, by its name.
QString NotOpened(const QString& fileName, Language language);

/// The message of a refusal with what is wrong with the file below it.
QString Refused(const QString& message, const QString& fileName, const QString& sentence);

inline constexpr Text kLoadThatWay{De{"&So laden"}, En{"&Load It That Way"}};

/// A further paragraph: with another option the file can be loaded.
QString LoadableThatWay(Language language);

/// The practice tempo has been saved with the song.
QString SavedWithTempo(int bpm, Language language);

/// Somebody else has changed the song's file.
QString ChangedOnDisk(const QString& fileName, Language language);

/// The question before a file that somebody else has changed is overwritten.
QString OverwriteChanged(const QString& fileName, Language language);

/// The stored instrument is none of the catalogue.
QString UnknownInstrument(const QString& name, Language language);

/// The question whether the open song is to be prepared for another instrument.
QString PrepareQuestion(const QString& instrument, Language language);

/// "Version 1.2.3".
QString VersionLine(const QString& version);

} // namespace tracksmith::forms::texts
