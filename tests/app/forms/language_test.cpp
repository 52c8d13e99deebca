#include <map>
#include <set>
#include <string>

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>
#include <QTreeView>

#include "app/forms/dialogs.h"
#include "app/forms/form_fixture.h"

namespace tracksmith::forms {
namespace {

using LanguageTest = FormTest;

/// Entries that read alike in both languages.
const std::set<QString> kAlike{QStringLiteral("MMF_German"), QStringLiteral("MMF_English"),
                               QStringLiteral("Menu_Instrument"), QStringLiteral("Menu_Song")};

QMap<QString, QString> MenuTexts(const TMainForm& form) {
    QMap<QString, QString> shown;
    for (const QAction* action : form.findChildren<QAction*>()) {
        if (action->objectName().startsWith(QStringLiteral("MM"))) {
            shown[action->objectName()] = action->text();
        }
    }
    for (const QMenu* menu : form.findChildren<QMenu*>()) {
        if (!menu->objectName().isEmpty()) { // the menu bar has one of Qt's own
            shown[menu->objectName()] = menu->title();
        }
    }
    return shown;
}

TEST_F(LanguageTest, SwitchingChangesEveryMenuText) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    const auto english = MenuTexts(*form_);
    ASSERT_GT(english.size(), 25);
    Trigger("MMF_German");
    const auto german = MenuTexts(*form_);
    for (const QString& name : english.keys()) {
        EXPECT_FALSE(german[name].isEmpty()) << name.toStdString();
        const bool number = name.startsWith(QStringLiteral("MMV_TextSize"));
        EXPECT_EQ(german[name] == english[name], number || kAlike.contains(name))
            << name.toStdString();
    }
    EXPECT_EQ(LabelText("Lbl_Facts"), "Format 1 · 480 · 3 Spuren");
    OpenWindow(); // the language is remembered
    EXPECT_EQ(Find<QMenu>("Menu_File")->title().toStdString(), "&Datei");
    Trigger("MMF_English");
    OpenWindow();
    EXPECT_EQ(Find<QMenu>("Menu_File")->title().toStdString(), "&File");
    EXPECT_TRUE(Find<QAction>("MMF_English")->isChecked());
}

void ExpectNames(const QWidget& window) {
    std::set<QString> names;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || widget->window() != &window ||
            !widget->isVisible() || qobject_cast<QAbstractSpinBox*>(widget->parentWidget())) {
            continue;
        }
        const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
        const QString name = spoken->text(QAccessible::Name);
        if (const auto* choice = qobject_cast<QComboBox*>(widget)) {
            EXPECT_EQ(spoken->text(QAccessible::Value), choice->currentText());
        }
        EXPECT_FALSE(name.isEmpty())
            << widget->metaObject()->className() << " " << widget->objectName().toStdString();
        EXPECT_TRUE(names.insert(name).second) << name.toStdString() << " is there twice";
        EXPECT_FALSE(widget->objectName().isEmpty()) << name.toStdString();
    }
    EXPECT_FALSE(names.empty());
}

void ExpectLetters(const QWidget& window) {
    QMap<QKeySequence, QString> owners;
    const auto take = [&owners](const QString& text) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        EXPECT_FALSE(!key.isEmpty() && owners.contains(key))
            << text.toStdString() << " and " << owners[key].toStdString();
        owners[key] = text;
    };
    if (const auto* bar = window.findChild<QMenuBar*>()) {
        for (const QAction* menu : bar->actions()) {
            take(menu->text());
        }
    }
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisible()) {
            take(button->text());
        }
    }
}

