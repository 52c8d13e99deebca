#include <algorithm>
#include <functional>

#include "form_fixture.h"
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
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

    // The notes that have begun (+) and ended (-) on channel 3, once `count` of them came.
    std::string Notes(std::size_t count) {
        std::string text;
        std::size_t found = 0;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            for (const midi::loop::LoopMessage& message : loop_->TakeSent(0)) {
                const auto& bytes = message.bytes;
                if (bytes[0] == 0x92 || bytes[0] == 0x82) {
                    const bool begins = bytes[0] == 0x92 && bytes[2] > 0;
                    text += (begins ? "+" : "-") + std::to_string(bytes[1]);
                    ++found;
                }
            }
            return found >= count;
        }));
        return text;
    }

    QModelIndex Sound(int row, int column) const {
        return Find<QTableView>("LB_Sounds")->model()->index(row, column);
    }

    // The cells of a column, from the top.
    std::vector<int> Numbers(int column) const {
        std::vector<int> numbers;
        for (int row = 0; row < Find<QTableView>("LB_Sounds")->model()->rowCount(); ++row) {
            numbers.push_back(Sound(row, column).data().toInt());
        }
        return numbers;
    }

    void ClickHeader(int column) const {
        const auto* header = Find<QTableView>("LB_Sounds")->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(column) + 8, header->height() / 2});
    }

    std::vector<std::string> Families() const {
        std::vector<std::string> rows;
        const auto* tree = Find<QTreeWidget>("LB_Families");
        for (int row = 0; row < tree->topLevelItemCount(); ++row) {
            rows.push_back(tree->topLevelItem(row)->text(0).toStdString());
        }
        return rows;
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

TEST_F(PickerTest, KeysOfTheSearchGoThroughTheVoicesAndAccept) {
    const QPointer<TPickerForm> picker = Pick();
    auto* search = Find<QLineEdit>("E_SelectSoundName");
    const auto* table = Find<QTableView>("LB_Sounds");
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(search, key);
        return table->currentIndex().row();
    };
    EXPECT_FALSE(table->currentIndex().isValid()); // the song's voice is none of the list
    EXPECT_EQ(press(Qt::Key_Down), 0);
    EXPECT_EQ(press(Qt::Key_Down), 1);
    EXPECT_GT(press(Qt::Key_PageDown), 2);
    EXPECT_EQ(press(Qt::Key_PageUp), 1);
    EXPECT_EQ(press(Qt::Key_Up), 0);
    EXPECT_TRUE(search->hasFocus());
    search->setText(QStringLiteral("piano"));
    Find<QTableView>("LB_Sounds")->setFocus();
    QTest::keyClick(picker, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(search->hasFocus());
    EXPECT_EQ(search->selectedText(), QStringLiteral("piano"));
    const int chosen = picker->Picker().Selected().program;
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return picker.isNull(); }));
    EXPECT_EQ(Programs(), (std::vector{chosen, 1}));
}

TEST_F(PickerTest, HeadersSortAndStarsAreClicked) {
    const QPointer<TPickerForm> picker = Pick();
    auto* table = Find<QTableView>("LB_Sounds");
    const std::vector<int> asInTable = Numbers(4);
    for (const int column : {2, 3, 4}) {
        ClickHeader(column);
        EXPECT_TRUE(std::ranges::is_sorted(Numbers(column))) << column;
        ClickHeader(column);
        EXPECT_TRUE(std::ranges::is_sorted(Numbers(column), std::greater())) << column;
    }
    ClickHeader(0);
    EXPECT_EQ(Numbers(4), asInTable);
    ClickHeader(1);
    const QString first = Sound(0, 1).data().toString();
    EXPECT_LT(first.compare(Sound(table->model()->rowCount() - 1, 1).data().toString(),
                            Qt::CaseInsensitive),
              0);
    const auto star = [&] { return Sound(2, 0).data(Qt::AccessibleTextRole).toString(); };
    EXPECT_EQ(star(), QStringLiteral("no favourite"));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                      table->visualRect(Sound(2, 0)).center());
    EXPECT_EQ(star(), QStringLiteral("favourite"));
    const int chosen = Sound(3, 4).data().toInt() - 1;
    const QPoint name = table->visualRect(Sound(3, 1)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, name); // no star
    EXPECT_EQ(Find<QTreeWidget>("LB_Families")->topLevelItem(1)->text(1), "1");
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, name);
    EXPECT_TRUE(QTest::qWaitFor([&] { return picker.isNull(); }));
    EXPECT_EQ(Programs(), (std::vector{chosen, 1}));
}

