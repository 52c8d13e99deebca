#include "base/forms/theme.h"
#include "dialogs.h"
#include "form_fixture.h"
#include <QDialog>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QTest>

namespace tracksmith::forms {
namespace {

class ScreenFitTest : public FormTest {
protected:
    void TearDown() override {
        FormTest::TearDown();
        ApplyTextSize(kSmallestText);
    }
    void OpenWithText(int percent) {
        store_->WriteIntToUserRegistry("TextSize", percent);
        OpenWindow();
        form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    }
    // The area that scrolls where there is one; all of the contents can be reached in it.
    static const QScrollArea* ExpectOnScreen(const QDialog& dialog) {
        QTest::qWait(20); // what has grown is looked at by the next event
        const QSize room = dialog.screen()->availableSize();
        const QSize size = dialog.frameSize();
        EXPECT_LE(size.width(), room.width()) << dialog.objectName().toStdString();
        EXPECT_LE(size.height(), room.height()) << dialog.objectName().toStdString();
        const auto* area = dialog.findChild<QScrollArea*>("ContentsArea");
        const QWidget& whole = dialog;
        const QWidget& contents = area != nullptr ? *area->widget() : whole;
        const QSize least = contents.layout()->totalMinimumSize();
        EXPECT_GE(contents.width(), least.width()) << dialog.objectName().toStdString();
        EXPECT_GE(contents.height(), least.height()) << dialog.objectName().toStdString();
        return area;
    }
};

TEST_F(ScreenFitTest, EveryDialogStaysOnTheScreenAtTheLargestText) {
    OpenWithText(kLargestText);
    for (const char* language : {"MMF_German", "MMF_English"}) {
        Trigger(language);
        for (const auto& [action, name] : kDialogs) {
            Trigger(action);
            auto* dialog = Find<QDialog>(name);
            ExpectOnScreen(*dialog);
            delete dialog;
        }
        Trigger("MMI_PickVoice");
        auto* picker = Find<QDialog>("PickerForm");
        EXPECT_NE(ExpectOnScreen(*picker), nullptr);
        EXPECT_EQ(picker->focusWidget(), picker->findChild<QWidget*>("E_SelectSoundName"));
        QTest::keyClick(picker, Qt::Key_Escape);
        EXPECT_FALSE(picker->isVisible());
    }
}

// The three questions stand side by side, or below each other where large letters leave no room.
TEST_F(ScreenFitTest, TheStartPageMakesTheWindowNoLarger) {
    const auto below = [this] {
        return Find<QWidget>("List_StartOutputs")->mapTo(form_.get(), QPoint()).y() >
               Find<QWidget>("List_StartInstruments")->mapTo(form_.get(), QPoint()).y() + 100;
    };
    for (const int percent : {kSmallestText, 200}) {
        OpenWithText(percent);
        form_->resize(1280, 720);
        Trigger("MMF_FirstSteps");
        QTest::qWait(20);
        EXPECT_LE(form_->width(), 1280) << percent;
        EXPECT_LE(form_->height(), 720) << percent;
        EXPECT_EQ(below(), percent > kSmallestText);
        EXPECT_TRUE(Find<QWidget>("Btn_StartSkip")->isVisible());
    }
    form_->resize(2600, 1400);
    QTest::qWait(20);
    EXPECT_FALSE(below());
}

TEST_F(ScreenFitTest, WhatFitsDoesNotScroll) {
    OpenWithText(kSmallestText);
    Trigger("MMF_About");
    auto* about = Find<QDialog>("Dlg_About");
    EXPECT_EQ(ExpectOnScreen(*about), nullptr);
}

} // namespace
} // namespace tracksmith::forms
