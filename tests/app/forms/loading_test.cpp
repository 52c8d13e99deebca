#include <new>

#include "base/errors.h"
#include "base/recording_message_host.h"
#include "form_fixture.h"
#include <QProgressBar>
#include <QTest>
#include <QToolButton>

#include "app/forms/slow_medium.h"
#include "instruments/instrument_settings.h"

namespace tracksmith::forms {
namespace {

class LoadingTest : public FormTest {
protected:
    void SetUp() override {
        FormTest::SetUp();
        form_->OpenMidiFile(Write("waltz.mid", Waltz()));
        form_->Loader().SetTimes({std::chrono::milliseconds(0), std::chrono::milliseconds(0),
                                  std::chrono::milliseconds(0)});
        form_->Loader().SetReader(medium_.Reader());
    }
    /// Begins to open a file that does not come yet.
    std::filesystem::path Begin(const char* name, const test::Bytes& bytes = Waltz()) const {
        const auto file = Write(name, bytes);
        form_->OpenMidiFile(file);
        EXPECT_TRUE(AwaitTicks());
        EXPECT_TRUE(form_->Loader().Busy());
        EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
        EXPECT_EQ(LabelText("Lbl_Status"), std::string("Loading “") + name + "” …");
        EXPECT_TRUE(Find<QProgressBar>("Bar_Loading")->isVisible());
        EXPECT_EQ(Find<QProgressBar>("Bar_Loading")->value(), 40);
        return file;
    }
    /// Lets the window's clocks go on for a while.
    static bool AwaitTicks() {
        int ticks = 0;
        QTimer clock;
        QObject::connect(&clock, &QTimer::timeout, [&ticks] { ++ticks; });
        clock.start(10);
        return QTest::qWaitFor([&] { return ticks >= 6; });
    }
    bool AwaitLoaded(const char* name) const {
        return QTest::qWaitFor([&] { return LabelText("Lbl_FileName") == name; }) &&
               !form_->Loader().Busy() && !Find<QWidget>("Bar_Loading")->isVisible();
    }
    /// The reason why the song cannot be changed; empty when it can.
    std::string WhyNotChanged() const {
        RecordingMessageHost host;
        try {
            form_->Session().Change(session::kPrepareSong, host,
                                    [](session::Workspace&) { return false; });
        } catch (const EMidiError& error) {
            return error.what();
        }
        return {};
    }

