#include "app/forms/menu/main_menu.h"

#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include <QActionGroup>
#include <QLabel>
#include <QMenu>

#include "app/forms/menu/recent_files_menu.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

struct CommandSpec {
    const char* objectName = "";
    Text text;
    bool checkable = false;
    QKeySequence::StandardKey key = QKeySequence::UnknownKey;
    /// Where the platform has no key of its own.
    const char* fallbackKey = "";
};

// In the order of Command.
constexpr std::array<CommandSpec, static_cast<std::size_t>(Command::Count)> kCommands{{
    {"MMF_NewMidifile", texts::kNew, false, QKeySequence::New, "Ctrl+N"},
    {"MMF_OpenMidifile", texts::kOpen, false, QKeySequence::Open, "Ctrl+O"},
    {"MMF_ReloadMidifile", texts::kReload, false, QKeySequence::UnknownKey, "Ctrl+R"},
    {"MMF_SaveMidifile", texts::kSave, false, QKeySequence::Save, "Ctrl+S"},
    {"MMF_SaveMidifileAs", texts::kSaveAs, false, QKeySequence::SaveAs, "Ctrl+Shift+S"},
    {"MMF_SaveFileAsFormat0", texts::kSaveFormat0},
    {"MMF_SaveFileAsFormat1", texts::kSaveFormat1},
    {"MMF_Quit", texts::kQuit, false, QKeySequence::Quit, "Ctrl+Q"},
    {"MMF_WhatChanged", texts::kWhatChanged},
    {"MMP_PlayStop", texts::kPlay, false, QKeySequence::UnknownKey, "Space"},
    {"MMP_MoveToStart", texts::kMoveToStart, false, QKeySequence::UnknownKey, "Home"},
    {"MMP_MoveToEnd", texts::kMoveToEnd, false, QKeySequence::UnknownKey, "End"},
    {"MMP_MeasureBack", texts::kMeasureBack, false, QKeySequence::UnknownKey, "PgUp"},
    {"MMP_MeasureForward", texts::kMeasureForward, false, QKeySequence::UnknownKey, "PgDown"},
    {"MMP_Looping", texts::kLooping, true, QKeySequence::UnknownKey, "Ctrl+L"},
    {"MMP_LoopFromHere", texts::kLoopFromHere, false, QKeySequence::UnknownKey, "["},
    {"MMP_LoopToHere", texts::kLoopToHere, false, QKeySequence::UnknownKey, "]"},
    {"MMP_TempoDown", texts::kTempoDown, false, QKeySequence::UnknownKey, "-"},
    {"MMP_TempoUp", texts::kTempoUp, false, QKeySequence::UnknownKey, "+"},
    {"MMP_TempoReset", texts::kTempoReset, false, QKeySequence::UnknownKey, "Ctrl+="},
    {"MMP_Panic", texts::kPanic, false, QKeySequence::UnknownKey, "Ctrl+Alt+P"},
    {"MMV_NextPage", texts::kNextPage, false, QKeySequence::UnknownKey, "F9"},
    {"MMI_ChooseInstrument", texts::kChooseInstrument, false, QKeySequence::UnknownKey, "Ctrl+I"},
    {"MMI_PrepareSong", texts::kPrepareAgain, false, QKeySequence::UnknownKey, "Ctrl+Shift+I"},
    {"MMI_Voices", texts::kVoices, false, QKeySequence::UnknownKey, "Ctrl+K"},
    {"MMS_MidiPorts", texts::kMidiPorts},
    {"MMS_Instruments", texts::kInstrumentSettings},
    {"MMF_SplitFormat0", texts::kSplitFormat0, true},
    {"MMF_HonourZelIgnore", texts::kHonourZelIgnore, true},
    {"MMF_RunningStatusAcrossSysex", texts::kRunningAcross, true},
    {"MMF_UseRunningStatus", texts::kUseRunning, true},
    {"MMF_OmitPortEvents", texts::kOmitPorts, true},
    {"MMF_ThemeDark", texts::kDark, true},
    {"MMF_ThemeLight", texts::kLight, true},
    {"MMF_ThemeSystem", texts::kSystem, true},
    {"MMF_German", texts::kGerman, true},
    {"MMF_English", texts::kEnglish, true},
    {"MMF_OpenDemoSong", texts::kOpenDemo},
    {"MMF_About", texts::kAbout},
}};

void SetKeys(QAction& action, const CommandSpec& spec) {
    QList<QKeySequence> keys = QKeySequence::keyBindings(spec.key);
    if (keys.isEmpty() && *spec.fallbackKey != '\0') {
        keys << QKeySequence(QLatin1String(spec.fallbackKey));
    }
    action.setShortcuts(keys);
}

} // namespace

MainMenu::MainMenu(QWidget* parent) : QMenuBar(parent) {
    setObjectName(QStringLiteral("MainMenu"));
    AddActions();
    AddMenus();
    Group({Command::Dark, Command::Light, Command::System});
    Group({Command::German, Command::English});
    fileName_ = NewCaption("Lbl_CornerFileName", this);
    fileName_->setContentsMargins(0, Gap() / 2, Gap() * 3 / 2, 0);
    setCornerWidget(fileName_);
}

