#include "mixer/mixer.h"

#include "base/forms/theme.h"
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
#include <QTest>
#include <QWheelEvent>

#include "app/forms/form_fixture.h"
#include "mixer/forms/control_slider.h"
#include "mixer/forms/level_meter.h"
#include "mixer/forms/strip_colours.h"
#include "mixer/forms/texts.h"

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
    EXPECT_EQ(Slider("TB_Volume02")->toolTip(), QStringLiteral("Volume\nvolume changes 2 times"));
    EXPECT_EQ(Slider("TB_Volume04")->toolTip(), QStringLiteral("Volume"));
    EXPECT_EQ(Slider("TB_Panorama04")->toolTip(), QStringLiteral("Pan\nNot in this song"));
    EXPECT_TRUE(Slider("TB_Panorama04")
                    ->accessibleName()
                    .startsWith(QStringLiteral("Pan, channel 5, Acoustic Bass")));
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

struct Stroke {
    Qt::Key key;
    int value;
    Qt::KeyboardModifiers modifiers = {};
};

TEST_F(MixerFormTest, EveryKeyOfASliderHasItsStep) {
    ControlSlider* fader = Slider("TB_Volume02");
    for (const Stroke& stroke :
         {Stroke{Qt::Key_Up, 84}, Stroke{Qt::Key_Up, 81, Qt::ShiftModifier},
          Stroke{Qt::Key_Down, 76}, Stroke{Qt::Key_PageUp, 96}, Stroke{Qt::Key_PageDown, 64},
          Stroke{Qt::Key_Home, 0}, Stroke{Qt::Key_End, 127}, Stroke{Qt::Key_Delete, 90},
          Stroke{Qt::Key_Backspace, 90}}) {
        fader->setValue(80);
        QTest::keyClick(fader, stroke.key, stroke.modifiers);
        EXPECT_EQ(fader->value(), stroke.value) << stroke.key;
    }
    ControlSlider* transpose = Slider("Transpose02");
    for (const Stroke& stroke :
         {Stroke{Qt::Key_Up, 4}, Stroke{Qt::Key_PageUp, 15}, Stroke{Qt::Key_PageDown, -9},
          Stroke{Qt::Key_End, 24}, Stroke{Qt::Key_Home, -24}, Stroke{Qt::Key_Backspace, 0}}) {
        transpose->setValue(3);
        QTest::keyClick(transpose, stroke.key, stroke.modifiers);
        EXPECT_EQ(transpose->value(), stroke.value) << stroke.key;
    }
}

TEST_F(MixerFormTest, WhatIsTypedReplacesTheValue) {
    const auto type = [this](const char* slider, const char* text) {
        ControlSlider* control = Slider(slider);
        control->setFocus();
        QTest::keyClick(control, Qt::Key_F2);
        auto* edit = Find<QLineEdit>((std::string(slider) + "_Edit").c_str());
        QTest::keyClicks(edit, QLatin1String(text));
        QTest::keyClick(edit, Qt::Key_Return);
        return control->value();
    };
    EXPECT_EQ(type("TB_Volume02", "300"), 127);
    EXPECT_EQ(type("TB_Volume02", "loud"), 127);
    EXPECT_EQ(type("TB_Panorama02", "l20"), 44);
    EXPECT_EQ(type("TB_Panorama02", "r20"), 84);
    EXPECT_EQ(type("TB_Panorama02", "c"), 64);
    EXPECT_EQ(type("Transpose02", "-5"), -5);
    EXPECT_EQ(type("Transpose02", "x"), -5);
}

