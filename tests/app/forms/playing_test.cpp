#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QSpinBox>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

#include "app/forms/form_fixture.h"

namespace tracksmith::forms {
namespace {

class PlayingTest : public FormTest {
protected:
    void SetUp() override {
        FormTest::SetUp();
        form_->OpenMidiFile(Write("waltz.mid", Waltz()));
        EXPECT_TRUE(QTest::qWaitForWindowActive(form_.get()));
        loop_->SetRecording(0, true);
    }

    session::Transport& Controls() const { return form_->Session().Controls(); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        ASSERT_NE(form_->focusWidget(), nullptr); // loading gives the keyboard to a widget
        QTest::keyClick(form_->focusWidget(), key, modifiers);
    }
    using Message = std::vector<std::uint8_t>;
    /// What the first loop has got since the test began or forgot it.
    const std::vector<Message>& Received() {
        for (const midi::loop::LoopMessage& message : loop_->TakeSent(0)) {
            received_.push_back(message.bytes);
        }
        return received_;
    }
    void Forget() {
        Received();
        received_.clear();
    }
    /// True once the first loop has got a note on for `key`, on any channel.
    bool Heard(std::uint8_t key) {
        return QTest::qWaitFor([&] {
            return std::ranges::any_of(Received(), [key](const Message& bytes) {
                return bytes.size() == 3 && (bytes[0] & 0xF0) == 0x90 && bytes[1] == key;
            });
        });
    }
    bool Silenced(int channel) {
        const Message notesOff{static_cast<std::uint8_t>(0xB0 | channel), 123, 0};
        return QTest::qWaitFor([&] { return std::ranges::count(Received(), notesOff) > 0; });
    }
    bool ReceivedOn(std::uint8_t status) {
        return std::ranges::any_of(Received(),
                                   [status](const Message& bytes) { return bytes[0] == status; });
    }

