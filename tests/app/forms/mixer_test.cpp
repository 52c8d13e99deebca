#include "mixer/mixer.h"

#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
#include <QTest>
#include <QWheelEvent>

#include "app/forms/form_fixture.h"
#include "mixer/forms/control_slider.h"

namespace tracksmith::forms {
namespace {

/// Channels 3, 5 and 10: volume on all, with two later changes on the first, pan only there.
test::Bytes Ensemble() {
    test::TrackBuilder track;
    track.Short(0, 0xB2, 7, 90).Short(0, 0xB4, 7, 50).Short(0, 0xB9, 7, 70).Short(0, 0xB2, 10, 64);
    track.Program(0, 2, 24).Program(0, 4, 32);
    track.Note(0, 2, 60, 90).Note(0, 4, 40, 90).Note(0, 9, 36, 90);
    track.Short(960, 0xB2, 7, 30).Program(0, 2, 56).Short(960, 0xB2, 7, 120);
    track.NoteOff(960, 2, 60).NoteOff(0, 4, 40).NoteOff(0, 9, 36);
    return test::MidiFileBuilder()
        .Track(test::TrackBuilder().Tempo(0, 500'000).End())
        .Track(track.End())
        .Build();
}

class MixerFormTest : public FormTest {
protected:
    void SetUp() override {
        FormTest::SetUp();
        form_->OpenMidiFile(Write("song.mid", Ensemble()));
        EXPECT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    }
    ControlSlider* Slider(const char* name) const { return Find<ControlSlider>(name); }
    int Value(const char* name) const { return Slider(name)->value(); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    std::string Focus() const { return QApplication::focusWidget()->objectName().toStdString(); }
    static void Turn(QWidget* widget, int notches, Qt::KeyboardModifiers modifiers = {}) {
        const QPointF at = widget->rect().center();
        QWheelEvent turn(at, widget->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton,
                         modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(widget, &turn);
    }
    int InSong(std::size_t place) const {
        int value = -1;
        std::size_t found = 0;
        for (song::ConstEventLink event = form_->Session().Song().tracks[1].first; event;
             event = event->next) {
            if (event->status == 0xB2 && event->data1 == 7 && found++ == place) {
                value = event->data2;
            }
        }
        return value;
    }
    QAction* MenuEntry(const char* name) const {
        return form_->findChild<QAction*>(QLatin1String(name));
    }
};

TEST_F(MixerFormTest, ShowsTheSongAndFollowsThePlace) {
    EXPECT_EQ(Value("TB_Volume02"), 90);
    EXPECT_FALSE(Slider("TB_Volume02")->Hollow());
    EXPECT_TRUE(Slider("TB_Panorama04")->Hollow());
    EXPECT_TRUE(Slider("TB_Volume02")->isEnabled());
    EXPECT_FALSE(Slider("TB_Volume00")->isEnabled());
    EXPECT_TRUE(Slider("TB_Volume02")->toolTip().contains(QStringLiteral("changes 2 times")));
    form_->Session().Controls().MoveToTick(1000);
    EXPECT_EQ(Value("TB_Volume02"), 30);
    Slider("TB_Volume02")->setValue(31); // as a screen reader does
    EXPECT_EQ(InSong(1), 31);
    EXPECT_EQ(InSong(0), 90);
    EXPECT_TRUE(form_->Session().Modified());
}

TEST_F(MixerFormTest, NamesTheVoiceInForce) {
    const auto* voice = Find<QAbstractButton>("Btn_Voice02");
    const QString first = voice->text();
    EXPECT_TRUE(voice->toolTip().contains(QStringLiteral("\n25\n")))
        << voice->toolTip().toStdString();
    form_->Session().Controls().MoveToTick(1000);
    EXPECT_NE(voice->text(), first);
    EXPECT_TRUE(voice->toolTip().contains(QStringLiteral("\n57\n")))
        << voice->toolTip().toStdString();
    Trigger("MMF_German"); // at the same place
    EXPECT_TRUE(voice->toolTip().contains(QStringLiteral("\n57\n")));
    form_->Session().Controls().MoveToStart();
    EXPECT_EQ(voice->text(), first);
}

TEST_F(MixerFormTest, SendsWhileStoppedWhereThatIsSwitchedOn) {
    loop_->SetRecording(0, true);
    const auto sent = [this] {
        QTest::qWait(60);
        std::string text;
        for (const midi::loop::LoopMessage& message : loop_->TakeSent(0)) {
            if (message.bytes.size() == 3 && message.bytes[1] == 7) {
                text += std::to_string(message.bytes[0]) + "/" + std::to_string(message.bytes[2]);
            }
        }
        return text;
    };
    Slider("TB_Volume02")->setValue(33);
    EXPECT_EQ(sent(), "");
    Trigger("MMS_LiveWhileStopped");
    EXPECT_EQ(sent(), "178/33"); // what has waited
    Slider("TB_Volume02")->setValue(44);
    EXPECT_EQ(sent(), "178/44");
    OpenWindow();
    EXPECT_TRUE(Find<QAction>("MMS_LiveWhileStopped")->isChecked());
}

TEST_F(MixerFormTest, MouseWheelAndKeysMoveASlider) {
    ControlSlider* fader = Slider("TB_Volume02");
    Turn(fader, 1); // without the focus nothing moves
    EXPECT_EQ(fader->value(), 90);
    fader->setFocus();
    Turn(fader, 1);
    EXPECT_EQ(fader->value(), 94);
    Turn(fader, -1, Qt::ShiftModifier);
    EXPECT_EQ(fader->value(), 93);
    Press(Qt::Key_Down);
    Press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(fader->value(), 90);
    Press(Qt::Key_7);
    auto* edit = form_->findChild<QLineEdit*>(QStringLiteral("TB_Volume02_Edit"));
    ASSERT_NE(edit, nullptr);
    QTest::keyClicks(edit, QStringLiteral("7"));
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_TRUE(edit->isHidden());
    EXPECT_EQ(fader->value(), 77);
    EXPECT_EQ(InSong(0), 77);
    EXPECT_EQ(Focus(), "TB_Volume02");
    QTest::mouseDClick(fader, Qt::LeftButton, {}, QPoint(fader->width() / 2, fader->height() / 3));
    EXPECT_EQ(InSong(0), 90);
    ControlSlider* pan = Slider("TB_Panorama02");
    QTest::mousePress(pan, Qt::LeftButton, {}, QPoint(1, pan->height() - 2));
    QTest::mouseRelease(pan, Qt::LeftButton);
    EXPECT_LT(pan->value(), 5);
}

TEST_F(MixerFormTest, KeysGoBetweenTheStripsAndPressTheLamps) {
    Press(Qt::Key_5, Qt::ControlModifier);
    EXPECT_EQ(Focus(), "TB_Volume04");
    Press(Qt::Key_Right);
    EXPECT_EQ(Focus(), "TB_Volume09"); // unused channels are passed over
    Press(Qt::Key_Right);
    EXPECT_EQ(Focus(), "TB_Volume09");
    Press(Qt::Key_Left);
    Press(Qt::Key_M);
    EXPECT_TRUE(Find<QAbstractButton>("Btn_Mute04")->isChecked());
    Press(Qt::Key_S);
    EXPECT_TRUE(Find<QAbstractButton>("Btn_Solo04")->isChecked());
    const auto& player = form_->Session().Controls().Player();
    EXPECT_TRUE(player.ChannelMuted(4));
    EXPECT_TRUE(player.ChannelSolo(4));
    EXPECT_EQ(LabelText("Lbl_Soloed"), "1 soloed");
    QTest::mouseClick(Find<QWidget>("Btn_Mute02"), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_FALSE(player.ChannelMuted(4));
    Find<QAbstractButton>("Btn_SoloOff")->click();
    EXPECT_FALSE(player.ChannelSolo(4));
    Press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(Focus().substr(Focus().size() - 2), "09");
    Press(Qt::Key_Return);
    EXPECT_NE(form_->findChild<QDialog*>(QStringLiteral("PickerForm")), nullptr);
}

TEST_F(MixerFormTest, MenuInsertsScalesAndResets) {
    ControlSlider* fader = Slider("TB_Volume02");
    fader->setValue(45);
    emit fader->MenuWanted({});
    ASSERT_NE(MenuEntry("Strip_ScaleAll"), nullptr);
    MenuEntry("Strip_ScaleAll")->trigger();
    EXPECT_EQ(InSong(1), 15);
    EXPECT_EQ(InSong(2), 60);
    MenuEntry("Strip_ResetChannel")->trigger();
    EXPECT_EQ(InSong(2), 120);
    EXPECT_FALSE(MenuEntry("Strip_InsertAtStart")->isEnabled());
    delete form_->findChild<QMenu*>(QStringLiteral("StripMenu"));

    ControlSlider* pan = Slider("TB_Panorama04"); // moving it offers to insert it
    QTest::mousePress(pan, Qt::LeftButton, {}, QPoint(pan->width() - 2, pan->height() - 2));
    QTest::mouseRelease(pan, Qt::LeftButton);
    ASSERT_NE(MenuEntry("Strip_InsertAtStart"), nullptr);
    MenuEntry("Strip_InsertAtStart")->trigger();
    EXPECT_FALSE(pan->Hollow());
    EXPECT_GT(pan->value(), 120);
    Trigger("MME_TakeBack");
    EXPECT_TRUE(pan->Hollow());
}

TEST_F(MixerFormTest, MasterTransposingAndPages) {
    Find<QAbstractButton>("Btn_MasterLinked")->click();
    Slider("TB_MasterVol")->setValue(50);
    EXPECT_EQ(Value("TB_Volume02"), 45);
    EXPECT_EQ(Value("TB_Volume09"), 35);
    Find<QAbstractButton>("Btn_ResetAll")->click();
    EXPECT_EQ(Value("TB_Volume02"), 90);
    EXPECT_EQ(Value("TB_MasterVol"), 100);
    Trigger("MMP_TransposeUp");
    Slider("Transpose04")->setValue(-3);
    EXPECT_EQ(Value("TransposeSong"), 1);
    EXPECT_FALSE(Slider("Transpose09")->isEnabled()); // drums
    {
        const BoxAnswer overwrite("Btn_Yes");
        Trigger("MMF_SaveMidifile");
    }
    EXPECT_EQ(LabelText("Lbl_Notice").rfind("Saved with all notes moved by +1", 0), 0U);
    EXPECT_EQ(Value("TransposeSong"), 0);
    EXPECT_EQ(Value("Transpose04"), 0);
    EXPECT_FALSE(Slider("TB_Controller74_02")->isVisible());
    Trigger("MMV_NextPage");
    EXPECT_TRUE(Slider("TB_Controller74_02")->isVisible());
    EXPECT_FALSE(Slider("TB_Reverb02")->isVisible());
    EXPECT_TRUE(Slider("TB_Volume02")->isVisible());
    Find<QTabBar>("Pages")->setCurrentIndex(0);
    EXPECT_TRUE(Slider("TB_Reverb02")->isVisible());
}

TEST_F(MixerFormTest, SixteenStripsFitASmallScreen) {
    form_->resize(1024, 700);
    QApplication::processEvents();
    for (const char* name : {"Strip_Channel00", "Strip_Channel15", "MasterStrip", "Btn_Mute15"}) {
        const auto* part = Find<QWidget>(name);
        EXPECT_TRUE(form_->rect().contains(QRect(part->mapTo(form_.get(), QPoint()), part->size())))
            << name;
        EXPECT_FALSE(part->visibleRegion().isEmpty()) << name;
    }
}

} // namespace
} // namespace tracksmith::forms
