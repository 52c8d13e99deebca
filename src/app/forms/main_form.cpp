#include "app/forms/main_form.h"

#include "base/forms/choice_accessible.h"
#include "base/forms/panel.h"
#include "base/forms/qt_text.h"
#include "base/forms/screen_fit.h"
#include <QCoreApplication>
#include <QDir>
#include <QHBoxLayout>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "app/forms/changes/background_comparison.h"
#include "app/forms/changes/change_log.h"
#include "app/forms/changes/changes_form.h"
#include "app/forms/changes/changes_watch.h"
#include "app/forms/guide/guide_desk.h"
#include "app/forms/health/health_form.h"
#include "app/forms/health/health_watch.h"
#include "app/forms/loading/song_loader.h"
#include "app/forms/lyrics/lyrics_page.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/menu/recent_files_menu.h"
#include "app/forms/notices/dialogs.h"
#include "app/forms/notices/drop_hint.h"
#include "app/forms/notices/notice_bar.h"
#include "app/forms/notices/notice_host.h"
#include "app/forms/notices/status_line.h"
#include "app/forms/revoicer/auto_revoicer_form.h"
#include "app/forms/revoicer/revoice_folder_form.h"
#include "app/forms/settings/key_guard.h"
#include "app/forms/settings/qt_german.h"
#include "app/forms/settings/song_options.h"
#include "app/forms/song/empty_page.h"
#include "app/forms/song/song_view.h"
#include "app/forms/start/start_page.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"
#include "app/note_settings.h"
#include "app/prepare_song.h"
#include "editing/forms/range_form.h"
#include "editing/range_tools.h"
#include "editing/undo.h"
#include "mixer/mixer.h"
#include "song/song_position.h"

