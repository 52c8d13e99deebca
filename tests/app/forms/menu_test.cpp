#include <QDialog>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

#include "app/forms/form_fixture.h"

namespace tracksmith::forms {
namespace {

using MenuTest = FormTest;

/// No two of `texts`, which are seen together, are reached by the same letter.
void ExpectKeysOfTheirOwn(const QStringList& texts, const QString& place) {
    QMap<QKeySequence, QString> owners;
    for (const QString& text : texts) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!key.isEmpty()) {
            EXPECT_FALSE(owners.contains(key)) << place.toStdString() << ": " << text.toStdString()
                                               << " and " << owners[key].toStdString();
            owners[key] = text;
        }
    }
}

void ExpectKeysInMenu(const QMenu& menu) {
    QStringList texts;
    for (const QAction* action : menu.actions()) {
        texts << action->text();
        EXPECT_TRUE(action->isSeparator() || !action->isEnabled() ||
                    !QKeySequence::mnemonic(action->text()).isEmpty())
            << action->text().toStdString();
        if (action->menu() != nullptr) {
            ExpectKeysInMenu(*action->menu());
        }
    }
    ExpectKeysOfTheirOwn(texts, menu.title());
}

/// The menu bar's titles and what else of the window answers to Alt and a letter.
QStringList KeyedTexts(const QWidget& window) {
    QStringList texts;
    for (const auto* bar : window.findChildren<QMenuBar*>()) {
        for (const QAction* action : bar->actions()) {
            texts << action->text();
        }
    }
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisible() && qobject_cast<const QToolButton*>(button) == nullptr) {
            texts << button->text();
        }
    }
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (label->isVisible() && label->buddy() != nullptr) {
            texts << label->text();
        }
    }
    for (const auto* tabs : window.findChildren<QTabBar*>()) {
        for (int tab = 0; tabs->isVisible() && tab < tabs->count(); ++tab) {
            texts << tabs->tabText(tab);
        }
    }
    return texts;
}

TEST_F(MenuTest, LettersLeadToOnePlaceInBothLanguages) {
    const auto dirty = test::TrackBuilder().Note(0, 0, 60, 90).Raw(0, {0xF7, 0x01, 0x55}).End();
    const auto file = Write("dirty.mid", test::MidiFileBuilder(0).Track(dirty).Build());
    for (const char* language : {"MMF_German", "MMF_English"}) {
        Trigger(language);
        const auto expectKeys = [&](const char* place) {
            ExpectKeysOfTheirOwn(KeyedTexts(*form_), QLatin1String(place));
            for (const QAction* title : form_->menuBar()->actions()) {
                EXPECT_FALSE(QKeySequence::mnemonic(title->text()).isEmpty());
                ExpectKeysInMenu(*title->menu());
            }
        };
        form_->ClearMidiMemory();
        expectKeys("without a song");
        form_->OpenMidiFile(file);
        EXPECT_TRUE(Find<QWidget>("Btn_Details")->isVisible());
        Trigger("MMP_PlayStop");
        expectKeys("playing, with what loading changed");
        Trigger("MMP_PlayStop");
        Trigger("MMF_SplitFormat0");
        Trigger("MMV_NextPage");
        EXPECT_TRUE(Find<QWidget>("Btn_Reload")->isVisible());
        expectKeys("routes, with the offer to load again");
        Trigger("MMV_NextPage");
        for (const char* action : {"MMS_MidiPorts", "MMI_ChooseInstrument", "MMI_Voices",
                                   "MMS_Instruments", "MMF_WhatChanged", "MMF_About"}) {
            Trigger(action);
            auto* dialog = form_->findChild<QDialog*>();
            ASSERT_NE(dialog, nullptr) << action;
            ExpectKeysOfTheirOwn(KeyedTexts(*dialog), QLatin1String(action));
            delete dialog;
        }
    }
}

/// Ends message boxes that a command opens, as Escape does.
class BoxCloser {
public:
    BoxCloser() {
        QObject::connect(&timer_, &QTimer::timeout, [] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr) {
                dialog->reject();
            }
        });
        timer_.start(0);
    }

private:
    QTimer timer_;
};

TEST_F(MenuTest, CommandsDoNoHarmWithoutASong) {
    const BoxCloser closer;
    QStringList names; // some commands make the menu anew
    for (const QAction* action : form_->menuBar()->findChildren<QAction*>()) {
        if (action->objectName().startsWith(QStringLiteral("MM")) && action->isEnabled()) {
            names << action->objectName();
        }
    }
    EXPECT_GT(names.size(), 20);
    for (const QString& name : names) {
        form_->ClearMidiMemory();
        form_->menuBar()->findChild<QAction*>(name)->trigger();
        QTest::qWait(1);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << name.toStdString();
        EXPECT_EQ(form_->Session().HasSong(), name == QStringLiteral("MMF_NewMidifile") ||
                                                  name == QStringLiteral("MMF_OpenDemoSong"))
            << name.toStdString();
    }
}

} // namespace
} // namespace tracksmith::forms
