#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QMainWindow>
#include <QPointer>

#include "app/backups/auto_backup.h"
#include "app/devices/midi_devices.h"
#include "app/diff/compare_files.h"
#include "app/diff/difference_words.h"
#include "app/forms/menu/main_menu.h"
#include "app/forms/menu/recent_files.h"
#include "app/forms/notices/qt_message_host.h"
#include "app/forms/ports/connection_tools.h"
#include "app/forms/ports/sound_settings.h"
#include "app/forms/settings/file_chooser.h"
#include "app/forms/settings/form_settings.h"
#include "app/forms/song/song_picker_host.h"
#include "app/forms/song/voice_names.h"
#include "app/health/check_health.h"
#include "app/save_song.h"
#include "app/session/session.h"
#include "app/settings/file_association.h"
#include "app/song_list.h"
#include "editing/range_position.h"
#include "instruments/instrument_settings.h"

namespace tracksmith::editing {
class RangeTools;
class Undo;
} // namespace tracksmith::editing

namespace tracksmith::app {
struct LoadedSong;
struct LoadOrder;
} // namespace tracksmith::app

namespace tracksmith::mixer {
class Mixer;
enum class Control : std::uint8_t;
} // namespace tracksmith::mixer

class QStackedWidget;
class QTranslator;

namespace tracksmith::app {
struct FolderOrder;
}

namespace tracksmith::forms {

class DropHint;
class GuideDesk;
class BackgroundComparison;
class ChangesForm;
class ChangeLog;
class ChangesWatch;
class EmptyPage;
class HealthForm;
class RangeForm;
class TAutoRevoicerForm;
class RevoiceFolderForm;
struct AutoRevoicerActions;
struct RevoiceFolderActions;
struct RangeFormActions;
class HealthWatch;
class LyricsPage;
struct InstrumentOutput;
class NoticeBar;
class NoticeHost;
class SessionSignals;
class SongLoader;
class SongView;
class StartPage;
class StatusLine;
struct StartAnswers;

/// The main window. Owns the session and declares the handlers of the menu; each calls one
/// function of the program's core and shows the result.
class TMainForm : public QMainWindow {
    Q_OBJECT

public:
    /// `store` holds the user's settings and must outlive the window. `devices` are those of the
    /// machine unless a test brings its own.
    explicit TMainForm(settings::SettingsStore& store,
                       std::unique_ptr<devices::MidiDevices> devices = nullptr);
    ~TMainForm() override;

    session::Session& Session() { return session_; }

    /// Replaces the file dialogs.
    void SetFileChooser(std::unique_ptr<FileChooser> chooser) { chooser_ = std::move(chooser); }

    /// Says that memory does not suffice for what was wanted; what there was is unchanged.
    void TellOutOfMemory();

    /// What is done once a song has been loaded and shown, or will not be: it was refused, which
    /// has been told, or given up.
    using AfterLoading = std::function<void(bool loaded)>;

    /// Loads `file` and shows it, usually before this returns. One that takes longer is shown when
    /// it is ready; until then the song in memory stays, but must not be changed. A newer wish for
    /// another song takes its place.
    void OpenMidiFile(const std::filesystem::path& file);

    /// What loads songs.
    SongLoader& Loader() { return *loader_; }

    /// The start page is to be shown, since the user has not answered yet or wants it.
    bool WantsStartPage();

    /// Loads the first of `files` like OpenMidiFile; the commands for the next and the previous
    /// song then go through all of them.
    void OpenMidiFiles(const std::vector<std::filesystem::path>& files,
                       const AfterLoading& after = {});

    /// Makes ready for the end of the program: notes off, settings stored. Where `mayAsk`, asks
    /// what becomes of changes that are not saved, unless that was answered already; false when the
    /// user wants to stay.
    bool AgreeToEnd(bool mayAsk);

    /// Ends the program from wherever it is, without asking.
    void EndNow();

    /// Empties the song in memory; nothing is asked.
    void ClearMidiMemory();

    /// See song::SongPositionToMTC; empty while no song is open.
    std::string SongPositionToMTC(std::int32_t tick) const;

    /// See song::MTCToSongPosition; -1 while no song is open.
    std::int32_t MTCToSongPosition(std::int32_t measure, std::int32_t beat,
                                   std::int32_t tick) const;

    /// Shows the song in memory, or the empty page, after it has changed.
    void ShowSong();

    /// Shows file name and modified mark after one of them has changed.
    void ShowFileState();
    /// Enables and names the commands of the menu by what is possible now.
    void ShowCommands();

