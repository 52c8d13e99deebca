#include <QAbstractButton>

#include "app/forms/form_fixture.h"
#include "mixer/forms/voice_lines.h"

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

TEST_F(SongDisplayTest, TablesAndStripsShowTracksChannelsTemposAndTimeSignatures) {
    EXPECT_EQ(RowText("Table_Tracks", 1), "2|Piano|3|12|3");
    EXPECT_EQ(RowText("Table_Tracks", 2), "3|zel_ignore Extra|10|5|1");
    EXPECT_EQ(RowText("Table_Tempos", 0), form_->SongPositionToMTC(0) + "|0:00|120");
    EXPECT_EQ(RowText("Table_Tempos", 1), form_->SongPositionToMTC(1440) + "|0:01|100");
    EXPECT_EQ(RowText("Table_TimeSignatures", 0), form_->SongPositionToMTC(0) + "|0:00|3/4");
    EXPECT_EQ(Find<QAbstractButton>("Btn_Voice02")->accessibleName().toStdString(),
              "Voice, channel 3, Acoustic Guitar (nylon) (similar)");
    EXPECT_FALSE(Find<QAbstractButton>("Btn_Voice00")->isEnabled());
    EXPECT_EQ(Find<QWidget>("Strip_Channel00")->accessibleName().toStdString(),
              "channel 1, not in use");
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

TEST_F(SongDisplayTest, FitsASmallScreenWithEverySizeOfTextInBothLanguages) {
    for (const char* size : {"MMV_TextSize100", "MMV_TextSize200", "MMV_TextSize250"}) {
        for (const char* language : {"MMF_English", "MMF_German"}) {
            Trigger(size);
            QApplication::processEvents();
            Trigger(language);
            form_->resize(1000, 650);
            QApplication::processEvents();
            EXPECT_EQ(form_->size(), QSize(1000, 650)) << size << " " << language;
            const auto* panic = Find<QWidget>("Btn_Panic");
            EXPECT_TRUE(
                form_->rect().contains(QRect(panic->mapTo(form_.get(), QPoint()), panic->size())));
        }
    }
}

TEST_F(SongDisplayTest, TextSizeTakesEffectAtOnceAndIsRemembered) {
    const auto height = [this] {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return Find<QLabel>("Lbl_FileName")->fontMetrics().height();
    };
    const int before = height();
    Trigger("MMP_Looping");
    Trigger("MMV_TextSize200");
    QApplication::processEvents();
    EXPECT_NEAR(height(), 2 * before, 2);
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
    EXPECT_TRUE(Find<QAction>("MMP_Looping")->isChecked());
    OpenWindow();
    EXPECT_NEAR(height(), 2 * before, 2);
    EXPECT_TRUE(Find<QAction>("MMV_TextSize200")->isChecked());
    Trigger("MMV_TextSize100");
    QApplication::processEvents();
    EXPECT_EQ(height(), before);
}

TEST(VoiceLinesTest, WordsAreNotBroken) {
    const QFontMetricsF metrics(QApplication::font());
    const double width = metrics.horizontalAdvance(QStringLiteral("OrchestraH"));
    using Lines = std::pair<QString, QString>;
    EXPECT_EQ(VoiceLines(QStringLiteral("OrchestraHarp"), metrics, width),
              Lines(QStringLiteral("Orchestra"), QStringLiteral("Harp")));
    EXPECT_EQ(VoiceLines(QStringLiteral("Grand Piano"), metrics, width),
              Lines(QStringLiteral("Grand"), QStringLiteral("Piano")));
    EXPECT_EQ(VoiceLines(QStringLiteral("Oboe 2"), metrics, width),
              Lines(QStringLiteral("Oboe 2"), QString()));
    const auto [first, second] =
        VoiceLines(QStringLiteral("Contrabassoons of Bohemia"), metrics, width);
    EXPECT_TRUE(first.startsWith(QStringLiteral("Contra")) && first.endsWith(u'…'));
    EXPECT_TRUE(second.startsWith(QStringLiteral("of Boh")));
    EXPECT_EQ(VoiceLines(QString(), metrics, width), Lines());
}

} // namespace
} // namespace tracksmith::forms