    std::vector<Message> received_;
};

TEST_F(PlayingTest, SpacePlaysAndStops) {
    Press(Qt::Key_Space);
    EXPECT_TRUE(Controls().Playing());
    EXPECT_TRUE(Heard(60));
    EXPECT_EQ(Find<QAction>("MMP_PlayStop")->text().remove(u'&').toStdString(), "Stop");
    Press(Qt::Key_Space);
    EXPECT_FALSE(Controls().Playing());
    EXPECT_TRUE(Silenced(2));
    EXPECT_EQ(Find<QAction>("MMP_PlayStop")->text().remove(u'&').toStdString(), "Play");
}

TEST_F(PlayingTest, PanicSilencesEveryChannelAlsoWhileStopped) {
    Controls().OpenOutput();
    Press(Qt::Key_P, Qt::ControlModifier | Qt::AltModifier);
    for (int channel = 0; channel < 16; ++channel) {
        EXPECT_TRUE(Silenced(channel)) << channel;
    }
}

TEST_F(PlayingTest, AtTheEndItBeginsAgain) {
    Press(Qt::Key_End);
    Press(Qt::Key_Space);
    EXPECT_TRUE(Heard(60));
}

TEST_F(PlayingTest, AnotherSongEndsTheOneThatPlays) {
    Press(Qt::Key_Space);
    EXPECT_TRUE(Heard(60));
    Press(Qt::Key_Plus);
    {
        BoxAnswer stay("Btn_Cancel");
        Press(Qt::Key_N, Qt::ControlModifier);
        EXPECT_NE(stay.text, "");
    }
    EXPECT_TRUE(Controls().Playing()); // nothing has happened
    Forget();
    BoxAnswer leave("Btn_Discard");
    form_->OpenMidiFile(Write("other.mid", Waltz()));
    EXPECT_FALSE(Controls().Playing());
    EXPECT_TRUE(Silenced(2));
    EXPECT_EQ(Controls().Tick(), 0);
    EXPECT_EQ(Find<QSpinBox>("E_TempoPercent")->value(), 100);
}

TEST_F(PlayingTest, DisplayRunsWhilePlaying) {
    const std::string start = LabelText("Lbl_Position");
    Trigger("MMP_PlayStop");
    EXPECT_TRUE(QTest::qWaitFor([&] { return LabelText("Lbl_Position") != start; }));
    Trigger("MMP_PlayStop");
    const std::string stopped = LabelText("Lbl_Position");
    EXPECT_EQ(stopped, form_->SongPositionToMTC(Controls().Tick()));
}

TEST_F(PlayingTest, KeysMoveThroughTheSong) {
    struct Step {
        Qt::Key key;
        std::int32_t tick;
    };
    for (const Step& step :
         {Step{Qt::Key_PageDown, 1440}, Step{Qt::Key_PageDown, 2880}, Step{Qt::Key_PageUp, 1440},
          Step{Qt::Key_Home, 0}, Step{Qt::Key_PageUp, 0}}) {
        Press(step.key);
        EXPECT_EQ(Controls().Tick(), step.tick) << step.key;
        EXPECT_EQ(LabelText("Lbl_Position"), form_->SongPositionToMTC(step.tick));
    }
    Press(Qt::Key_End);
    EXPECT_EQ(Controls().Ms(), Controls().Player().SongEndTime());
    Controls().MoveToTick(1920); // inside a measure: to its start first
    Press(Qt::Key_PageUp);
    EXPECT_EQ(Controls().Tick(), 1440);
}

TEST_F(PlayingTest, BracketsSetTheLoop) {
    Press(Qt::Key_PageDown);
    Press(Qt::Key_BracketRight);
    ASSERT_TRUE(Controls().Loop());
    EXPECT_EQ(Controls().Loop()->startTick, 0);
    EXPECT_EQ(Controls().Loop()->endTick, 1440);
    EXPECT_TRUE(Find<QAction>("MMP_Looping")->isChecked());
    Press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_FALSE(Controls().Loop()->on);
    EXPECT_FALSE(Find<QAction>("MMP_Looping")->isChecked());
    Press(Qt::Key_BracketLeft); // behind the end: the loop goes to the song's end
    EXPECT_EQ(Controls().Loop()->startTick, 1440);
    EXPECT_EQ(Controls().Loop()->endTick, form_->Session().Work().song.songLength);
}

TEST_F(PlayingTest, TempoIsChangedAndBroughtBack) {
    auto* bpm = Find<QSpinBox>("E_Tempo");
    EXPECT_EQ(bpm->value(), 120);
    Press(Qt::Key_Plus);
    EXPECT_EQ(bpm->value(), 121);
    EXPECT_TRUE(form_->Session().Modified());
    bpm->setValue(60);
    EXPECT_EQ(Find<QSpinBox>("E_TempoPercent")->value(), 50);
    // Three beats at 60, then, 60 less than 100, three and a quarter at 40.
    EXPECT_EQ(form_->Session().Work().song.lengthMs, 3 * 1'000 + 13 * 1'500 / 4);
    Press(Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_EQ(bpm->value(), 120);
    EXPECT_EQ(Find<QSpinBox>("E_TempoPercent")->value(), 100);
    Find<QSpinBox>("E_TempoPercent")->setValue(75);
    EXPECT_EQ(bpm->value(), 90);
}

TEST_F(PlayingTest, ControlsKeepTheKeysThatTheyUse) {
    auto* loop = Find<QToolButton>("Btn_Loop");
    loop->setFocus();
    QTest::keyClick(loop, Qt::Key_Space);
    EXPECT_FALSE(Controls().Playing());
    EXPECT_TRUE(Controls().Loop() && Controls().Loop()->on);
    Find<QTabBar>("Pages")->setCurrentIndex(3);
    auto* table = Find<QTableView>("Table_Tracks");
    table->setFocus();
    QTest::keyClick(table, Qt::Key_End);
    EXPECT_EQ(Controls().Tick(), 0);
    auto* bpm = Find<QSpinBox>("E_Tempo");
    bpm->setFocus();
    bpm->selectAll();
    QTest::keyClicks(bpm, QStringLiteral("9"));
    QTest::keyClick(bpm, Qt::Key_Minus);
    EXPECT_EQ(Controls().Bpm(), 120); // still being typed, and no shortcut either
}

TEST_F(PlayingTest, OutputIsChosenAndRemembered) {
    auto* choice = Find<QComboBox>("CB_Output");
    ASSERT_EQ(choice->count(), 2);
    choice->setCurrentIndex(1);
    emit choice->activated(1);
    EXPECT_EQ(Controls().Outputs().Output(), "Loop 2");
    OpenWindow();
    EXPECT_EQ(form_->Session().Controls().Outputs().Output(), "Loop 2");
    store_->WriteStrToUserRegistry("MidiOutput", "Gone Piano");
    OpenWindow();
    form_->Session().Controls().OpenOutput();
    EXPECT_EQ(form_->Session().Controls().Outputs().Output(), "Loop 1");
}

TEST_F(PlayingTest, ChannelsAreRoutedOneByOne) {
    Trigger("MMV_NextPage");
    Trigger("MMV_NextPage");
    EXPECT_TRUE(Find<QSpinBox>("E_RouteTarget02")->isVisible());
    Find<QSpinBox>("E_RouteTarget02")->setValue(9);
    Trigger("MMP_PlayStop");
    EXPECT_TRUE(Heard(60));
    EXPECT_TRUE(ReceivedOn(0x98));
    EXPECT_FALSE(ReceivedOn(0x92));
    Trigger("MMP_PlayStop");
    OpenWindow(); // the route is remembered
    form_->OpenMidiFile(Path("waltz.mid"));
    Forget();
    Trigger("MMP_PlayStop");
    EXPECT_TRUE(Heard(60));
    EXPECT_TRUE(ReceivedOn(0x98));
    Trigger("MMP_PlayStop");
    Find<QPushButton>("Btn_ResetRoutes")->click();
    EXPECT_EQ(Find<QSpinBox>("E_RouteTarget02")->value(), 3);
}

TEST_F(PlayingTest, LostPortIsToldOnceAndComesBack) {
    Trigger("MMP_PlayStop");
    EXPECT_TRUE(Heard(60));
    loop_->Vanish(0);
    auto* choice = Find<QComboBox>("CB_Output");
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return choice->itemText(0).contains(QStringLiteral("not responding")); }));
    loop_->Return(0);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return !choice->itemText(0).contains(QStringLiteral("not responding")); }));
}

