#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "base/forms/theme.h"
#include "base/text.h"
#include <QMenuBar>

class QLabel;

namespace tracksmith::forms {

class RecentFilesMenu;

/// The commands of the menu bar.
enum class Command {
    New,
    Open,
    Reload,
    Save,
    SaveAs,
    SaveFormat0,
    SaveFormat1,
    Quit,
    WhatChanged,
    PlayStop,
    MoveToStart,
    MoveToEnd,
    MeasureBack,
    MeasureForward,
    Looping,
    LoopFromHere,
    LoopToHere,
    TempoDown,
    TempoUp,
    TempoReset,
    Panic,
    NextPage,
    ChooseInstrument,
    PrepareSong,
    Voices,
    MidiPorts,
    Instruments,
    SplitFormat0,
    HonourZelIgnore,
    RunningAcross,
    UseRunning,
    OmitPorts,
    Dark,
    Light,
    System,
    German,
    English,
    OpenDemo,
    About,
    Count
};

/// The menu bar: all commands with their keys, and the song's file name in its corner.
class MainMenu : public QMenuBar {
    Q_OBJECT

public:
    explicit MainMenu(QWidget* parent = nullptr);

    QAction& ActionOf(Command command) const {
        return *actions_[static_cast<std::size_t>(command)];
    }
    RecentFilesMenu& Recent() const { return *recent_; }

    /// Shows every text in `language` and marks it as the chosen one.
    void Retranslate(Language language);

    /// Marks the chosen theme.
    void SetTheme(Theme theme);

    /// Enables the commands that need a song; `reloadable` says that it came from a file.
    void SetSongState(bool hasSong, bool reloadable);

    /// The file name in the corner.
    void SetFileName(const QString& name);

private:
    void AddActions();
    void AddMenus();
    void Group(std::initializer_list<Command> commands);
    void Fill(QMenu& menu, std::initializer_list<Command> commands);
    QMenu* NewMenu(const Text& title, const char* objectName, QMenu* parent = nullptr);

    struct TitledMenu {
        QMenu* menu = nullptr;
        Text title;
    };

    std::array<QAction*, static_cast<std::size_t>(Command::Count)> actions_{};
    std::vector<TitledMenu> menus_;
    RecentFilesMenu* recent_ = nullptr;
    QLabel* fileName_ = nullptr;
};

} // namespace tracksmith::forms
