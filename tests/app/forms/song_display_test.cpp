#include <QAbstractButton>

#include "app/forms/form_fixture.h"

namespace tracksmith::forms {
namespace {

class SongDisplayTest : public FormTest {
protected:
    void SetUp() override {
        FormTest::SetUp();
        form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    }
};

TEST_F(SongDisplayTest, HeaderAndStatusShowTheFactsOfTheFile) {
    EXPECT_EQ(LabelText("Lbl_SongName"), "Evening & <b>Waltz</b>");
    EXPECT_EQ(Find<QLabel>("Lbl_SongName")->textFormat(), Qt::PlainText);
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
    EXPECT_EQ(LabelText("Lbl_Format"), "1");
    EXPECT_EQ(LabelText("Lbl_Division"), "480");
    EXPECT_EQ(LabelText("Lbl_Facts"), "Format 1 · 480 · 3 tracks");
    EXPECT_EQ(form_->windowTitle().toStdString(), "waltz.mid – Tracksmith");
    // 2,990 ticks and ten more: the third measure's first beat; 1.5 s and then 0.6 s a beat.
    EXPECT_EQ(LabelText("Lbl_Length"), form_->SongPositionToMTC(3000) + " · 0:03");
}

TEST_F(SongDisplayTest, TablesAndCardsShowTracksChannelsTemposAndMetres) {
    EXPECT_EQ(RowText("Table_Tracks", 1), "2|Piano|3|12|3");
    EXPECT_EQ(RowText("Table_Tracks", 2), "3|zel_ignore Extra|10|5|1");
    EXPECT_EQ(RowText("Table_Tempos", 0), form_->SongPositionToMTC(0) + "|0:00|120");
    EXPECT_EQ(RowText("Table_Tempos", 1), form_->SongPositionToMTC(1440) + "|0:01|100");
    EXPECT_EQ(RowText("Table_Metres", 0), form_->SongPositionToMTC(0) + "|0:00|3/4");
    EXPECT_EQ(Find<QAbstractButton>("Card_Channel02")->accessibleName().toStdString(),
              "Channel 3: Acoustic Guitar (nylon) (similar), 3 notes, bank and program 8·3·25");
    EXPECT_FALSE(Find<QAbstractButton>("Card_Channel00")->isEnabled());
}

TEST_F(SongDisplayTest, ReadingOptionOffersAReloadAndTakesEffectWithIt) {
    EXPECT_FALSE(Find<QWidget>("Btn_Reload")->isVisible());
    Trigger("MMF_HonourZelIgnore");
    ASSERT_TRUE(Find<QWidget>("Btn_Reload")->isVisible());
    EXPECT_EQ(RowText("Table_Tracks", 2), "3|zel_ignore Extra|10|5|1");
    Find<QPushButton>("Btn_Reload")->click();
    EXPECT_EQ(RowText("Table_Tracks", 2), "3|zel_ignore Extra – ignored|10|5|1");
    OpenWindow(); // the option is remembered
    EXPECT_TRUE(form_->Session().Work().decodeOptions.honourZelIgnore);
}

TEST_F(SongDisplayTest, NoticeTellsWhatLoadingChangedAndDetailsListIt) {
    const auto track = test::TrackBuilder()
                           .Note(0, 0, 60, 90)
                           .Note(480, 0, 60, 0)
                           .Raw(0, {0xF7, 0x01, 0x55})
                           .End();
    form_->OpenMidiFile(Write("dirty.mid", test::MidiFileBuilder(0).Track(track).Build()));
    const song::LoadReport& report = form_->Session().Work().loadReport;
    ASSERT_EQ(report[song::LoadChange::EscapeDropped], 1);
    EXPECT_TRUE(Find<QWidget>("NoticeBar")->isVisible());
    EXPECT_EQ(LabelText("Lbl_Notice").rfind("What loading changed: ", 0), 0U);
    Find<QPushButton>("Btn_Details")->click();
    EXPECT_EQ(Find<QTableView>("Table_Changes")->model()->rowCount(),
              static_cast<int>(report.Kinds()));
}

TEST_F(SongDisplayTest, FitsTheSmallestScreenInBothLanguages) {
    for (const Language language : {Language::English, Language::German}) {
        form_->ApplyLanguage(language);
        QApplication::processEvents();
        EXPECT_LE(form_->minimumSizeHint().width(), 1280);
        EXPECT_LE(form_->minimumSizeHint().height(), 720);
    }
}

} // namespace
} // namespace tracksmith::forms
