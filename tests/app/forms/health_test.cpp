#include "base/recording_message_host.h"
#include "form_fixture.h"
#include <QComboBox>
#include <QTableWidget>
#include <QTest>

namespace tracksmith::forms {
namespace {

/// The window about what is wrong with the song.
class HealthFormTest : public FormTest {
protected:
    // Channel 3: a note that overlaps at tick 480, one without end at 960, the pedal left on.
    static test::Bytes Faulty() {
        return test::MidiFileBuilder()
            .Track(test::TrackBuilder()
                       .Short(0, 0xB2, 0, 0)
                       .Program(0, 2, 5)
                       .Short(0, 0xB2, 7, 90)
                       .Note(0, 2, 60, 9)
                       .Note(480, 2, 60, 9)
                       .NoteOff(20, 2, 60)
                       .NoteOff(40, 2, 60)
                       .Note(420, 2, 64, 9)
                       .Short(0, 0xB2, 64, 127)
                       .Note(5, 2, 70, 9)
                       .NoteOff(5, 2, 70)
                       .Note(50, 2, 70, 9)
                       .NoteOff(50, 2, 70)
                       .End())
            .Build();
    }
    void Open() {
        form_->OpenMidiFile(Write("faulty.mid", Faulty()));
        Trigger("MMF_Health");
        table_ = Find<QTableWidget>("Table_Findings");
    }
    std::string Rows() const {
        std::string rows;
        for (int row = 0; row < table_->rowCount(); ++row) {
            rows += table_->item(row, 0)->text().toStdString() + "|" +
                    table_->item(row, 1)->text().toStdString() + "|" +
                    table_->item(row, 2)->text().toStdString() + "|" +
                    table_->item(row, 3)->text().toStdString() + "|" +
                    table_->item(row, 4)->text().toStdString() + "\n";
        }
        return rows;
    }
    void Press(const char* button) const {
        Find<QPushButton>(button)->click();
        QApplication::processEvents();
    }
    std::int32_t Tick() const { return form_->Session().Controls().Tick(); }