    /// Opens the window in which a voice is picked for a channel (0-15).
    void PickVoice(std::size_t channel);

    void ApplyLanguage(Language language);
    void ApplyChosenTheme(Theme theme);

    // File
    void MMF_NewMidifileClick();
    void MMF_OpenMidifileClick();
    void MMF_OpenRecentClick(const std::filesystem::path& file);
    void MMF_ClearRecentClick();
    void MMF_ReloadMidifileClick();
    void MMF_NextSongClick();
    void MMF_PreviousSongClick();
    void MMF_RestoreEarlierClick();
    void MMF_SaveMidifileClick();
    void MMF_SaveMidifileAsClick();
    void MMF_SaveFileAsFormat0Click();
    void MMF_SaveFileAsFormat1Click();
    void MMF_QuitClick();
    // Edit
    void MME_UndoClick();
    void MME_RangeCopyClick();
    void MME_RangeDeleteClick();
    void MME_RangeTransposeClick();
    void MME_TakeBackClick();
    void MME_AutoRevoicerClick();
    // The position display's menu
    void PMC_UndoClick();
    void PMC_CopyStartPositionClick();
    void PMC_CopyEndPositionClick();
    void PMC_CopyDestPositionClick();
    void PMC_DeleteStartPositionClick();
    void PMC_DeleteEndPositionClick();
    // Song
    void MMF_HealthClick();
    void MMF_NoteLengthClick();
    void MMF_WhatChangedClick();
    // Play
    void MMP_PlayStopClick();
    void MMP_MoveToStartClick();
    void MMP_MoveToEndClick();
    void MMP_MeasureBackClick();
    void MMP_MeasureForwardClick();
    void MMP_LoopingClick();
    void MMP_LoopFromHereClick();
    void MMP_LoopToHereClick();
    void MMP_TempoDownClick();
    void MMP_TempoUpClick();
    void MMP_TempoResetClick();
    void MMP_TransposeUpClick();
    void MMP_TransposeDownClick();
    void MMP_TransposeResetClick();
    void MMP_PanicClick();
    // Instrument
    void MMI_ChooseInstrumentClick();
    void MMI_PrepareSongClick();
    void MMI_InsertLeadInClick();
    void MMI_PickVoiceClick();
    void MMI_VoicesClick();
    // View, Settings, Help
    void MMV_NextPageClick();
    void MMV_LyricsPageClick();
    void MMV_LyricsEncodingClick();
    void MMV_TextSizeClick();
    void MMS_MidiPortsClick();
    void MMS_InstrumentsClick();
    void MMS_LiveWhileStoppedClick();
    void MMS_AutoBackupClick();
    void MMS_FileAssociationClick();
    void MMF_ThemeDarkClick();
    void MMF_ThemeLightClick();
    void MMF_ThemeSystemClick();
    void MMF_GermanClick();
    void MMF_EnglishClick();
    void MMF_UserGuideClick();
    void MMF_OpenDemoSongClick();
    void MMF_FirstStepsClick();
    void MMF_AboutClick();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void ShowAreas();
    void BuildAreas();
    void BuildPlayer(std::unique_ptr<devices::MidiDevices> devices);
    void ConnectSession();
    void ShowLooping();
    void ShowMissingOutput();
    void ShowSettingsTrouble();
    void TransposeSong(int semitones);
    void InsertAtStart(int channel, mixer::Control control);
    void TakeInstruments();
    InstrumentOutput MainOutput() const;
    QString PlayingText(std::size_t channel) const;
    SongPickerHost::Window PickerWindow();
    void TakeAnsweredInstrument(const QString& name);
    void OfferPreparing(const std::string& formerInstrument);
    void ConnectMenu();
    void ConnectAreas();
    void ConnectOptions();
    void RestoreGeometry();