void MainMenu::AddActions() {
    for (std::size_t i = 0; i < kCommands.size(); ++i) {
        auto* action = new QAction(this);
        action->setObjectName(QLatin1String(kCommands[i].objectName));
        action->setCheckable(kCommands[i].checkable);
        SetKeys(*action, kCommands[i]);
        actions_[i] = action;
    }
    ActionOf(Command::Quit).setMenuRole(QAction::QuitRole);
    ActionOf(Command::About).setMenuRole(QAction::AboutRole);
}

void MainMenu::AddMenus() {
    QMenu* file = NewMenu(texts::kMenuFile, "Menu_File");
    Fill(*file, {Command::New, Command::Open});
    recent_ = new RecentFilesMenu(file);
    menus_.push_back({recent_, texts::kMenuRecent});
    file->addMenu(recent_);
    Fill(*file, {Command::Reload});
    file->addSeparator();
    Fill(*file, {Command::Save, Command::SaveAs, Command::SaveFormat0, Command::SaveFormat1});
    file->addSeparator();
    Fill(*file, {Command::Quit});
    QMenu* song = NewMenu(texts::kMenuSong, "Menu_Song");
    Fill(*song, {Command::WhatChanged});
    song->addSeparator();
    Fill(*NewMenu(texts::kMenuReading, "Menu_Reading", song),
         {Command::SplitFormat0, Command::HonourZelIgnore, Command::RunningAcross});
    Fill(*NewMenu(texts::kMenuWriting, "Menu_Writing", song),
         {Command::UseRunning, Command::OmitPorts});
    QMenu* play = NewMenu(texts::kMenuPlay, "Menu_Play");
    Fill(*play, {Command::PlayStop, Command::MoveToStart, Command::MoveToEnd, Command::MeasureBack,
                 Command::MeasureForward});
    play->addSeparator();
    Fill(*play, {Command::Looping, Command::LoopFromHere, Command::LoopToHere});
    play->addSeparator();
    Fill(*play, {Command::TempoDown, Command::TempoUp, Command::TempoReset});
    play->addSeparator();
    Fill(*play, {Command::Panic});
    Fill(*NewMenu(texts::kMenuInstrument, "Menu_Instrument"),
         {Command::ChooseInstrument, Command::PrepareSong, Command::Voices});
    QMenu* view = NewMenu(texts::kMenuView, "Menu_View");
    Fill(*view, {Command::NextPage});
    Fill(*NewMenu(texts::kMenuTheme, "Menu_Theme", view),
         {Command::Dark, Command::Light, Command::System});
    QMenu* settings = NewMenu(texts::kMenuSettings, "Menu_Settings");
    Fill(*settings, {Command::MidiPorts, Command::Instruments});
    Fill(*NewMenu(texts::kMenuLanguage, "Menu_Language", settings),
         {Command::German, Command::English});
    Fill(*NewMenu(texts::kMenuHelp, "Menu_Help"), {Command::OpenDemo, Command::About});
}

void MainMenu::Group(std::initializer_list<Command> commands) {
    auto* group = new QActionGroup(this);
    for (const Command command : commands) {
        group->addAction(&ActionOf(command));
    }
}

void MainMenu::Fill(QMenu& menu, std::initializer_list<Command> commands) {
    for (const Command command : commands) {
        menu.addAction(&ActionOf(command));
    }
}

QMenu* MainMenu::NewMenu(const Text& title, const char* objectName, QMenu* parent) {
    QMenu* menu = parent != nullptr ? parent->addMenu(QString()) : addMenu(QString());
    menu->setObjectName(QLatin1String(objectName));
    menus_.push_back({menu, title});
    return menu;
}

void MainMenu::Retranslate(Language language) {
    setAccessibleName(InLanguage(texts::kMenuBar, language));
    for (std::size_t i = 0; i < kCommands.size(); ++i) {
        actions_[i]->setText(InLanguage(kCommands[i].text, language));
    }
    for (const TitledMenu& each : menus_) {
        each.menu->setTitle(InLanguage(each.title, language));
    }
    recent_->Retranslate(language);
    ActionOf(language == Language::German ? Command::German : Command::English).setChecked(true);
}

void MainMenu::SetTheme(Theme theme) {
    ActionOf(theme == Theme::Dark    ? Command::Dark
             : theme == Theme::Light ? Command::Light
                                     : Command::System)
        .setChecked(true);
}

void MainMenu::SetSongState(bool hasSong, bool reloadable) {
    for (const Command command :
         {Command::Save, Command::SaveAs, Command::SaveFormat0, Command::SaveFormat1,
          Command::WhatChanged, Command::PlayStop, Command::MoveToStart, Command::MoveToEnd,
          Command::MeasureBack, Command::MeasureForward, Command::Looping, Command::LoopFromHere,
          Command::LoopToHere, Command::TempoDown, Command::TempoUp, Command::TempoReset,
          Command::NextPage, Command::PrepareSong}) {
        ActionOf(command).setEnabled(hasSong);
    }
    ActionOf(Command::Reload).setEnabled(reloadable);
}

void MainMenu::SetFileName(const QString& name) {
    fileName_->setText(name);
    fileName_->setVisible(!name.isEmpty());
    fileName_->adjustSize();
    adjustSize();
}

} // namespace tracksmith::forms