TEST_F(PickerTest, GroupsAreHeadedAndCounted) {
    TPickerForm* picker = Pick();
    const auto rows = Families();
    EXPECT_EQ(rows.at(0), "Yours");
    EXPECT_EQ(rows.at(1), "★ Favourites");
    EXPECT_EQ(rows.at(2), "Last used");
    EXPECT_TRUE(rows.at(3).ends_with(" own")) << rows.at(3);
    EXPECT_EQ(rows.at(4), "All own voices");
    const auto headings = [&rows](const char* end) {
        return std::ranges::count_if(rows, [end](const auto& row) { return row.ends_with(end); });
    };
    EXPECT_EQ(headings(" own"), 1);
    EXPECT_EQ(headings(" inherited"), 1);
    auto* categories = Find<QTreeWidget>("LB_Categories");
    auto* search = Find<QLineEdit>("E_SelectSoundName");
    EXPECT_TRUE(categories->findItems("no match", Qt::MatchExactly).empty());
    const auto all = LabelText("L_PickerHits");
    search->setText(QStringLiteral("nylon"));
    EXPECT_EQ(LabelText("L_PickerHits"),
              std::to_string(picker->Picker().Lists().Hits()) + " voices");
    EXPECT_NE(LabelText("L_PickerHits"), all);
    EXPECT_EQ(categories->findItems("no match", Qt::MatchExactly).size(), 1);
    // A category of its own needs no remark about it behind each voice.
    const auto remark = [this] { return Sound(0, 1).data(Qt::UserRole).toString(); };
    EXPECT_FALSE(remark().isEmpty());
    categories->setCurrentItem(categories->topLevelItem(1));
    EXPECT_TRUE(remark().isEmpty()) << remark().toStdString();
    EXPECT_EQ(picker->Picker().Lists().Category(), 1U);
}

TEST_F(PickerTest, NotesSoundAloneAndAsChosen) {
    TPickerForm* picker = Pick();
    auto* search = Find<QLineEdit>("E_SelectSoundName");
    QTest::keyClick(search, Qt::Key_Down);
    EXPECT_EQ(Notes(2), "+60-60");
    auto* notes = Find<QComboBox>("CB_TestNote");
    EXPECT_EQ(notes->currentText(), QStringLiteral("C3"));
    const int other = notes->findText(QStringLiteral("A#4"));
    notes->setCurrentIndex(other);
    emit notes->activated(other);
    EXPECT_EQ(Notes(2), "+82-82");
    Find<QCheckBox>("CB_NoteOnSelection")->click();
    QTest::keyClick(search, Qt::Key_Down);
    EXPECT_EQ(Notes(0), "");
    EXPECT_EQ(picker->Picker().NextNoteMs(), 0);
    auto& controls = form_->Session().Controls();
    auto* play = Find<QPushButton>("Btn_PickerPlay");
    EXPECT_EQ(play->text().toStdString(), "&Play the Song");
    play->click();
    EXPECT_TRUE(controls.Playing());
    EXPECT_EQ(play->text().toStdString(), "Sto&p the Song");
    controls.Stop(); // elsewhere
    EXPECT_TRUE(QTest::qWaitFor([&] { return play->text() == QStringLiteral("&Play the Song"); }));
    Find<QCheckBox>("CB_Solo")->click();
    EXPECT_TRUE(controls.Player().ChannelSolo(2));
    picker->reject();
    EXPECT_FALSE(controls.Player().ChannelSolo(2));
}

TEST_F(PickerTest, SaysWhatItKnowsOfTheVoices) {
    TPickerForm* picker = Pick();
    const auto of = [this](const char* card, const char* label) {
        return Find<QWidget>(card)->findChild<QLabel*>(QLatin1String(label));
    };
    QTest::keyClick(picker, Qt::Key_D, Qt::ControlModifier);
    const std::string unknown = "The instrument is not known to have these numbers.";
    EXPECT_EQ(LabelText("L_PickerHits"), unknown);
    EXPECT_EQ(of("Card_OldVoice", "L_VoiceRemark")->text().toStdString(), unknown);
    EXPECT_TRUE(of("Card_NewVoice", "L_VoiceMark")->isHidden());
    QTest::keyClick(Find<QLineEdit>("E_SelectSoundName"), Qt::Key_Down);
    EXPECT_EQ(of("Card_NewVoice", "L_VoiceRemark")->text().toStdString(),
              "Found at exactly its bank.");
    Find<QPushButton>("Btn_SaveToRevoicer")->click();
    EXPECT_EQ(LabelText("L_PickerHits"), "Stands in the auto revoicer's table now.");
    const QPointer<TPickerForm> closed = picker;
    Find<QPushButton>("Btn_OK")->click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return closed.isNull(); }));
    form_->PickVoice(2);
    picker = form_->findChild<TPickerForm*>();
    const auto row = static_cast<int>(picker->Picker().Lists().RowOf(
        {picker->Picker().SelectedIsKit(), picker->Picker().Selected()}));
    EXPECT_EQ(Find<QTableView>("LB_Sounds")->currentIndex().row(), row);
    EXPECT_EQ(Sound(row, 1).data(Qt::UserRole + 1).toString(), QStringLiteral("3"));
}

TEST_F(PickerTest, KitsHaveNotesWithNames) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    form_->PickVoice(9);
    const auto* notes = Find<QComboBox>("CB_TestNote");
    EXPECT_TRUE(notes->currentText().startsWith(QStringLiteral("38 ")));
    EXPECT_GT(notes->currentText().size(), 4);
    EXPECT_EQ(Find<QComboBox>("CB_Places")->isVisible(), false);
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
    const auto* voices = Find<QTableView>("LB_Sounds")->model();
    QSignalSpy stars(voices, &QAbstractItemModel::dataChanged); // all of them are painted anew
    Find<QPushButton>("Btn_Favourite")->click();
    ASSERT_EQ(stars.size(), 1);
    EXPECT_EQ(stars.at(0).at(0).toModelIndex(), voices->index(0, 0));
    EXPECT_EQ(stars.at(0).at(1).toModelIndex(), voices->index(voices->rowCount() - 1, 0));
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