namespace tracksmith::forms {
namespace {

// At the first start, where the screen has room; with frame and task bar a small screen has less.
constexpr QSize kFirstSize{1280, 720};
constexpr QSize kFrame{16, 48};
constexpr QSize kSmallScreen{1024, 700};

} // namespace

TMainForm::TMainForm(settings::SettingsStore& store, std::unique_ptr<devices::MidiDevices> devices)
    : store_(store),
      settings_(store),
      recentFiles_(store),
      sound_(store),
      instruments_(store),
      association_(
          PathFromQString(QDir::toNativeSeparators(QCoreApplication::applicationFilePath()))),
      voices_(session_.Work(), instruments_),
      host_(*this),
      chooser_(std::make_unique<FileChooser>()),
      loader_(std::make_unique<SongLoader>()) {
    setObjectName(QStringLiteral("MainForm"));
    setAcceptDrops(true);
    dropHint_ = new DropHint(*this);
    guide_ = new GuideDesk([this] { return host_.CurrentLanguage(); }, this);
    InstallChoiceAccessibility();
    ApplyTheme(settings_.ReadTheme());
    ApplyTextSize(settings_.ReadTextSize());
    new KeyGuard(this);
    new ScreenFit(this);
    BuildPlayer(std::move(devices));
    ShowAreas();
    ConnectSession();
    ConnectAreas();
    StartBackups();
    RestoreGeometry();
}

// The devices and the bar for notices, which the player uses, end before the session does.
TMainForm::~TMainForm() {
    loader_->Cancel();
    delete rangeForm_.data();
    delete revoiceFolder_.data();
    delete revoicer_.data(); // lets the channels sound as the song says
    delete health_.data();   // shows what ends here
    delete changes_.data();
    changesWatch_.reset();
    changeLog_.reset();
    backupComparison_.reset();
    healthWatch_.reset();
    signals_.reset();
    backups_.reset();
    connection_ = {};
    rangeTools_.reset();
    undo_.reset();
    mixer_.reset();
    session_.EndPlayer();
}

void TMainForm::BuildPlayer(std::unique_ptr<devices::MidiDevices> devices) {
    notice_ = new NoticeBar;
    noticeHost_ = std::make_unique<NoticeHost>(*notice_, host_);
    devices_ = devices ? std::move(devices)
                       : std::make_unique<devices::MidiDevices>(sound_.ReadSynthOptions());
    session_.StartPlayer(
        {devices_->Outputs(), &devices_->Input(), sound_.ReadInput(), *noticeHost_}, &store_);
    mixer_ = std::make_unique<mixer::Mixer>(session_); // hears of changes before what shows it
    undo_ = std::make_unique<editing::Undo>(session_);
    rangeTools_ = std::make_unique<editing::RangeTools>(session_, *undo_, host_);
    signals_ = std::make_unique<SessionSignals>(session_);
    healthWatch_ = std::make_unique<HealthWatch>(session_, [this] { return HealthOptionsOf(); });
    connect(healthWatch_.get(), &HealthWatch::Changed, this, &TMainForm::ShowFindings);
    changeLog_ = std::make_unique<ChangeLog>(session_);
    changesWatch_ = std::make_unique<ChangesWatch>(session_, *signals_);
    mixer_->Live().SetLiveWhileStopped(settings_.ReadSwitch(kLiveWhileStopped));
    sound_.Attach(*devices_, session_.Controls());
}

// Also after a change of the size of text, which all areas are laid out by.
void TMainForm::ShowAreas() {
    delete lyricsPage_.data(); // shows what goes with the areas
    const auto answers = startPage_ ? std::optional(startPage_->Answers()) : std::nullopt;
    BuildAreas();
    ConnectMenu();
    ConnectOptions();
    TakeInstruments();
    session_.Options().noteLength = app::ReadNoteLength(store_);
    menu_->SetTheme(settings_.ReadTheme());
    menu_->Choose(kTextSizeMenu, settings_.ReadTextSize());
    menu_->ActionOf(commands::kLiveWhileStopped).setChecked(mixer_->Live().LiveWhileStopped());
    menu_->Choose(kNoteLengthMenu, session_.Options().noteLength.minimum);
    ShowBackupOptions();
    ShowFileAssociation();
    ApplyLanguage(settings_.ReadLanguage());
    ShowRecentFiles();
    ShowSong();
    ShowLooping();
    if (answers) {
        ShowStartPage(*answers);
    }
}

void TMainForm::BuildAreas() {
    menu_ = new MainMenu(*this);
    setMenuBar(menu_);
    status_ = new StatusLine(this);
    setStatusBar(status_);
    emptyPage_ = new EmptyPage;
    songView_ = new SongView(session_.Work(), voices_, *menu_, *signals_, *mixer_);
    pages_ = new QStackedWidget;
    pages_->addWidget(NewScrollArea(emptyPage_));
    pages_->addWidget(songView_);
    auto* center = new QWidget;
    auto* column = new QVBoxLayout(center);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(pages_, 1);
    auto* noticeRow = new QHBoxLayout;
    noticeRow->setContentsMargins(Gap() * 3 / 2, 0, Gap() * 3 / 2, Gap() / 2);
    noticeRow->addWidget(notice_);
    column->addLayout(noticeRow);
    setCentralWidget(center);
    connect(status_, &StatusLine::CancelPressed, this, &TMainForm::CancelLoading);
    connect(emptyPage_, &EmptyPage::OpenPressed, this, &TMainForm::MMF_OpenMidifileClick);
    connect(emptyPage_, &EmptyPage::DemoPressed, this, &TMainForm::MMF_OpenDemoSongClick);
    connect(emptyPage_, &EmptyPage::FileChosen, this, &TMainForm::MMF_OpenRecentClick);
    connect(songView_, &SongView::VoicePressed, this,
            [this](int channel) { PickVoice(static_cast<std::size_t>(channel)); });
    connect(songView_, &SongView::InsertWanted, this, &TMainForm::InsertAtStart);
    connect(songView_, &SongView::Refused, this, &TMainForm::TellPortHangs);
}

void TMainForm::ConnectMenu() {
    connect(&menu_->Recent(), &RecentFilesMenu::FileChosen, this, &TMainForm::MMF_OpenRecentClick);
    connect(&menu_->Recent(), &RecentFilesMenu::ClearChosen, this,
            &TMainForm::MMF_ClearRecentClick);
}

void TMainForm::MMF_QuitClick() {
    close();
}

bool TMainForm::AgreeToEnd(bool mayAsk) {
    if (mayAsk && !mayLoseChanges_ && !ConfirmDiscard()) {
        return false;
    }
    GiveUpLoading();
    EndBackups(mayAsk || mayLoseChanges_);
    mayLoseChanges_ = true;
    session_.Controls().Stop();
    settings_.WriteGeometry(saveGeometry());
    return true;
}

void TMainForm::EndNow() {
    AgreeToEnd(false);
    QCoreApplication::exit();
}

void TMainForm::ConnectAreas() {
    connect(notice_, &NoticeBar::DetailsPressed, this, &TMainForm::ShowLoadingChanges);
    connect(notice_, &NoticeBar::TakeBackPressed, this, &TMainForm::MME_TakeBackClick);
    connect(notice_, &NoticeBar::LeadInPressed, this, &TMainForm::MMI_InsertLeadInClick);
    connect(notice_, &NoticeBar::PreparePressed, this, &TMainForm::MMI_PrepareSongClick);
    connect(notice_, &NoticeBar::ReloadPressed, this, &TMainForm::MMF_ReloadMidifileClick);
    connect(loader_.get(), &SongLoader::Moved, this, &TMainForm::ShowLoading);
    connect(loader_.get(), &SongLoader::Ready, this, &TMainForm::TakeLoaded);
}

void TMainForm::ConnectOptions() {
    for (const auto& [action, option] : menu_->Switches()) {
        const bool on = settings_.ReadSwitch(option->setting);
        action->setChecked(on);
        option->apply(session_.Options(), on);
        connect(action, &QAction::toggled, this,
                [this, option = option](bool now) { ChangeOption(*option, now); });
    }
}

void TMainForm::ChangeOption(const SongOption& option, bool on) {
    option.apply(session_.Options(), on);
    settings_.WriteSwitch(option.setting, on);
    if (option.needsReload && session_.HasSong()) {
        notice_->ShowReloadOffer();
    }
}

void TMainForm::RestoreGeometry() {
    if (!restoreGeometry(settings_.ReadGeometry())) {
        const QSize room = screen()->availableSize().expandedTo(kSmallScreen) - kFrame;
        resize(kFirstSize.boundedTo(room));
    }
}

void TMainForm::ShowSong() {
    LeaveStartPage();
    if (session_.HasSong()) {
        ChooseLyricsEncoding();
        songView_->ShowSong(SongFileName());
        healthWatch_->Begin();
    } else {
        delete lyricsPage_.data();
    }
    pages_->setCurrentIndex(session_.HasSong() ? 1 : 0);
    status_->ShowSong(session_.HasSong() ? &songView_->Description() : nullptr);
    ShowFileState();
}

void TMainForm::ShowFileState() {
    mayLoseChanges_ = false;
    ShowCommands();
    const QString mark = session_.Modified() ? QStringLiteral("*") : QString();
    const QString name = session_.HasSong() ? SongFileName() + mark : QString();
    const QString program = InLanguage(texts::kProgram, host_.CurrentLanguage());
    menu_->SetFileName(name);
    songView_->ShowFileName(name);
    status_->SetModified(session_.Modified());
    setWindowTitle(name.isEmpty() ? program : name + QStringLiteral(" – ") + program);
}

void TMainForm::ShowCommands() {
    const session::TakeBack& last = session_.LastChange();
    const bool songFile = session_.HasSong() && !session_.Work().file.source.empty();
    menu_->SetState({.song = session_.HasSong(),
                     .songFile = songFile,
                     .songList = songFile || songs_.Waits(),
                     .undo = undo_->Enabled(),
                     .takeBack = last.Available(),
                     .leadIn = app::CanInsertLeadIn(session_)});
    if (last.Available()) {
        menu_->SetTextOf(commands::kTakeBack,
                         [name = last.Name(), taken = last.Taken()](Language language) {
                             return texts::TakeBackChange(name, taken, language);
                         });
    } else {
        menu_->SetTextOf(commands::kTakeBack, {});
    }
    ShowUndo();
}

// The key belongs to whichever of the two takes the last change back.
void TMainForm::ShowUndo() {
    const auto caption = [this](Language language) {
        return u'&' + MenuText(ToQString(undo_->Caption(language)));
    };
    menu_->SetTextOf(commands::kUndo, caption);
    menu_->SetTextOf(commands::kPositionUndo, caption);
    const bool undo = undo_->Enabled() && !session_.LastChange().Available();
    menu_->GiveKeys(undo ? commands::kTakeBack : commands::kUndo,
                    undo ? commands::kUndo : commands::kTakeBack);
}

QString TMainForm::SongFileName() const {
    const session::FileState& file = session_.Work().file;
    return file.isDemo ? InLanguage(texts::kDemoName, host_.CurrentLanguage())
                       : ShownFileName(file.source);
}

void TMainForm::ShowRecentFiles() {
    menu_->Recent().SetFiles(recentFiles_.List());
    emptyPage_->SetRecentFiles(recentFiles_.List());
}

void TMainForm::ApplyLanguage(Language language) {
    host_.SetLanguage(language);
    ShowQtTexts(language);
    menu_->Retranslate(language);
    emptyPage_->Retranslate(language);
    songView_->Retranslate(language);
    notice_->Retranslate(language);
    status_->Retranslate(language);
    ShowFileState();
    ShowHealthAnew();
    ShowWhatChangedAnew();
    ShowRevoicerAnew();
    ShowStartPageAnew();
    guide_->Retranslate(language);
    if (lyricsPage_ != nullptr) {
        lyricsPage_->Retranslate(language);
    }
}

void TMainForm::ShowQtTexts(Language language) {
    qtTexts_.reset();
    if (language == Language::German) {
        qtTexts_ = std::make_unique<QtGerman>();
        QCoreApplication::installTranslator(qtTexts_.get());
    }
}

void TMainForm::ApplyChosenTheme(Theme theme) {
    ApplyTheme(theme);
    menu_->SetTheme(theme);
    settings_.WriteTheme(theme);
}

void TMainForm::MMV_TextSizeClick() {
    settings_.WriteTextSize(menu_->Chosen(kTextSizeMenu));
    ApplyTextSize(settings_.ReadTextSize());
    // The menu that is laid out anew is still in use.
    QMetaObject::invokeMethod(this, &TMainForm::ShowAreas, Qt::QueuedConnection);
}

std::string TMainForm::SongPositionToMTC(std::int32_t tick) const {
    return session_.HasSong() ? song::SongPositionToMTC(session_.Song(), tick) : std::string();
}

std::int32_t TMainForm::MTCToSongPosition(std::int32_t measure, std::int32_t beat,
                                          std::int32_t tick) const {
    return session_.HasSong() ? song::MTCToSongPosition(session_.Song(), measure, beat, tick) : -1;
}

} // namespace tracksmith::forms