// Pressed beside its handle a control jumps; a handle is dragged from where it stands.
TEST_F(MixerFormTest, DraggingGoesOnFromWhereTheHandleStands) {
    const auto move = [](QWidget* widget, QPoint to, Qt::KeyboardModifiers modifiers = {}) {
        QMouseEvent event(QEvent::MouseMove, to, widget->mapToGlobal(to), Qt::NoButton,
                          Qt::LeftButton, modifiers);
        QApplication::sendEvent(widget, &event);
    };
    for (const char* name : {"TB_Volume02", "TB_Panorama02"}) {
        ControlSlider* slider = Slider(name);
        const bool upright = slider->orientation() == Qt::Vertical;
        const QPoint low = upright ? QPoint(slider->width() / 2, slider->height() * 3 / 5)
                                   : QPoint(slider->width() / 4, slider->height() - 2);
        const QPoint high = upright ? QPoint(slider->width() / 2, slider->height() / 5)
                                    : QPoint(slider->width() * 3 / 4, slider->height() - 2);
        QTest::mouseClick(slider, Qt::LeftButton, {}, high);
        const int above = slider->value();
        QTest::mouseClick(slider, Qt::RightButton, {}, low);
        EXPECT_EQ(slider->value(), above);
        QTest::mouseClick(slider, Qt::LeftButton, {}, low);
        const int below = slider->value();
        EXPECT_GT(above, below + 30) << name;
        QTest::mousePress(slider, Qt::LeftButton, {}, low);
        EXPECT_EQ(slider->value(), below);
        move(slider, high);
        EXPECT_NEAR(slider->value(), above, 2) << name;
        // Neither the music nor what was dragged too far moves the handle away from the hand.
        form_->Session().Controls().MoveToTick(1000);
        EXPECT_NEAR(slider->value(), above, 2) << name;
        move(slider, high + (high - low) * 5);
        EXPECT_EQ(slider->value(), 127);
        move(slider, low + (high - low) * 5);
        EXPECT_NEAR(slider->value(), 127 - (above - below), 2) << name;
        QTest::mouseRelease(slider, Qt::LeftButton, {}, low);
        move(slider, high);
        EXPECT_LT(slider->value(), 110) << name;
        form_->Session().Controls().MoveToStart();
        QTest::mouseClick(slider, Qt::LeftButton, {}, low);
        QTest::mousePress(slider, Qt::LeftButton, Qt::ShiftModifier, low);
        move(slider, high, Qt::ShiftModifier);
        EXPECT_NEAR(slider->value(), below + (above - below) / 4, 2) << name;
        QTest::mouseRelease(slider, Qt::LeftButton, Qt::ShiftModifier, high);
    }
}

