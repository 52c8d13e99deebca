#include "app/forms/menu/main_menu.h"

#include <algorithm>
#include <string>

#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include <QActionGroup>
#include <QLabel>
#include <QMenu>

#include "app/forms/main_form.h"
#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/menu_areas.h"
#include "app/forms/menu/recent_files_menu.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

QList<QKeySequence> KeysOf(const CommandKeys& keys) {
    const QList<QKeySequence> usual = QKeySequence::keyBindings(keys.standard);
    return usual.isEmpty() ? QKeySequence::listFromString(QLatin1String(keys.names)) : usual;
}

} // namespace

MainMenu::MainMenu(TMainForm& form) : QMenuBar(&form), form_(form) {
    setObjectName(QStringLiteral("MainMenu"));
    for (const MenuArea* area : {&kFileMenu, &kEditMenu, &kSongMenu, &kPlayMenu, &kInstrumentMenu,
                                 &kViewMenu, &kSettingsMenu, &kHelpMenu}) {
        if (!area->rows.empty()) {
            addMenu(NewMenu(*area));
        }
    }
    position_ = NewMenu(kPositionMenu);
    fileName_ = NewCaption("Lbl_CornerFileName", this);
    fileName_->setContentsMargins(0, Gap() / 2, Gap() * 3 / 2, 0);
    setCornerWidget(fileName_);
}

QMenu* MainMenu::NewMenu(const MenuArea& area) {
    QMenu* menu = nullptr;
    if (&area == &kRecentMenu) {
        menu = recent_ = new RecentFilesMenu(this);
    } else {
        menu = new QMenu(this);
        Fill(*menu, area);
    }
    menu->setObjectName(ToQString(area.id));
    menus_.push_back({menu, area.title});
    return menu;
}

void MainMenu::Fill(QMenu& menu, const MenuArea& area) {
    auto* group = area.exclusive ? new QActionGroup(&menu) : nullptr;
    for (const CommandRow& row : area.rows) {
        if (row.submenu != nullptr) {
            menu.addMenu(NewMenu(*row.submenu));
        } else if (row.id.empty()) {
            menu.addSeparator();
        } else {
            QAction* action = NewAction(row);
            menu.addAction(action);
            if (group != nullptr) {
                action->setCheckable(true);
                group->addAction(action);
            }
        }
    }
}

QAction* MainMenu::NewAction(const CommandRow& row) {
    auto* action = new QAction(this);
    action->setObjectName(ToQString(row.id));
    action->setCheckable(row.checkable);
    action->setShortcuts(KeysOf(row.keys));
    if (row.handler != nullptr) {
        connect(action, &QAction::triggered, &form_, row.handler);
    }
    entries_.push_back({&row, action, {}});
    return action;
}

const MainMenu::Entry& MainMenu::EntryOf(std::string_view id) const {
    const auto found =
        std::ranges::find_if(entries_, [id](const Entry& entry) { return entry.row->id == id; });
    if (found == entries_.end()) {
        qFatal("no command has the id %s", std::string(id).c_str());
    }
    return *found;
}

QAction& MainMenu::ActionOf(std::string_view id) const {
    return *EntryOf(id).action;
}

std::vector<MainMenu::Switch> MainMenu::Switches() const {
    std::vector<Switch> switches;
    for (const Entry& entry : entries_) {
        if (entry.row->option != nullptr) {
            switches.push_back({entry.action, entry.row->option});
        }
    }
    return switches;
}

void MainMenu::SetTextOf(std::string_view id, const TextSource& source) {
    for (Entry& entry : entries_) {
        if (entry.row->id == id) {
            entry.text = source;
            ShowText(entry);
        }
    }
}

void MainMenu::GiveKeys(std::string_view from, std::string_view to) {
    const QList<QKeySequence> keys = ActionOf(from).shortcuts();
    if (!ActionOf(from).shortcut().isEmpty()) {
        ActionOf(from).setShortcuts(QList<QKeySequence>());
        ActionOf(to).setShortcuts(keys);
    }
}

void MainMenu::ShowText(const Entry& entry) {
    entry.action->setText(entry.text ? entry.text(language_)
                                     : InLanguage(entry.row->text, language_));
}

void MainMenu::Retranslate(Language language) {
    language_ = language;
    setAccessibleName(InLanguage(texts::kMenuBar, language));
    for (const Entry& entry : entries_) {
        ShowText(entry);
    }
    for (const TitledMenu& each : menus_) {
        each.menu->setTitle(InLanguage(each.title, language));
    }
    recent_->Retranslate(language);
    ActionOf(language == Language::German ? commands::kGerman : commands::kEnglish)
        .setChecked(true);
}

int MainMenu::Chosen(const MenuArea& area) const {
    for (const CommandRow& row : area.rows) {
        if (ActionOf(row.id).isChecked()) {
            return row.value;
        }
    }
    return 0;
}

void MainMenu::Choose(const MenuArea& area, int value) {
    for (const CommandRow& row : area.rows) {
        ActionOf(row.id).setChecked(row.value == value);
    }
}

void MainMenu::SetTheme(Theme theme) {
    ActionOf(theme == Theme::Dark    ? commands::kThemeDark
             : theme == Theme::Light ? commands::kThemeLight
                                     : commands::kThemeSystem)
        .setChecked(true);
}

void MainMenu::SetState(const MenuState& state) {
    for (const Entry& entry : entries_) {
        const Condition condition = entry.row->enabledWhen;
        entry.action->setEnabled(condition == kAlways || state.*condition);
    }
}

void MainMenu::SetFileName(const QString& name) {
    fileName_->setText(name);
    fileName_->setVisible(!name.isEmpty());
    fileName_->adjustSize();
    adjustSize();
}

} // namespace tracksmith::forms