    QTableWidget* table_ = nullptr;
};

constexpr const char* kAll =
    "Error|Note without end|3|001.03.000|1\n"
    "Warning|Pedal left on at the end|3|001.03.000|1\n"
    "Warning|Overlapping notes|3|001.02.000|1\n"
    "Hint|Lengthened when loading|all|–|1\n";

TEST_F(HealthFormTest, ShowsFiltersAndSeeks) {
    Open();
    EXPECT_EQ(Rows(), kAll);
    EXPECT_EQ(Find<QPushButton>("Btn_Health")->text().toStdString(), "Health: 3");
    EXPECT_EQ(Find<QPushButton>("Btn_FilterWarnings")->text().toStdString(), "Warnings: 2");
    Press("Btn_FilterWarnings");
    EXPECT_EQ(table_->rowCount(), 2);
    Press("Btn_FilterWarnings");
    table_->selectRow(3);
    Press("Btn_FilterHints");
    EXPECT_EQ(table_->currentRow(), 2); // the last that is left
    Press("Btn_FilterHints");
    table_->selectRow(0);
    EXPECT_EQ(Tick(), 0);
    QTest::keyClick(table_, Qt::Key_Return);
    EXPECT_EQ(Tick(), 960);
    QTest::keyClick(table_, Qt::Key_Down);
    QTest::keyClick(table_, Qt::Key_Down);
    EXPECT_NE(LabelText("Lbl_Explanation").find("while the same key still sounds"),
              std::string::npos);
    EXPECT_EQ(LabelText("Lbl_Place"), "Place 1 of 1");
    Press("Btn_GoThere");
    EXPECT_EQ(Tick(), 480);
    Trigger("MMF_Health"); // only one window
    EXPECT_EQ(form_->findChildren<QDialog*>(QStringLiteral("Dlg_Health")).size(), 1);
}

TEST_F(HealthFormTest, RepairsOneOrAllAndTakesBack) {
    Open();
    EXPECT_EQ(Find<QPushButton>("Btn_RepairAll")->text().toStdString(), "Repair &All Safe (3)");
    EXPECT_TRUE(Find<QPushButton>("Btn_NoteReport")->isEnabled());
    table_->selectRow(0);
    QTest::keyClick(table_, Qt::Key_R);
    EXPECT_EQ(Rows().find("Note without end"), std::string::npos);
    EXPECT_TRUE(form_->Session().Modified());
    Press("Btn_HealthTakeBack");
    EXPECT_EQ(Rows(), kAll);
    EXPECT_FALSE(form_->Session().Modified());
    Press("Btn_Repair2"); // in the row
    EXPECT_EQ(Rows().find("Overlapping"), std::string::npos);
    Press("Btn_RepairAll");
    EXPECT_EQ(Rows(), "Hint|Lengthened when loading|all|–|1\n");
    EXPECT_EQ(Find<QPushButton>("Btn_Health")->text().toStdString(), "Health: good");
    EXPECT_FALSE(Find<QPushButton>("Btn_RepairAll")->isEnabled());
    EXPECT_FALSE(Find<QPushButton>("Btn_NoteReport")->isEnabled());
}

TEST_F(HealthFormTest, FiltersByChannelAndLetsListen) {
    Open();
    auto* channels = Find<QComboBox>("Box_HealthChannel");
    ASSERT_EQ(channels->count(), 2);
    EXPECT_EQ(channels->itemText(1).toStdString(), "Channel 3");
    channels->setCurrentIndex(1);
    EXPECT_EQ(table_->rowCount(), 3);
    table_->selectRow(2); // the overlap at 480
    auto& controls = form_->Session().Controls();
    Press("Btn_Listen");
    EXPECT_TRUE(controls.Playing());
    EXPECT_EQ(Find<QPushButton>("Btn_Listen")->text().toStdString(), "Stop &Listening");
    Press("Btn_Listen");
    EXPECT_FALSE(controls.Playing());
    EXPECT_EQ(controls.Tick(), 480);
    EXPECT_EQ(Find<QPushButton>("Btn_Listen")->text().toStdString(), "&Listen");
}

// Overlaps in the first, the third and the fourth measure.
TEST_F(HealthFormTest, EveryPlaceIsReachedAndHeardFromItsMeasure) {
    test::TrackBuilder track;
    for (const std::uint32_t pause : {480U, 3'300U, 2'820U}) {
        track.Note(pause, 2, 60, 9).Note(20, 2, 60, 9).NoteOff(20, 2, 60).NoteOff(20, 2, 60);
    }
    form_->OpenMidiFile(
        Write("three.mid", test::MidiFileBuilder().Track(track.End(4'000)).Build()));
    Trigger("MMF_Health");
    auto* window = Find<QDialog>("Dlg_Health");
    auto* table = Find<QTableWidget>("Table_Findings");
    const auto overlaps = table->findItems(QStringLiteral("Overlapping notes"), Qt::MatchExactly);
    ASSERT_EQ(overlaps.size(), 1);
    table->selectRow(overlaps.front()->row());
    const auto* previous = Find<QPushButton>("Btn_PreviousPlace");
    const auto* next = Find<QPushButton>("Btn_NextPlace");
    EXPECT_EQ(LabelText("Lbl_Place"), "Place 1 of 3");
    EXPECT_FALSE(previous->isEnabled());
    Press("Btn_NextPlace");
    EXPECT_EQ(LabelText("Lbl_Place"), "Place 2 of 3");
    EXPECT_EQ(Tick(), 3'860);
    Press("Btn_NextPlace");
    EXPECT_FALSE(next->isEnabled());
    EXPECT_EQ(Tick(), 6'740);
    Press("Btn_Listen");
    EXPECT_TRUE(form_->Session().Controls().Playing());
    EXPECT_GE(Tick(), 5'760);
    EXPECT_LT(Tick(), 7'680);
    window->close();
    EXPECT_FALSE(form_->Session().Controls().Playing());
}

TEST_F(HealthFormTest, TheFindingCountsMostWhereThereIsLittleRoom) {
    Open();
    auto* window = Find<QDialog>("Dlg_Health");
    const auto shown = [&](int width) {
        window->resize(width, window->height());
        QApplication::processEvents();
        return std::string(table_->isColumnHidden(4) ? "" : "count ") +
               (table_->isColumnHidden(5) ? "" : "repair ") +
               (Find<QLabel>("Lbl_SafeRepairs")->isVisible() ? "sum" : "");
    };
    EXPECT_EQ(shown(window->minimumSizeHint().width()), "");
    EXPECT_EQ(shown(1'200), "count repair sum");
    EXPECT_EQ(LabelText("Lbl_SafeRepairs"), "Safe repairs: 3, places: 3");
}

TEST_F(HealthFormTest, TheOverviewOfTheFindingsSeeks) {
    Open();
    auto* overview = Find<QWidget>("HealthOverview");
    QTest::keyClick(overview, Qt::Key_Right);
    EXPECT_EQ(Tick(), 0); // one measure only
    Find<QComboBox>("Box_HealthChannel")->setCurrentIndex(1);
    table_->selectRow(1);
    QTest::keyClick(table_, Qt::Key_R);
    EXPECT_EQ(Find<QComboBox>("Box_HealthChannel")->currentIndex(), 1); // after a repair, too
    EXPECT_EQ(table_->rowCount(), 2);
    EXPECT_EQ(table_->currentRow(), 1);
    EXPECT_FALSE(Find<QLabel>("Lbl_Explanation")->text().isEmpty());
}

TEST_F(HealthFormTest, ListeningEndsByItself) {
    form_->OpenMidiFile(Write("long.mid", test::MidiFileBuilder()
                                              .Track(test::TrackBuilder()
                                                         .Note(0, 2, 60, 9)
                                                         .Note(480, 2, 60, 9)
                                                         .NoteOff(20, 2, 60)
                                                         .NoteOff(40, 2, 60)
                                                         .Note(9'000, 2, 60, 9)
                                                         .NoteOff(40, 2, 60)
                                                         .End())
                                              .Build()));
    Trigger("MMF_Health");
    Find<QTableWidget>("Table_Findings")->selectRow(0); // at the beginning
    auto& controls = form_->Session().Controls();
    Press("Btn_Listen");
    controls.MoveToTick(3'780); // shortly before the end of two measures
    EXPECT_TRUE(controls.Playing());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !controls.Playing(); }, 2'000));
    EXPECT_EQ(controls.Tick(), 0);
}

TEST_F(HealthFormTest, ChecksLargeSongsBesideTheWindow) {
    test::TrackBuilder track;
    track.Short(0, 0xB2, 0, 0).Program(0, 2, 5).Short(0, 0xB2, 7, 90);
    for (int note = 0; note < 170'000; ++note) {
        track.Note(9, 2, 60, 9).NoteOff(30, 2, 60);
    }
    track.Short(0, 0xB2, 64, 127);
    form_->OpenMidiFile(Write("large.mid", test::MidiFileBuilder().Track(track.End()).Build()));
    const auto* button = Find<QPushButton>("Btn_Health");
    EXPECT_EQ(button->text().toStdString(), "Health: …");
    Trigger("MMF_Health");
    EXPECT_EQ(LabelText("Lbl_FindingTitle"), "Checking the song …");
    EXPECT_TRUE(QTest::qWaitFor([&] { return button->text() == QStringLiteral("Health: 1"); }));
    EXPECT_EQ(Find<QTableWidget>("Table_Findings")->rowCount(), 1);
}

TEST_F(HealthFormTest, TakesBackWhatLoadingLengthened) {
    Open();
    table_->selectRow(3);
    Press("Btn_Repair");
    EXPECT_EQ(Rows().find("Lengthened"), std::string::npos);
    EXPECT_FALSE(form_->Session().Modified());
    form_->Session().TakeBackLastChange(*std::make_unique<RecordingMessageHost>());
    EXPECT_EQ(Rows(), kAll);
}

TEST_F(HealthFormTest, SpeaksGermanAndNamesItsControls) {
    store_->WriteStrToUserRegistry("Language", "de");
    OpenWindow();
    Open();
    EXPECT_EQ(Rows().substr(0, Rows().find('\n')), "Fehler|Note ohne Ende|3|001.03.000|1");
    EXPECT_EQ(Find<QPushButton>("Btn_Health")->text().toStdString(), "Zustand: 3");
    for (const QPushButton* button : Find<QDialog>("Dlg_Health")->findChildren<QPushButton*>()) {
        EXPECT_FALSE(button->accessibleName().isEmpty() && button->text().isEmpty())
            << button->objectName().toStdString();
    }
}

} // namespace
} // namespace tracksmith::forms
