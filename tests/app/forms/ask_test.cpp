#include "form_fixture.h"
#include "support/loop_instrument.h"
#include <QComboBox>
#include <QElapsedTimer>
#include <QTest>

#include "instruments/instrument_settings.h"

namespace tracksmith::forms {
namespace {

/// The window for the ports, with an instrument at the two loops.
class AskTest : public FormTest {
protected:
    void SetUp() override {
        FormTest::SetUp();
        store_->WriteStrToUserRegistry("MidiInput", "Loop 2");
        OpenWindow();
        Trigger("MMS_MidiPorts");
        dialog_ = Find<QDialog>("Dlg_MidiPorts");
    }

    template <class Widget>
    Widget* In(const char* name) const {
        return dialog_->findChild<Widget*>(QLatin1String(name));
    }
    std::string Headline() const { return In<QLabel>("L_AskHeadline")->text().toStdString(); }
    std::string Detail() const { return In<QLabel>("L_AskDetail")->text().toStdString(); }
    bool Becomes(const std::string& headline) const {
        return QTest::qWaitFor([&] { return Headline() == headline; });
    }
    void Ask() const { In<QPushButton>("Btn_AskInstrument")->click(); }

    test::LoopInstrument instrument_{loop_};
    QDialog* dialog_ = nullptr;
};

TEST_F(AskTest, WhatAnswersCanBeChosen) {
    instrument_.SetGenos();
    EXPECT_FALSE(In<QLabel>("L_AskHeadline")->isVisible());
    In<QPushButton>("Btn_AskInstrument")->setFocus();
    QTest::keyClick(In<QPushButton>("Btn_AskInstrument"), Qt::Key_Space);
    EXPECT_EQ(Headline(), "Asking Loop 1…");
    ASSERT_TRUE(Becomes("Yamaha Genos answered on Loop 1"));
    EXPECT_EQ(Detail(), "No instrument is chosen yet.");
    auto* choose = In<QPushButton>("Btn_ChooseAnswered");
    ASSERT_TRUE(choose->isVisible());
    QTest::keyClick(choose, Qt::Key_Space);
    EXPECT_EQ(instruments::InstrumentSettings(*store_).ReadInstrument(), "Yamaha Genos");
    EXPECT_FALSE(Find<QWidget>("NoticeBar")->isVisible()); // it is stored
    EXPECT_FALSE(choose->isVisible());
    Ask();
    ASSERT_TRUE(Becomes("Yamaha Genos answered on Loop 1"));
    EXPECT_FALSE(choose->isVisible());
    EXPECT_EQ(Detail(), "Songs are prepared for this instrument. There is nothing more to do.");
}

TEST_F(AskTest, SilenceSaysWhatToCheckAndKeepsTheWindowFree) {
    QElapsedTimer time;
    time.start();
    Ask();
    EXPECT_LT(time.elapsed(), 500);
    ASSERT_TRUE(Becomes("Nothing answered on Loop 1"));
    EXPECT_NE(Detail().find("to the input Loop 2"), std::string::npos) << Detail();
    const QLabel* detail = In<QLabel>("L_AskDetail");
    QTest::qWait(0); // laid out
    EXPECT_GE(detail->height(), detail->heightForWidth(detail->width())) << "cut off";
    EXPECT_EQ(instrument_.Heard(), 2);
    Ask();
    In<QComboBox>("CB_Input")->setCurrentIndex(0);
    emit In<QComboBox>("CB_Input")->activated(0);
    EXPECT_FALSE(In<QLabel>("L_AskHeadline")->isVisible());
}

TEST_F(AskTest, WindowMayGoWhileItAsks) {
    Ask();
    delete dialog_;
    Trigger("MMS_MidiPorts");
    dialog_ = Find<QDialog>("Dlg_MidiPorts");
    Ask();
    form_.reset();
}

} // namespace
} // namespace tracksmith::forms