int WidthOf(const QWidget& widget, const QString& text) {
    return widget.fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

// A text that has less room than it needs is cut off.
void ExpectWholeTexts(const QWidget& window) {
    const auto expect = [](const QWidget& widget, const QString& text, int room, int needed) {
        EXPECT_GE(room, needed) << widget.objectName().toStdString() << ": " << text.toStdString();
    };
    QApplication::processEvents(); // lays out what has changed
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        const auto* tool = qobject_cast<const QToolButton*>(button);
        const bool onlyIcon = tool != nullptr && tool->toolButtonStyle() == Qt::ToolButtonIconOnly;
        // The voices of the strips are painted in two lines, and shorter where they do not fit.
        const bool voice = button->objectName().startsWith(QStringLiteral("Btn_Voice"));
        if (button->isVisible() && !button->text().isEmpty() && !onlyIcon && !voice) {
            expect(*button, button->text(), button->width(), WidthOf(*button, button->text()));
        }
    }
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (!label->isVisible() || label->text().isEmpty()) {
            continue;
        }
        if (label->wordWrap()) {
            expect(*label, label->text(), label->height(), label->heightForWidth(label->width()));
        } else {
            expect(*label, label->text(), label->contentsRect().width(),
                   WidthOf(*label, label->text()));
        }
    }
    for (const auto* header : window.findChildren<QHeaderView*>()) {
        for (int column = 0; header->isVisible() && column < header->count(); ++column) {
            const QString title =
                header->model()->headerData(column, header->orientation()).toString();
            if (!header->isSectionHidden(column)) {
                expect(*header, title, header->sectionSize(column), WidthOf(*header, title));
            }
        }
    }
}

// What no layout places lies over its neighbours.
void ExpectOwnPlaces(const QWidget& window) {
    const auto isControl = [](const QWidget* widget) {
        return widget->isVisible() && (qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                                       qobject_cast<const QLabel*>(widget) != nullptr ||
                                       qobject_cast<const QComboBox*>(widget) != nullptr ||
                                       qobject_cast<const QAbstractSpinBox*>(widget) != nullptr ||
                                       qobject_cast<const QLineEdit*>(widget) != nullptr ||
                                       qobject_cast<const QAbstractItemView*>(widget) != nullptr);
    };
    QList<QWidget*> controls = window.findChildren<QWidget*>();
    controls.removeIf([&](const QWidget* widget) { return !isControl(widget); });
    for (const QWidget* one : controls) {
        for (const QWidget* other : controls) {
            const bool neighbours = one < other && one->parentWidget() == other->parentWidget();
            EXPECT_FALSE(neighbours && one->geometry().intersects(other->geometry()))
                << one->objectName().toStdString() << " " << other->objectName().toStdString();
        }
    }
}

// All texts of a window by the names of their controls.
QMap<QString, QString> TextsOf(const QWidget& window) {
    QMap<QString, QString> texts;
    const auto take = [&texts](const QString& key, const QString& text) { texts[key] = text; };
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const QString name = widget->objectName();
        if (name.isEmpty() || name.startsWith(QStringLiteral("qt_"))) {
            continue;
        }
        take(name + QStringLiteral(" name"), widget->accessibleName());
        take(name + QStringLiteral(" hint"), widget->toolTip());
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            take(name, button->text());
        } else if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            take(name, label->text());
        } else if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) {
            take(name, edit->placeholderText());
        }
    }
    for (const auto* header : window.findChildren<QHeaderView*>()) {
        for (int column = 0; column < header->count(); ++column) {
            take(header->parentWidget()->objectName() + QString::number(column),
                 header->model()->headerData(column, header->orientation()).toString());
        }
    }
    return texts;
}

TEST_F(LanguageTest, EveryWindowSaysItInBothLanguages) {
    constexpr int kFewestLetters = 3;
    const std::set<QString> kSameWords{QStringLiteral("Instrument"),
                                       QStringLiteral("Name"),
                                       QStringLiteral("Song"),
                                       QStringLiteral("Position"),
                                       QStringLiteral("Tempo  0"),
                                       QStringLiteral("Version "),
                                       QStringLiteral("Tracksmith"),
                                       QStringLiteral("Auto Revoicer - GM Soundset"),
                                       QStringLiteral("Korg PaXXX Track equalizer"),
                                       QStringLiteral("Motif DSP management"),
                                       QStringLiteral("DSP management"),
                                       QStringLiteral("001.01.000"),
                                       QStringLiteral("waltz.mid")};
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    std::map<std::string, QMap<QString, QString>> former;
    for (const char* language : {"MMF_German", "MMF_English"}) {
        Trigger(language);
        for (const auto& [action, dialog] : kDialogs) {
            Trigger(action);
            auto* window = Find<QDialog>(dialog);
            const QMap<QString, QString> texts = TextsOf(*window);
            for (const auto& [name, text] : former[dialog].toStdMap()) {
                const bool alike = text.size() > kFewestLetters && text == texts[name];
                EXPECT_FALSE(alike && !kSameWords.contains(text))
                    << dialog << " " << name.toStdString() << ": " << text.toStdString();
            }
            former[dialog] = texts;
            delete window;
        }
    }
}