    SlowMedium medium_;
};

TEST_F(LoadingTest, TheWindowLivesAndTheOldSongPlaysUntilTheNewOneIsThere) {
    session::Transport& controls = form_->Session().Controls();
    controls.SetLooping(true);
    controls.Play();
    const auto file = Begin("other.mid");
    EXPECT_TRUE(controls.Playing());
    medium_.Deliver(file);
    EXPECT_TRUE(AwaitLoaded("other.mid"));
    EXPECT_FALSE(controls.Playing());
    EXPECT_EQ(form_->Session().Work().file.name, file);
    EXPECT_FALSE(form_->Session().Work().file.ChangedOnDisk());
    EXPECT_EQ(WhyNotChanged(), "");
    EXPECT_EQ(LabelText("Lbl_Status"), "Loaded: other.mid");
}

TEST_F(LoadingTest, CancelLeavesTheOldSongWhichCannotBeChangedMeanwhile) {
    EXPECT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    for (const bool byKey : {false, true}) {
        Begin("other.mid");
        EXPECT_EQ(WhyNotChanged().rfind("Another song is being loaded.", 0), 0U);
        EXPECT_TRUE(form_->Session().RefusesChange()); // as the mixer asks
        EXPECT_TRUE(Find<QWidget>("NoticeBar")->isVisible());
        EXPECT_EQ(LabelText("Lbl_Notice").rfind("Another song is being loaded.", 0), 0U);
        if (byKey) {
            QTest::keyClick(form_.get(), Qt::Key_Escape);
        } else {
            Find<QToolButton>("Btn_CancelLoading")->click();
        }
        EXPECT_TRUE(AwaitLoaded("waltz.mid"));
        EXPECT_EQ(LabelText("Lbl_Status"), "Loading cancelled: everything is as it was.");
        EXPECT_FALSE(Find<QWidget>("NoticeBar")->isVisible());
        EXPECT_FALSE(Find<QWidget>("Btn_CancelLoading")->isVisible());
        EXPECT_EQ(WhyNotChanged(), "");
    }
    medium_.Deliver({});
    EXPECT_TRUE(AwaitTicks());
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
}

TEST_F(LoadingTest, TheNewestWishWins) {
    const auto first = Begin("first.mid");
    const auto second = Begin("second.mid");
    medium_.Deliver(second);
    medium_.Deliver(first);
    EXPECT_TRUE(AwaitLoaded("second.mid"));
    EXPECT_TRUE(AwaitTicks());
    EXPECT_EQ(LabelText("Lbl_FileName"), "second.mid");
    // From the song that is being loaded on, and a new song goes before what has not come.
    Write("third.mid", Waltz());
    Trigger("MMF_NextSong");
    Trigger("MMF_NextSong");
    EXPECT_EQ(form_->Loader().Order().file, Path("waltz.mid"));
    Trigger("MMF_NewMidifile");
    EXPECT_EQ(form_->Session().Song().trackCount, 17);
    medium_.Deliver({});
    EXPECT_TRUE(AwaitTicks());
    EXPECT_EQ(form_->Session().Song().trackCount, 17);
}

TEST_F(LoadingTest, ClosingDoesNotWaitForTheMedium) {
    const SlowMedium hanging(true);
    form_->Loader().SetReader(hanging.Reader());
    Begin("other.mid");
    EXPECT_TRUE(form_->close());
    EXPECT_FALSE(form_->Loader().Busy());
    form_.reset();
}

TEST_F(LoadingTest, WhatIsRefusedLaterIsToldAsUsual) {
    struct Case {
        const char* name;
        test::Bytes bytes;
        const char* message;
        bool keepsSong;
    };
    for (const Case& each :
         {Case{"short.mid", test::Bytes(23), "Error in midifile: file too short!", true},
          Case{"noise.mid", test::Bytes(100), "Error in midi file header - 1!", false}}) {
        const auto file = Begin(each.name, each.bytes);
        BoxAnswer box("Btn_Ok");
        medium_.Deliver(file);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !box.text.empty(); }));
        EXPECT_EQ(box.text.rfind(each.message, 0), 0U) << box.text;
        EXPECT_NE(LabelText("Lbl_Notice").find(each.name), std::string::npos);
        EXPECT_EQ(form_->Session().HasSong(), each.keepsSong);
        EXPECT_EQ(Find<QWidget>("Overview")->isVisible(), each.keepsSong);
    }
}

TEST_F(LoadingTest, TheEndOfMemoryIsTold) {
    form_->Loader().SetReader([](const std::filesystem::path&,
                                 app::LoadWatch&) -> std::optional<std::vector<std::uint8_t>> {
        throw std::bad_alloc();
    });
    BoxAnswer box("Btn_Ok");
    form_->OpenMidiFile(Path("waltz.mid"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !box.text.empty(); }));
    EXPECT_EQ(box.text.rfind("Error allocating memory!", 0), 0U) << box.text;
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
}

TEST_F(LoadingTest, TheSongStaysUnderADialog) {
    const auto file = Begin("other.mid");
    Trigger("MMF_About");
    medium_.Deliver(file);
    EXPECT_TRUE(AwaitTicks());
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
    Find<QDialog>("Dlg_About")->reject();
    EXPECT_TRUE(AwaitLoaded("other.mid"));
}

TEST_F(LoadingTest, TheSongIsPreparedForTheInstrumentThatIsChosenMeanwhile) {
    const auto file = Begin("other.mid");
    instruments::InstrumentSettings(*store_).WriteInstrument("Yamaha Genos2");
    form_->Session().Controls().ResetRoutes();
    medium_.Deliver(file);
    EXPECT_TRUE(AwaitLoaded("other.mid"));
    EXPECT_TRUE(form_->Session().Work().preparation.prepared);
}

} // namespace
} // namespace tracksmith::forms
