#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "base/forms/theme.h"
#include "base/text.h"
#include <QMenuBar>

#include "app/forms/menu/command_row.h"

class QLabel;

namespace tracksmith::forms {

class RecentFilesMenu;

/// The menu bar: all commands with their keys, and the song's file name in its corner.
class MainMenu : public QMenuBar {
    Q_OBJECT

public:
    /// Calls the handlers of `form`, which is also the parent.
    explicit MainMenu(TMainForm& form);

    /// The action of the row with that id, which must exist.
    QAction& ActionOf(std::string_view id) const;
    RecentFilesMenu& Recent() const { return *recent_; }

    /// A switch of the menu and what it does.
    struct Switch {
        QAction* action = nullptr;
        const SongOption* option = nullptr;
    };
    /// The switches that change how songs are read or written.
    std::vector<Switch> Switches() const;

    /// A text that depends on more than the language, with the ampersand of its key.
    using TextSource = std::function<QString(Language)>;
    /// Lets a row show another text than its own, from now on and in every language.
    void SetTextOf(std::string_view id, const TextSource& source);

    /// Gives the keys of a row to another row, where they work from now on.
    void GiveKeys(std::string_view from, std::string_view to);

    /// The menu that the position display shows.
    QMenu& Position() const { return *position_; }

    /// Shows every text in `language` and marks it as the chosen one.
    void Retranslate(Language language);

    /// The value of the checked row of an exclusive menu; 0 while none is checked.
    int Chosen(const MenuArea& area) const;
    /// Checks the row with that value, if there is one.
    void Choose(const MenuArea& area, int value);

    /// Marks the chosen theme.
    void SetTheme(Theme theme);

    /// Enables the commands that `state` allows, and no others.
    void SetState(const MenuState& state);

    /// The file name in the corner.
    void SetFileName(const QString& name);

private:
    struct Entry {
        const CommandRow* row = nullptr;
        QAction* action = nullptr;
        TextSource text;
    };
    struct TitledMenu {
        QMenu* menu = nullptr;
        Text title;
    };

    QMenu* NewMenu(const MenuArea& area);
    void Fill(QMenu& menu, const MenuArea& area);
    QAction* NewAction(const CommandRow& row);
    const Entry& EntryOf(std::string_view id) const;
    void ShowText(const Entry& entry);

    TMainForm& form_;
    Language language_ = Language::English;
    std::vector<Entry> entries_;
    std::vector<TitledMenu> menus_;
    RecentFilesMenu* recent_ = nullptr;
    QMenu* position_ = nullptr;
    QLabel* fileName_ = nullptr;
};

} // namespace tracksmith::forms