TEST_F(MixerFormTest, TheWheelCountsWholeNotches) {
    ControlSlider* transpose = Slider("Transpose02");
    transpose->setFocus();
    const auto turn = [transpose](QPoint angle) {
        const QPointF at = transpose->rect().center();
        QWheelEvent event(at, transpose->mapToGlobal(at), {}, angle, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(transpose, &event);
        return transpose->value();
    };
    EXPECT_EQ(turn({0, 60}), 0); // as a touchpad does
    EXPECT_EQ(turn({0, 60}), 1);
    EXPECT_EQ(turn({-240, 0}), -1); // sideways, as some systems do with Shift
    turn({0, 100});
    Slider("TB_Volume02")->setFocus();
    transpose->setFocus();
    EXPECT_EQ(turn({0, 100}), -1); // what was left is forgotten
}

TEST_F(MixerFormTest, ADoubleClickBringsBackThePitchOfTheFile) {
    for (const char* name : {"Transpose02", "TransposeSong"}) {
        ControlSlider* box = Slider(name);
        box->setValue(5);
        QTest::mouseDClick(box, Qt::LeftButton);
        EXPECT_EQ(box->value(), 0) << name;
    }
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

TEST_F(MixerFormTest, TheKeyboardKeepsItsPlaceInTheStrips) {
    EXPECT_EQ(Find<QWidget>("Btn_Mute02")->focusPolicy(), Qt::StrongFocus); // the first in use
    EXPECT_EQ(Find<QWidget>("Btn_Mute04")->focusPolicy(), Qt::ClickFocus);
    Find<QWidget>("Btn_Solo02")->setFocus();
    Press(Qt::Key_Right);
    EXPECT_EQ(Focus(), "Btn_Solo04");
    EXPECT_EQ(Find<QWidget>("Btn_Mute02")->focusPolicy(), Qt::ClickFocus); // Tab passes by
    EXPECT_EQ(Find<QWidget>("Btn_Mute04")->focusPolicy(), Qt::StrongFocus);
    Press(Qt::Key_Left);
    EXPECT_EQ(Focus(), "Btn_Solo02");
    Find<QWidget>("Transpose04")->setFocus();
    Press(Qt::Key_Right); // drums are not transposed
    EXPECT_EQ(Focus(), "TB_Volume09");
    QTest::mouseClick(Find<QWidget>("Strip_Channel04"), Qt::LeftButton, {}, QPoint(1, 1));
    EXPECT_EQ(Focus(), "TB_Volume04");
    QTest::mouseClick(Find<QWidget>("Strip_Channel00"), Qt::LeftButton, {}, QPoint(1, 1));
    EXPECT_EQ(Focus(), "TB_Volume04");
    Press(Qt::Key_M, Qt::ShiftModifier);
    EXPECT_FALSE(Find<QAbstractButton>("Btn_Mute04")->isChecked());
}

TEST_F(MixerFormTest, StripsWithoutRoomScrollToTheKeyboard) {
    form_->resize(1000, 650);
    Trigger("MMV_TextSize250");
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
    const auto shown = [this](const char* name) {
        const auto* strip = Find<QWidget>(name);
        return strip->visibleRegion().boundingRect().width() == strip->width();
    };
    EXPECT_FALSE(shown("Strip_Channel09"));
    EXPECT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    form_->setFocus();
    QTest::keyClick(form_.get(), Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(Focus(), "TB_Volume09");
    EXPECT_TRUE(shown("Strip_Channel09"));
    EXPECT_FALSE(shown("Strip_Channel02"));
    Press(Qt::Key_Left);
    Press(Qt::Key_Left);
    EXPECT_TRUE(shown("Strip_Channel02"));
    Trigger("MMV_TextSize100");
    QApplication::processEvents();
}

TEST_F(MixerFormTest, MenuOfAControlTypesResetsAndSpreadsItsValue) {
    ControlSlider* fader = Slider("TB_Volume02");
    const auto choose = [&](const char* entry) {
        // The number of changes, below the fader at the left, has the menu too.
        QTest::mouseClick(fader, Qt::LeftButton, {}, QPoint(2, fader->height() - 3));
        ASSERT_NE(MenuEntry(entry), nullptr) << entry;
        EXPECT_TRUE(MenuEntry(entry)->isEnabled()) << entry;
        MenuEntry(entry)->trigger();
        delete form_->findChild<QMenu*>(QStringLiteral("StripMenu"));
    };
    fader->setValue(45);
    choose("Strip_SameForAll");
    EXPECT_EQ(Value("TB_Volume04"), 45);
    EXPECT_EQ(Value("TB_Volume09"), 45);
    choose("Strip_Reset");
    EXPECT_EQ(fader->value(), 90);
    EXPECT_EQ(Value("TB_Volume04"), 45);
    choose("Strip_TypeValue");
    EXPECT_TRUE(Find<QLineEdit>("TB_Volume02_Edit")->isVisible());
    emit Slider("TB_Volume04")->MenuWanted({}); // which the song sets once
    EXPECT_EQ(MenuEntry("Strip_ScaleAll"), nullptr);
    delete form_->findChild<QMenu*>(QStringLiteral("StripMenu"));
    emit Slider("TB_Panorama04")->MenuWanted({}); // which the song never sets
    EXPECT_EQ(MenuEntry("Strip_ScaleAll"), nullptr);
    EXPECT_TRUE(MenuEntry("Strip_InsertAtStart")->isEnabled());
    EXPECT_FALSE(MenuEntry("Strip_Reset")->isEnabled());
}

TEST_F(MixerFormTest, MetersMoveWhileItPlays) {
    Trigger("MMP_PlayStop");
    for (const char* name : {"Meter02", "MeterMaster"}) {
        const auto* meter = Find<LevelMeter>(name);
        EXPECT_TRUE(QTest::qWaitFor([&] { return meter->Level() > 0; })) << name;
    }
    EXPECT_EQ(Find<LevelMeter>("Meter00")->Level(), 0U);
    Trigger("MMP_PlayStop");
    EXPECT_EQ(Find<LevelMeter>("Meter02")->Level(), 0U);
    EXPECT_EQ(Find<LevelMeter>("MeterMaster")->Level(), 0U);
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
    delete form_->findChild<QMenu*>(QStringLiteral("StripMenu"));
    QTest::mouseClick(pan, Qt::LeftButton, {}, QPoint(pan->width() - 1, pan->height() - 2));
    EXPECT_EQ(MenuEntry("Strip_InsertAtStart"), nullptr); // offered once
    emit pan->MenuWanted({});
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
    Find<QAbstractButton>("Btn_MasterLinked")->click();
    Slider("TB_MasterVol")->setValue(20);
    EXPECT_EQ(Value("TB_Volume02"), 90);
    QTest::keyClick(Slider("TB_MasterVol"), Qt::Key_Backspace);
    EXPECT_EQ(Value("TB_MasterVol"), 100);
    auto* unmute = Find<QAbstractButton>("Btn_Unmute");
    EXPECT_FALSE(unmute->isEnabled());
    Find<QAbstractButton>("Btn_Mute02")->click();
    EXPECT_TRUE(unmute->isEnabled());
    unmute->click();
    EXPECT_FALSE(Find<QAbstractButton>("Btn_Mute02")->isChecked());
    EXPECT_FALSE(unmute->isEnabled());
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

TEST(MixerTextsTest, ValuesAreUnderstoodAsTheyAreShown) {
    using mixer::Control;
    for (const Language language : {Language::German, Language::English}) {
        for (const Control control : mixer::kAllControls) {
            for (int value = 0; value <= 127; ++value) {
                const QString shown = mixer_texts::ValueText(control, value, language);
                EXPECT_EQ(mixer_texts::TypedValue(control, shown, language), value)
                    << shown.toStdString();
            }
        }
    }
    const auto shown = [](Control control, int value) {
        return mixer_texts::ValueText(control, value, Language::English).toStdString();
    };
    EXPECT_EQ(shown(Control::Volume, 70), "70");
    EXPECT_EQ(shown(Control::Pan, 63), "L1");
    EXPECT_EQ(shown(Control::Pan, 64), "C");
    EXPECT_EQ(shown(Control::Pan, 127), "R63");
    EXPECT_EQ(shown(Control::Brightness, 74), "+10");
    EXPECT_EQ(shown(Control::Brightness, 64), "0");
    EXPECT_EQ(shown(Control::Brightness, 60), "-4");
}

TEST(LevelMeterTest, ThePeakStaysForAWhile) {
    LevelMeter meter(nullptr);
    meter.resize(8, 127); // a pixel for each level
    const auto at = [&meter](int level) {
        return meter.grab().toImage().pixelColor(4, meter.height() - level);
    };
    const QColor empty = at(60);
    meter.ShowLevel(100);
    EXPECT_NE(at(50), empty);
    EXPECT_EQ(at(102), empty);
    const auto frames = [&](int count) {
        for (int frame = 0; frame < count; ++frame) {
            meter.ShowLevel(20);
        }
    };
    frames(20);
    EXPECT_NE(at(19), empty);
    EXPECT_EQ(at(50), empty);
    EXPECT_NE(at(100), empty);
    frames(20);
    EXPECT_EQ(at(100), empty);
    meter.ShowLevel(300);
    EXPECT_EQ(meter.Level(), 127U);
    EXPECT_NEAR(at(1).hue(), Accent(meter.palette()).hue(), 4); // from soft to loud
    EXPECT_NEAR(at(124).hue(), SoloColour(meter.palette()).hue(), 4);
    meter.Clear();
    EXPECT_EQ(at(19), empty);
    EXPECT_EQ(at(127), empty);
}

} // namespace
} // namespace tracksmith::forms
