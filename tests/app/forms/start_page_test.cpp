#include "app/forms/start/start_page.h"

#include "form_fixture.h"
#include <QCheckBox>
#include <QListWidget>
#include <QTest>
#include <QTreeWidget>

#include "instruments/instrument_settings.h"

namespace tracksmith::forms {
namespace {

class StartPageTest : public FormTest {
protected:
    StartPage* Page() const { return form_->findChild<StartPage*>(); }
    bool Shown() const { return Page() != nullptr && Page()->isVisible(); }
    void Choose(const char* words) const {
        auto* search = Page()->findChild<QLineEdit*>();
        QTest::keyClicks(search, QLatin1String(words));
    }
    void Press(const char* button) const {
        Find<QPushButton>(button)->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    std::string Instrument() const {
        return instruments::InstrumentSettings(*store_).ReadInstrument();
    }
};

TEST_F(StartPageTest, ThreeAnswersMakeAPreparedSong) {
    EXPECT_TRUE(form_->WantsStartPage());
    Trigger("MMF_FirstSteps");
    ASSERT_TRUE(Shown());
    auto* outputs = Find<QListWidget>("List_StartOutputs");
    ASSERT_EQ(outputs->count(), 2);
    outputs->setCurrentRow(1);
    const QString second = outputs->item(1)->data(Qt::UserRole).toString();
    EXPECT_EQ(Find<QPushButton>("Btn_StartAccept")->text().toStdString(), "Play the De&mo");
    chooser_->answer = Write("waltz.mid", Waltz());
    Press("Btn_StartOpen");
    EXPECT_EQ(LabelText("Lbl_StartOutcome"),
              "“waltz.mid” will play on " + second.toStdString() + " as it is.");
    Choose("genos2");
    EXPECT_EQ(
        LabelText("Lbl_StartOutcome"),
        "“waltz.mid” will be prepared for Yamaha Genos2 and play on " + second.toStdString() + ".");
    EXPECT_EQ(Instrument(), "abc"); // nothing is stored yet
    // The answers stay in another language and in another size.
    Press("Btn_StartGerman");
    EXPECT_EQ(LabelText("Lbl_StartOutcome").rfind("„waltz.mid“ wird für Yamaha Genos2", 0), 0U);
    Press("Btn_StartAccept");
    EXPECT_EQ(Page(), nullptr);
    EXPECT_EQ(Instrument(), "Yamaha Genos2");
    EXPECT_EQ(form_->Session().Controls().Outputs().Output(), second.toStdString());
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
    EXPECT_TRUE(form_->Session().Work().preparation.prepared);
    EXPECT_FALSE(form_->WantsStartPage());
}

TEST_F(StartPageTest, ATestNoteIsSeenWhereItComesBack) {
    const player::TMidiPlayer& player = form_->Session().Controls().Player();
    Trigger("MMF_FirstSteps");
    Find<QListWidget>("List_StartOutputs")->setCurrentRow(1);
    const QWidget* lamps = Find<QWidget>("KeyLamps");
    const auto said = [lamps] { return lamps->accessibleName().section(QStringLiteral(": "), 1); };
    const auto isLit = [lamps] {
        const QImage picture = const_cast<QWidget*>(lamps)->grab().toImage();
        const QRgb lit = lamps->palette().color(QPalette::Highlight).rgb();
        return picture.pixel(picture.width() / 32, picture.height() / 2) == lit;
    };
    EXPECT_EQ(said().toStdString(), "no key came in yet");
    EXPECT_FALSE(isLit());
    EXPECT_EQ(player.ChosenInput(), player.OutputDevices().at(1).productName);
    Find<QPushButton>("Btn_TestNote")->click();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return said() == QLatin1String("C3, channel 1, velocity 100");
    })) << said().toStdString();
    EXPECT_TRUE(isLit());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isLit(); })) << "the note goes on";
    Press("Btn_StartSkip");
    EXPECT_EQ(player.ChosenInput(), ""); // nobody has chosen one
}

TEST_F(StartPageTest, SkippingStoresNothingAndOtherWaysLeaveIt) {
    Trigger("MMF_FirstSteps");
    Choose("genos2");
    Press("Btn_StartSkip");
    EXPECT_EQ(Page(), nullptr);
    EXPECT_TRUE(Find<QPushButton>("Btn_OpenDemo")->isVisible());
    EXPECT_FALSE(form_->WantsStartPage());
    EXPECT_FALSE(instruments::InstrumentSettings(*store_).HasInstrument());

    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    Trigger("MMF_FirstSteps");
    EXPECT_EQ(Find<QListWidget>("List_StartSongs")->count(), 2); // the demo song and this one
    Find<QCheckBox>("Chk_StartAgain")->setChecked(true);
    Press("Btn_StartSkip");
    EXPECT_TRUE(Find<QLabel>("Lbl_FileName")->isVisible());
    EXPECT_TRUE(form_->WantsStartPage());
    Trigger("MMF_FirstSteps");
    form_->OpenMidiFile(Write("other.mid", Waltz())); // dropped on the window
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Page(), nullptr);
    EXPECT_TRUE(Find<QLabel>("Lbl_FileName")->isVisible());
}

TEST_F(StartPageTest, KeysLeadToTheThreeQuestions) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    Trigger("MMF_FirstSteps");
    EXPECT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    const auto focus = [this](Qt::Key key) {
        QTest::keyClick(form_.get(), key, Qt::AltModifier);
        return QApplication::focusWidget()->objectName().toStdString();
    };
    EXPECT_EQ(focus(Qt::Key_3), "List_StartSongs");
    EXPECT_EQ(focus(Qt::Key_2), "List_StartOutputs");
    EXPECT_EQ(focus(Qt::Key_1), "E_SearchInstrument");
    Choose("genos2");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // on to the next question
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "List_StartOutputs");
    auto* songs = Find<QListWidget>("List_StartSongs");
    chooser_->answer = Path("waltz.mid"); // stands in the list already
    Press("Btn_StartOpen");
    EXPECT_EQ(songs->count(), 2);
    EXPECT_EQ(songs->currentRow(), 1);
    EXPECT_EQ(Find<QPushButton>("Btn_StartAccept")->text().remove(u'&').toStdString(),
              "Open and Prepare");
    chooser_->answer.reset();
    Press("Btn_StartOpen");
    EXPECT_EQ(songs->count(), 2);
    emit songs->itemActivated(songs->item(1));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Page(), nullptr);
    EXPECT_EQ(Instrument(), "Yamaha Genos2");
}

TEST_F(StartPageTest, TheDemoSongPlaysAtOnce) {
    Trigger("MMF_FirstSteps");
    Press("Btn_StartAccept");
    EXPECT_TRUE(form_->Session().Work().file.isDemo);
    EXPECT_TRUE(form_->Session().Controls().Playing());
    form_->Session().Controls().Stop();
}

} // namespace
} // namespace tracksmith::forms