TEST_F(PlayingTest, PortInUseIsSaidInWords) {
    EXPECT_EQ(LabelText("Lbl_OutputCaption"), "Output · ready");
    loop_->FailNext(0, midi::kAllocated);
    emit Find<QComboBox>("CB_Output")->activated(0);
    EXPECT_EQ(LabelText("Lbl_OutputCaption"), "Output · not opened");
    EXPECT_EQ(Find<QComboBox>("CB_Output")->itemText(0).toStdString(), "○ Loop 1 – not opened");
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return LabelText("Lbl_OutputCaption") == "Output · ready"; }));
}

TEST_F(PlayingTest, InputIsPassedOnWhenWanted) {
    Trigger("MMS_MidiPorts");
    auto* dialog = Find<QDialog>("Dlg_MidiPorts");
    auto* input = dialog->findChild<QComboBox*>(QStringLiteral("CB_Input"));
    ASSERT_EQ(input->count(), 3); // none and two loops
    input->setCurrentIndex(2);
    emit input->activated(2);
    dialog->findChild<QCheckBox*>(QStringLiteral("CB_Thru"))->setChecked(true);
    Controls().OpenOutput();
    loop_->Deliver(1, std::vector<std::uint8_t>{0x90, 72, 100});
    EXPECT_TRUE(Heard(72));
    auto* output = dialog->findChild<QComboBox*>(QStringLiteral("CB_DialogOutput"));
    EXPECT_EQ(output->currentIndex(), 0);
    output->setCurrentIndex(1);
    emit output->activated(1);
    EXPECT_EQ(Controls().Outputs().Output(), "Loop 2");
    EXPECT_EQ(Find<QComboBox>("CB_Output")->currentIndex(), 1);
    delete dialog;
    Trigger("MMS_MidiPorts");
    EXPECT_EQ(Find<QComboBox>("CB_Input")->currentIndex(), 2);
    EXPECT_EQ(Find<QComboBox>("CB_DialogOutput")->currentIndex(), 1);
    EXPECT_TRUE(Find<QCheckBox>("CB_Thru")->isChecked());
}

} // namespace
} // namespace tracksmith::forms