    void ChangeOption(const SongOption& option, bool on);
    bool Run(const std::function<void()>& command);
    void StartBackups();
    void ShowBackupOptions();
    void ShowFileAssociation();
    void OfferUnseenBackup();
    bool Restore(const backups::Backup& backup);
    std::optional<diff::FilePair> FilesOf(const backups::Backup& backup);
    void EndBackups(bool answered);
    bool ConfirmDiscard();
    bool ConfirmOverwrite(const std::filesystem::path& file);
    void Load(app::LoadOrder order, AfterLoading after);
    void TakeLoaded();
    void ShowLoaded(const app::LoadOrder& order);
    void ShowLoading();
    void EndAwaiting();
    bool GiveUpLoading();
    void CancelLoading();
    void TellRefused(const app::LoadOrder& order, const app::LoadedSong& loaded,
                     const std::string& message);
    void LoadThatWay(const app::LoadOrder& refused);
    void RememberFile(const std::filesystem::path& file);
    void ShowChanges();
    health::HealthOptions HealthOptionsOf();
    void TellPortHangs();
    void ShowFindings();
    void ShowHealthAnew();
    void ShowUndo();
    void ShowStartPage(const StartAnswers& answers);
    void ShowStartPageAnew();
    void LeaveStartPage();
    void TakeStartAnswers();
    const ConnectionTools& Connection();
    RangeFormActions RangeActions();
    void ShowRangeForm(editing::RangeTool tool, const editing::RangeWish& wish);
    void OpenRangeTool(editing::RangeTool tool);
    void TakePosition(editing::RangeTool tool, editing::RangeReading::Field field);
    void ShowLoadingChanges();
    void ShowWhatChangedAnew();
    diff::VoiceNamer VoiceNamer();
    void ConnectHearing();
    void EndRefusal();
    AutoRevoicerActions RevoicerActions();
    RevoiceFolderActions FolderActions();
    app::FolderOrder FolderOrderNow() const;
    void OpenRevoiceFolder();
    void ShowRevoicerAnew();
    bool SaveToRevoicer(const instruments::VoiceReplacement& replacement);
    void TellNoteCheck();
    void ChooseLyricsEncoding();
    void OpenNoteReport();
    void TakeBackLengthening();
    void TellChangedOnDisk();
    void LoadAndShow(const std::filesystem::path& file, bool isDemo,
                     const AfterLoading& after = {});
    void LoadDemoSong(const AfterLoading& after = {});
    void OpenFromList(int step);
    bool SaveSong();
    bool SaveSongAs(app::SaveFormat format);
    bool SaveTo(const std::filesystem::path& file, app::SaveFormat format);
    void ShowRecentFiles();
    void ShowQtTexts(Language language);
    QString SongFileName() const;

    session::Session session_;
    settings::SettingsStore& store_;
    FormSettings settings_;
    RecentFiles recentFiles_;
    app::SongList songs_;
    SoundSettings sound_;
    instruments::InstrumentSettings instruments_;
    settings::FileAssociation association_;
    VoiceNames voices_;
    QtMessageHost host_;
    std::unique_ptr<FileChooser> chooser_;
    std::unique_ptr<QTranslator> qtTexts_;
    std::string missingOutput_;
    /// The change of the file on the disk that the user was told of last.
    std::optional<session::FileStamp> toldStamp_;
    /// Made when it is first needed; ends before the player.
    ConnectionTools connection_;
    /// The user knows why the song is not changed at present.
    bool toldRefusal_ = false;
    /// The user has agreed to lose the changes made so far.
    bool mayLoseChanges_ = false;
    std::unique_ptr<devices::MidiDevices> devices_;
    std::unique_ptr<NoticeHost> noticeHost_;
    std::unique_ptr<backups::AutoBackup> backups_;
    /// What the notice offers that was said at the start.
    std::optional<backups::Backup> unseen_;
    /// The program ended without an answer; what was backed up then is offered at the next start.
    bool leftUnanswered_ = false;
    std::unique_ptr<mixer::Mixer> mixer_;
    std::unique_ptr<editing::Undo> undo_;
    std::unique_ptr<editing::RangeTools> rangeTools_;
    std::unique_ptr<SessionSignals> signals_;
    std::unique_ptr<SongPickerHost> pickerHost_;
    std::unique_ptr<HealthWatch> healthWatch_;
    /// Works while its window is open.
    std::unique_ptr<ChangeLog> changeLog_;
    std::unique_ptr<ChangesWatch> changesWatch_;
    std::unique_ptr<BackgroundComparison> backupComparison_;
    std::unique_ptr<SongLoader> loader_;
    AfterLoading afterLoading_;

    MainMenu* menu_ = nullptr;
    QStackedWidget* pages_ = nullptr;
    EmptyPage* emptyPage_ = nullptr;
    SongView* songView_ = nullptr;
    QPointer<StartPage> startPage_;
    NoticeBar* notice_ = nullptr;
    StatusLine* status_ = nullptr;
    DropHint* dropHint_ = nullptr;
    GuideDesk* guide_ = nullptr;
    QPointer<HealthForm> health_;
    QPointer<ChangesForm> changes_;
    QPointer<TAutoRevoicerForm> revoicer_;
    QPointer<RevoiceFolderForm> revoiceFolder_;
    QPointer<RangeForm> rangeForm_;
    QPointer<LyricsPage> lyricsPage_;
};

} // namespace tracksmith::forms
