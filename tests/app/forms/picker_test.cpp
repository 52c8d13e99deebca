#include "form_fixture.h"
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTreeWidget>

#include "instruments/forms/picker_form.h"
#include "song/check_song.h"

namespace tracksmith::forms {
namespace {

class PickerTest : public FormTest {
protected:
    void SetUp() override {
        FormTest::SetUp();
        store_->WriteStrToUserRegistry("MidiInstrument00", "Yamaha Genos2");
        OpenWindow();
        loop_->SetRecording(0, true);
    }

    // The song plays channel 3 with one voice first and with another later.
    TPickerForm* Pick() {
        form_->OpenMidiFile(
            Write("two.mid", test::MidiFileBuilder()
                                 .Track(test::TrackBuilder().Tempo(0, 500'000).End())
                                 .Track(test::TrackBuilder()
                                            .Short(480, 0xB2, 0, 8)
                                            .Short(0, 0xB2, 32, 32)
                                            .Program(0, 2, 0)
                                            .Note(480, 2, 60, 90)
                                            .NoteOff(480, 2, 60)
                                            .Program(0, 2, 1)
                                            .Note(0, 2, 64, 90)
                                            .NoteOff(960, 2, 64)
                                            .End())
                                 .Build()));
        form_->PickVoice(2);
        auto* picker = form_->findChild<TPickerForm*>();
        EXPECT_NE(picker, nullptr);
        EXPECT_TRUE(QTest::qWaitForWindowActive(picker));
        Sent();
        return picker;
    }

    // What was sent since the last call: program changes of all channels, "C2 17".
    std::string Sent() {
        QTest::qWait(60);
        std::string text;
        for (const midi::loop::LoopMessage& message : loop_->TakeSent(0)) {
            const auto& bytes = message.bytes;
            if ((bytes[0] & 0xF0) == 0xC0) {
                text += (text.empty() ? "" : " ") + std::to_string(bytes[0]) + "/" +
                        std::to_string(bytes[1]);
            }
        }
        return text;
    }

    std::string Name(const char* card) {
        return Find<QWidget>(card)->accessibleName().toStdString();
    }

    std::vector<int> Programs() const {
        std::vector<int> programs;
        const song::Track& track = form_->Session().Song().tracks[1];
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            if (event->IsChannelMessage() && event->Command() == song::kProgramChange) {
                programs.push_back(event->data1);
            }
        }
        return programs;
    }
};

TEST_F(PickerTest, SearchesHearsComparesAndWritesByKeys) {
    TPickerForm* picker = Pick();
    auto* search = Find<QLineEdit>("E_SelectSoundName");
    auto* table = Find<QTableView>("LB_Sounds");
    ASSERT_TRUE(search->hasFocus());
    EXPECT_TRUE(Find<QLabel>("L_NoSound")->isHidden());
    QTest::keyClicks(search, "qqq");
    EXPECT_TRUE(Find<QLabel>("L_NoSound")->isVisible());
    search->clear();
    QTest::keyClicks(search, "nylon");
    EXPECT_TRUE(Find<QLabel>("L_NoSound")->isHidden());
    ASSERT_GT(table->model()->rowCount(), 3);
    EXPECT_LT(table->model()->rowCount(), 300);
    EXPECT_EQ(Sent(), ""); // typing sounds nothing
    QTest::keyClick(search, Qt::Key_Down);
    const int chosen = picker->Picker().Selected().program;
    const std::string program = "194/" + std::to_string(chosen);
    EXPECT_EQ(Sent(), program);
    EXPECT_EQ(Programs(), (std::vector{0, 1})); // only heard
    QTest::keyClick(picker, Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(Sent(), "194/0");
    EXPECT_EQ(Name("Card_OldVoice"), "Old voice, heard now: unknown 8·32·1, 8 · 32 · 1");
    const auto* oldVoice = Find<QPushButton>("Btn_OldVoice");
    const auto* newVoice = Find<QPushButton>("Btn_NewVoice");
    EXPECT_TRUE(oldVoice->isChecked() && !newVoice->isChecked());
    QTest::keyClick(picker, Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(Sent(), program);
    EXPECT_TRUE(newVoice->isChecked() && !oldVoice->isChecked());
    Find<QPushButton>("Btn_OldVoice")->click();
    EXPECT_EQ(Sent(), "194/0");
    Find<QPushButton>("Btn_NewVoice")->click();
    EXPECT_EQ(Sent(), program);
    const QPointer<TPickerForm> open = picker;
    Find<QTableView>("LB_Sounds")->setFocus();
    QTest::keyClick(Find<QTableView>("LB_Sounds"), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return open.isNull() || open->isHidden(); }));
    EXPECT_EQ(Programs(), (std::vector{chosen, 1}));
    EXPECT_TRUE(form_->Session().Modified());
    EXPECT_EQ(song::CheckSong(form_->Session().Song()), "");
    Trigger("MME_TakeBack");
    EXPECT_EQ(Programs(), (std::vector{0, 1}));
}

TEST_F(PickerTest, CancelLeavesSongAndSoundAsTheyWere) {
    TPickerForm* picker = Pick();
    Find<QPushButton>("Btn_NewVoice");
    QTest::keyClick(Find<QLineEdit>("E_SelectSoundName"), Qt::Key_Down);
    EXPECT_NE(Sent(), "");
    QTest::keyClick(picker, Qt::Key_Escape);
    EXPECT_EQ(Sent().substr(0, 5), "194/0"); // what is in force is heard again
    EXPECT_EQ(Programs(), (std::vector{0, 1}));
    EXPECT_FALSE(form_->Session().LastChange().Name().english == "Choosing a Voice");
}

TEST_F(PickerTest, ChangesTheVoiceAtThePlaceThatIsChosen) {
    TPickerForm* picker = Pick();
    auto* places = Find<QComboBox>("CB_Places");
    ASSERT_EQ(places->count(), 3);
    EXPECT_EQ(places->itemText(1).toStdString(), "001.04.000");
    places->setCurrentIndex(2); // both
    emit places->activated(2);
    QTest::keyClicks(Find<QLineEdit>("E_SelectSoundName"), "104/");
    QTest::keyClick(Find<QLineEdit>("E_SelectSoundName"), Qt::Key_Down);
    const int chosen = picker->Picker().Selected().program;
    Find<QPushButton>("Btn_OK")->click();
    EXPECT_EQ(Programs(), (std::vector{chosen, chosen}));
}

TEST_F(PickerTest, FavouritesAndSizeAreRemembered) {
    TPickerForm* picker = Pick();
    auto* families = Find<QTreeWidget>("LB_Families");
    QTest::keyClick(Find<QLineEdit>("E_SelectSoundName"), Qt::Key_Down);
    EXPECT_EQ(families->topLevelItem(1)->text(1), "0");
    QTest::keyClick(picker, Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(families->topLevelItem(1)->text(1), "1");
    Find<QPushButton>("Btn_Favourite")->click();
    EXPECT_EQ(families->topLevelItem(1)->text(1), "0");
    Find<QPushButton>("Btn_Favourite")->click();
    EXPECT_EQ(families->topLevelItem(1)->text(1), "1");
    picker->resize(760, 700);
    const int width = picker->width();
    const QPointer<TPickerForm> closed = picker;
    picker->reject();
    EXPECT_TRUE(QTest::qWaitFor([&] { return closed.isNull(); }));
    picker = Pick();
    EXPECT_EQ(Find<QTreeWidget>("LB_Families")->topLevelItem(1)->text(1), "1");
    EXPECT_EQ(picker->width(), width);
}

} // namespace
} // namespace tracksmith::forms