TEST_F(LanguageTest, EveryControlOfEveryWindowHasANameOfItsOwn) {
    const auto file = Write("waltz.mid", Waltz());
    for (const char* language : {"MMF_German", "MMF_English"}) {
        Trigger(language);
        form_->ClearMidiMemory();
        ExpectNames(*form_);
        ExpectLetters(*form_);
        ExpectWholeTexts(*form_);
        Trigger("MMF_FirstSteps");
        ExpectNames(*form_);
        ExpectLetters(*form_);
        ExpectWholeTexts(*form_);
        form_->OpenMidiFile(file);
        Trigger("MMF_SplitFormat0");
        ExpectNames(*form_);
        ExpectLetters(*form_);
        ExpectOwnPlaces(*form_);
        ExpectWholeTexts(*form_);
        for (int page = 1; page < 5; ++page) { // all pages, and back to the first
            Trigger("MMV_NextPage");
            ExpectNames(*form_);
            ExpectWholeTexts(*form_);
            ExpectOwnPlaces(*form_);
        }
        for (const auto& [action, dialog] : kDialogs) {
            Trigger(action);
            auto* window = Find<QDialog>(dialog);
            ExpectNames(*window);
            ExpectLetters(*window);
            ExpectWholeTexts(*window);
            ExpectOwnPlaces(*window);
            if (auto* folder = window->findChild<QPushButton*>("Btn_RevoiceFolder")) {
                folder->click();
                auto* inner = Find<QDialog>("Dlg_RevoiceFolder");
                ExpectNames(*inner);
                ExpectLetters(*inner);
                delete inner;
            }
            delete window;
        }
        form_->PickVoice(0);
        auto* picker = Find<QDialog>("PickerForm");
        ExpectNames(*picker);
        ExpectLetters(*picker);
        ExpectWholeTexts(*picker);
        ExpectOwnPlaces(*picker);
        delete picker;
        Trigger("MMF_UserGuide"); // a window of its own, so that it can stay beside the others
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QStringLiteral("GuideForm")) {
                ExpectNames(*window);
                ExpectLetters(*window);
                ExpectWholeTexts(*window);
                ExpectOwnPlaces(*window);
                delete window;
                break;
            }
        }
    }
}

#ifndef _WIN32 // which has a file dialog of its own
/// Every text of the file dialog as it is asked for in `language`.
std::set<QString> FileDialogTexts(TMainForm& form, Language language) {
    form.ApplyLanguage(language);
    std::set<QString> shown;
    QTimer::singleShot(0, &form, [&shown] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        shown.insert(dialog->windowTitle());
        for (const auto* label : dialog->findChildren<QLabel*>()) {
            shown.insert(label->text());
        }
        for (const auto* button : dialog->findChildren<QAbstractButton*>()) {
            shown.insert({button->text(), button->toolTip()});
        }
        const auto* model = dialog->findChild<QTreeView*>()->model();
        for (int column = 0; column < model->columnCount(); ++column) {
            shown.insert(model->headerData(column, Qt::Horizontal).toString());
        }
        dialog->reject();
    });
    FileChooser().ChooseOpen(&form, language, FileKind::Song, {});
    return shown;
}

TEST_F(LanguageTest, FileDialogsSpeakTheChosenLanguage) {
    const std::set<QString> english = FileDialogTexts(*form_, Language::English);
    const std::set<QString> german = FileDialogTexts(*form_, Language::German);
    EXPECT_TRUE(german.contains(QStringLiteral("Dateien vom Typ:")));
    EXPECT_GT(german.size(), 12U);
    for (const QString& text : german) {
        EXPECT_TRUE(!english.contains(text) || text.isEmpty() || text == QStringLiteral("Name"))
            << text.toStdString();
    }
}
#endif

TEST_F(LanguageTest, KeysSpeakTheChosenLanguage) {
    Trigger("MMF_German");
    const QKeySequence keys = Find<QAction>("MMI_PrepareSong")->shortcut();
    EXPECT_EQ(keys.toString(QKeySequence::NativeText), QStringLiteral("Strg+Umschalt+I"));
}

} // namespace
} // namespace tracksmith::forms
