#include <QSignalSpy>
#include <QTest>

#include "app/forms/form_fixture.h"
#include "app/forms/lyrics/lyrics_band.h"
#include "app/forms/lyrics/lyrics_model.h"
#include "app/forms/lyrics/lyrics_page.h"
#include "app/forms/menu/menu_areas.h"

namespace tracksmith::forms {
namespace {

class LyricsFormTest : public FormTest {
protected:
    // Two lines with syllables at each beat from the first measure on, a chord at the second.
    static test::Bytes Sung() {
        return test::MidiFileBuilder()
            .Track(test::TrackBuilder()
                       .Text(0, 5, "Gr\xFC\xDF ")
                       .Text(480, 5, "dich\r")
                       .Text(480, 5, "Gott ")
                       .Text(480, 5, "auch\r")
                       .Note(960, 0, 60, 9)
                       .NoteOff(480, 0, 60)
                       .End())
            .Track(test::TrackBuilder()
                       .Meta(480, 0x7F, {0x43, 0x7B, 1, 0x36, 0x0A, 0x7F, 0x7F})
                       .Meta(480, 0x7F, {0x43, 0x7B, 1, 0x35, 0x13, 0x7F, 0x7F})
                       .End())
            .Build();
    }
    std::string Shown() const {
        return Find<LyricsBand>("LyricsBand")->accessibleDescription().toStdString();
    }
    void MoveTo(std::int32_t tick) const { form_->Session().Controls().MoveToTick(tick); }
};

TEST_F(LyricsFormTest, BandFollowsTheMusicAndIsHiddenWithoutWords) {
    for (const char* language : {"MMF_German", "MMF_English"}) {
        Trigger(language);
        form_->OpenMidiFile(Write("waltz.mid", Waltz()));
        EXPECT_FALSE(Find<LyricsBand>("LyricsBand")->isVisible());
        form_->OpenMidiFile(Write("sung.mid", Sung()));
        auto* band = Find<LyricsBand>("LyricsBand");
        EXPECT_TRUE(band->isVisible());
        EXPECT_FALSE(band->accessibleName().isEmpty());
        EXPECT_EQ(Shown(), " Grüß dich");
        const auto* model = Find<LyricsModel>("LyricsModel");
        EXPECT_EQ(model->Sung(), 5);
        EXPECT_EQ(model->ChordsAhead(3), (QStringList{"Am7", "G7"}));
        QSignalSpy changes(model, &LyricsModel::PlaceChanged);
        MoveTo(240); // nothing else is to be seen
        EXPECT_EQ(changes.count(), 0);
        MoveTo(490);
        EXPECT_EQ(changes.count(), 1);
        EXPECT_EQ(Shown(), "Am7 Grüß dich");
        MoveTo(1000);
        EXPECT_EQ(Shown(), "G7 Gott auch");
        EXPECT_EQ(model->Line(-1), QStringLiteral("Grüß dich"));
        EXPECT_TRUE(model->Line(1).isEmpty());
    }
}

TEST_F(LyricsFormTest, EncodingIsChosenForTheSong) {
    form_->OpenMidiFile(Write("sung.mid", Sung()));
    Trigger("MMV_LyricsDos");
    EXPECT_EQ(Shown(), " Gr³▀ dich");
    form_->OpenMidiFile(Write("other.mid", Sung()));
    EXPECT_EQ(Shown(), " Grüß dich");
    EXPECT_TRUE(Find<QAction>("MMV_LyricsAutomatic")->isChecked());
    OpenWindow();
    form_->OpenMidiFile(Path("sung.mid"));
    EXPECT_EQ(Shown(), " Gr³▀ dich");
    EXPECT_TRUE(Find<QAction>("MMV_LyricsDos")->isChecked());
    const auto known = static_cast<int>(kLyricsEncodingMenu.rows.size());
    for (const int wrong : {-1, known}) { // as another version may leave it
        store_->WriteIntToUserRegistrySubdir("LyricsEncodings", "sung.mid", wrong);
        OpenWindow();
        form_->OpenMidiFile(Path("sung.mid"));
        EXPECT_TRUE(Find<QAction>("MMV_LyricsAutomatic")->isChecked()) << wrong;
        EXPECT_EQ(Shown(), " Grüß dich") << wrong;
    }
}

TEST_F(LyricsFormTest, PageCoversTheScreenUntilEscape) {
    form_->OpenMidiFile(Write("sung.mid", Sung()));
    for (const char* language : {"MMF_German", "MMF_English"}) {
        Trigger(language);
        Trigger("MMV_LyricsPage");
        auto* page = Find<LyricsPage>("LyricsPage");
        ASSERT_NE(page, nullptr);
        EXPECT_TRUE(page->isFullScreen());
        EXPECT_EQ(page->geometry(), form_->screen()->geometry());
        EXPECT_FALSE(page->accessibleName().isEmpty());
        EXPECT_TRUE(page->actions().contains(Find<QAction>("MMP_PlayStop")));
        QTest::keyClick(page, Qt::Key_Escape);
        EXPECT_FALSE(page->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(form_->findChild<LyricsPage*>(), nullptr);
    }
    Trigger("MMV_LyricsPage");
    Trigger("MMV_LyricsPage"); // the same key leaves
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(form_->findChild<LyricsPage*>(), nullptr);
}

} // namespace
} // namespace tracksmith::forms
