#include "form_fixture.h"
#include "support/temporary_folder.h"
#include <QCheckBox>
#include <QListWidget>
#include <QMenu>
#include <QTableWidget>
#include <QTest>

#include "app/forms/revoicer/auto_revoicer_form.h"
#include "app/forms/revoicer/revoice_folder_form.h"
#include "instruments/forms/picker_form.h"
#include "instruments/instrument_settings.h"
#include "instruments/revoicer/revoicer_table.h"

namespace tracksmith::forms {
namespace {

constexpr const char* kGenos = "Yamaha Genos";

/// The auto revoicer's window over a song with a guitar on channel 3 and one without bank on 4.
class RevoicerFormTest : public FormTest {
protected:
    static test::Bytes TwoGuitars() {
        return test::MidiFileBuilder(0)
            .Track(test::TrackBuilder()
                       .Short(0, 0xB2, 0, 0)
                       .Short(0, 0xB2, 32, 0)
                       .Program(0, 2, 24)
                       .Program(0, 3, 24)
                       .Note(480, 2, 60, 90)
                       .Note(0, 3, 60, 90)
                       .NoteOff(480, 2, 60)
                       .NoteOff(0, 3, 60)
                       .End())
            .Build();
    }
    void Open() {
        instruments::InstrumentSettings(*store_).WriteInstrument(kGenos);
        OpenWindow();
        form_->OpenMidiFile(Write("guitars.mid", TwoGuitars()));
        Trigger("MME_AutoRevoicer");
        grid_ = Find<QTableWidget>("ASG_Revoicer");
    }
    std::string Rows() const {
        std::string rows;
        for (int row = 0; row < grid_->rowCount(); ++row) {
            rows += grid_->item(row, 0)->checkState() == Qt::Checked ? "x" : "-";
            for (const int column : {1, 2, 3, 4, 5, 6}) {
                rows += "|" + grid_->item(row, column)->text().toStdString();
            }
            rows += "\n";
        }
        return rows;
    }
    std::string Source() const { return grid_->item(0, 8)->text().toStdString(); }
    void Press(const char* button) const { Find<QPushButton>(button)->click(); }
    instruments::RevoicerTable Stored() const {
        return instruments::RevoicerTable::Load(*store_, kGenos);
    }
    std::size_t Programs(std::uint8_t program) const {
        std::size_t count = 0;
        for (const song::Track& track : form_->Session().Song().tracks) {
            for (song::ConstEventLink event = track.first; event; event = event->next) {
                count += event->Command() == song::kProgramChange && event->data1 == program;
            }
        }
        return count;
    }

    QTableWidget* grid_ = nullptr;
};

TEST_F(RevoicerFormTest, SuggestsTicksChoosesAndDeletes) {
    Open();
    EXPECT_EQ(form_->findChild<QDialog*>("Dlg_AutoRevoicer")->windowTitle().toStdString(),
              " Auto Revoicer - Yamaha Genos");
    EXPECT_EQ(Rows(), "-|3, 4|Nylon Guitar|0·0·25|2|stays (Enter: suggestions)|\n");
    EXPECT_FALSE(Find<QPushButton>("Btn_Revoice")->isEnabled());
    Press("Btn_Suggest");
    EXPECT_EQ(Rows(), "x|3, 4|Nylon Guitar|0·0·25|2|NylonGuitar SW (S.Art!)|8·34·1\n");
    EXPECT_EQ(Source(), "suggested");
    EXPECT_EQ(grid_->item(0, 7)->data(Qt::AccessibleTextRole).toString().toStdString(), "5 of 5");
    EXPECT_EQ(LabelText("Lbl_RevoicerCounts"),
              "1 of 2 program changes will be replaced; "
              "1 without bank select stay as they are");
    QTest::keyClick(grid_, Qt::Key_Space);
    EXPECT_EQ(Rows().front(), '-');
    EXPECT_FALSE(Stored().Rows().at(0).ticked);
    EXPECT_FALSE(Find<QPushButton>("Btn_Revoice")->isEnabled());
    grid_->item(0, 0)->setCheckState(Qt::Checked); // as the mouse does
    EXPECT_TRUE(Stored().Rows().at(0).ticked);
    QTest::keyClick(grid_, Qt::Key_Return);
    auto* menu = Find<QMenu>("Menu_Suggestions");
    EXPECT_TRUE(menu->actions().at(0)->isChecked());
    menu->actions().at(1)->trigger();
    menu->close();
    EXPECT_EQ(Stored().Rows().at(0).entry->targetName, "SpanishGuitar (S.Art!)");
    EXPECT_EQ(Source(), "own table");
    QTest::keyClick(grid_, Qt::Key_Delete);
    EXPECT_TRUE(Stored().Rows().empty());
    EXPECT_EQ(Rows().front(), '-');
}

TEST_F(RevoicerFormTest, AppliesListensAndTakesBack) {
    Open();
    Press("Btn_Suggest");
    loop_->SetRecording(0, true);
    Press("Btn_NewVoices");
    EXPECT_TRUE(form_->Session().Controls().Player().WaitUntilSent(std::chrono::seconds(5)));
    const auto sent = loop_->TakeSent(0);
    ASSERT_EQ(sent.size(), 3U);
    EXPECT_EQ(sent[0].bytes, (test::Bytes{0xB2, 0, 8}));
    EXPECT_EQ(sent[2].bytes, (test::Bytes{0xC2, 0}));
    EXPECT_EQ(Programs(24), 2U); // only heard
    Press("Btn_AddBanks");
    EXPECT_EQ(LabelText("Lbl_RevoicerCounts"), "2 of 2 program changes will be replaced");
    Press("Btn_Revoice");
    EXPECT_EQ(Programs(24), 0U);
    EXPECT_TRUE(form_->Session().Modified());
    EXPECT_TRUE(Find<QPushButton>("Btn_OldVoices")->isChecked());
    EXPECT_FALSE(Find<QPushButton>("Btn_Revoice")->isEnabled());
    Trigger("MME_TakeBack");
    EXPECT_EQ(Programs(24), 2U);
    EXPECT_EQ(grid_->rowCount(), 1);
    Press("Btn_NewVoices");
    OpenWindow(); // closing the program with voices on trial
}

TEST_F(RevoicerFormTest, TablesAreReadAndWritten) {
    Open();
    auto* window = form_->findChild<TAutoRevoicerForm*>("Dlg_AutoRevoicer");
    chooser_->answer = Path("bad.tsv");
    Write("bad.tsv", test::BytesOf("8\t34\t0\tNew\t0\t0\t24\tOld\nnothing\n"));
    {
        BoxAnswer box("Btn_Ok");
        Press("Btn_ImportTable");
        EXPECT_NE(box.text.find("Line 2"), std::string::npos) << box.text;
    }
    EXPECT_TRUE(Stored().Rows().empty());
    Write("good.tsv", test::BytesOf("8\t34\t0\tNew\t0\t0\t24\tOld\n9\t9\t9\tB\t1\t1\t1\tA\n"));
    window->ImportFile(Path("good.tsv"));
    EXPECT_EQ(grid_->rowCount(), 2); // the whole table is shown now
    Press("Btn_ThisSong");
    EXPECT_EQ(Rows(), "x|3, 4|Nylon Guitar|0·0·25|2|New|8·34·1\n");
    EXPECT_EQ(Source(), "imported");
    window->ExportFile(Path("out.tsv"));
    std::size_t badLine = 0;
    const auto bytes = test::FileBytes(Path("out.tsv"));
    const auto written =
        instruments::RevoicerTable::FromText(std::string(bytes.begin(), bytes.end()), badLine);
    ASSERT_TRUE(written);
    EXPECT_EQ(written->Applied(), Stored().Applied());
    const auto told = [&](const char* button, const std::filesystem::path& file) {
        chooser_->answer = file;
        BoxAnswer box("Btn_Ok");
        Press(button);
        return box.text;
    };
    EXPECT_EQ(told("Btn_ExportTable", Path("no such folder") / "out.tsv"),
              "The file cannot be written.");
    EXPECT_EQ(told("Btn_ImportTable", Path("nothing.tsv")), "The file cannot be read.");
    EXPECT_EQ(Stored().Rows().size(), 2U);
    EXPECT_EQ(told("Btn_ExportTable", Path("again.tsv")), "");
    EXPECT_EQ(chooser_->asked.filename(), "Yamaha Genos.tsv");
    EXPECT_EQ(test::FileBytes(Path("again.tsv")), bytes);
}

// The second voice is selected behind the first one's bank select, the third has none.
TEST_F(RevoicerFormTest, CountsWhatHasNoBankOfItsOwn) {
    instruments::InstrumentSettings(*store_).WriteInstrument(kGenos);
    OpenWindow();
    form_->OpenMidiFile(Write("sharing.mid", test::MidiFileBuilder(0)
                                                 .Track(test::TrackBuilder()
                                                            .Short(0, 0xB2, 0, 0)
                                                            .Short(0, 0xB2, 32, 0)
                                                            .Program(0, 2, 24)
                                                            .Note(480, 2, 60, 90)
                                                            .NoteOff(480, 2, 60)
                                                            .Program(0, 2, 25)
                                                            .Note(0, 2, 60, 90)
                                                            .NoteOff(480, 2, 60)
                                                            .End())
                                                 .Build()));
    Trigger("MME_AutoRevoicer");
    EXPECT_EQ(LabelText("Lbl_RevoicerCounts"),
              "0 of 2 program changes will be replaced; 1 have an earlier one's bank select");
    Press("Btn_AddBanks");
    EXPECT_EQ(LabelText("Lbl_RevoicerCounts"), "0 of 2 program changes will be replaced");
    EXPECT_FALSE(Find<QPushButton>("Btn_AddBanks")->isEnabled());
    form_->ClearMidiMemory();
    EXPECT_EQ(LabelText("Lbl_RevoicerCounts"), "No song is loaded");
    EXPECT_FALSE(Find<QPushButton>("Btn_RevoicerPlay")->isEnabled());
}

TEST_F(RevoicerFormTest, KeysSwitchTheVoicesAndPlay) {
    Open();
    Press("Btn_Suggest");
    auto* window = Find<QDialog>("Dlg_AutoRevoicer");
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    const auto* fresh = Find<QPushButton>("Btn_NewVoices");
    const auto* old = Find<QPushButton>("Btn_OldVoices");
    QTest::keyClick(window, Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(fresh->isChecked() && !old->isChecked());
    QTest::keyClick(window, Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(!fresh->isChecked() && old->isChecked());
    EXPECT_EQ(Find<QPushButton>("Btn_RevoicerPlay")->text().toStdString(), "&Play");
    Press("Btn_RevoicerPlay");
    EXPECT_TRUE(form_->Session().Controls().Playing());
    EXPECT_EQ(Find<QPushButton>("Btn_RevoicerPlay")->text().toStdString(), "Sto&p");
    Press("Btn_RevoicerPlay");
    EXPECT_FALSE(form_->Session().Controls().Playing());
    Press("Btn_Delete");
    EXPECT_TRUE(Stored().Rows().empty());
    EXPECT_FALSE(Find<QPushButton>("Btn_Delete")->isEnabled());
}

TEST_F(RevoicerFormTest, AFolderIsRevoicedBesideTheSongAndAnswersCount) {
    Open();
    Press("Btn_RevoiceFolder");
    auto* window = Find<RevoiceFolderForm>("Dlg_RevoiceFolder");
    auto* state = Find<QLabel>("Lbl_RevoiceFolderState");
    std::filesystem::create_directories(Path("songs"));
    Write("songs/guitars.mid", TwoGuitars());
    Write("songs/noise.mid", test::Bytes(100));
    chooser_->answer = Path("songs");
    Press("Btn_ChooseSource");
    EXPECT_EQ(window->Target().toStdString(), Path("songs - Yamaha Genos").string());
    Press("Btn_RevoiceFolderStart");
    EXPECT_EQ(state->text().toStdString(), "No entry is ticked in the table of this instrument.");
    Press("Btn_Suggest");
    window->SetFolders(window->Source(), window->Source());
    Press("Btn_RevoiceFolderStart");
    EXPECT_NE(state->text().indexOf("need another folder"), -1) << state->text().toStdString();
    std::filesystem::create_directories(Path("empty"));
    const auto told = [&](const char* source, const char* target) {
        window->SetFolders(PathToQString(Path(source)),
                           *target == '\0' ? QString() : PathToQString(Path(target)));
        Press("Btn_RevoiceFolderStart");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !window->Busy(); }));
        return state->text().toStdString().substr(0, 40);
    };
    EXPECT_EQ(told("nowhere", "new"), "The folder of the songs is not there.");
    EXPECT_EQ(told("songs", ""), "The results need a folder.");
    EXPECT_EQ(told("songs", "songs/new"), "The folder for the results lies in that ");
    EXPECT_EQ(told("empty", "new"), "There are no songs (.mid, .midi, .kar, .");
    window->SetFolders(QString(), QString());
    EXPECT_FALSE(Find<QPushButton>("Btn_RevoiceFolderStart")->isEnabled());
    window->SetFolders(PathToQString(Path("songs")), QString());
    EXPECT_TRUE(Find<QPushButton>("Btn_RevoiceFolderStart")->isEnabled());
    EXPECT_FALSE(Find<QPushButton>("Btn_RevoiceFolderCancel")->isEnabled());
    chooser_->answer = Path("new");
    Press("Btn_ChooseTarget");
    const auto run = [&] {
        Press("Btn_RevoiceFolderStart");
        EXPECT_FALSE(Find<QWidget>("Edit_FolderSource")->isEnabled());
        Find<QDialog>("Dlg_RevoiceFolder")->close(); // only ends the work, which is told first
        EXPECT_TRUE(window->isVisible());
        EXPECT_TRUE(QTest::qWaitFor([&] { return !window->Busy(); }));
        Press("Btn_RevoiceFolderStart");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !window->Busy(); }));
        return state->text().toStdString();
    };
    EXPECT_EQ(run(), "Songs with new voices: 1\nFailed, nothing written (see the list): 1");
    EXPECT_EQ(Find<QListWidget>("List_RevoiceRemarks")->item(0)->text().indexOf("noise.mid: "), 0);
    EXPECT_EQ(test::FileBytes(Path("songs/guitars.mid")), TwoGuitars());
    EXPECT_NE(test::FileBytes(Path("new/guitars.mid")), TwoGuitars());
    {
        BoxAnswer box("Btn_No");
        EXPECT_NE(run().find("left as they were: 1"), std::string::npos);
        EXPECT_NE(box.text.find("1 of 2 songs"), std::string::npos) << box.text;
    }
    Trigger("MMF_German");
    EXPECT_EQ(Find<QCheckBox>("Chk_FolderAddBanks")->text().toStdString(),
              "Fehlende &Bankwahlen ergänzen");
    EXPECT_FALSE(form_->Session().Modified());
}

TEST_F(RevoicerFormTest, ThePickerSavesToTheTable) {
    Open();
    Find<QPushButton>("Btn_Close")->click();
    form_->PickVoice(2);
    auto* picker = form_->findChild<TPickerForm*>();
    ASSERT_NE(picker, nullptr);
    QTest::keyClick(Find<QTableView>("LB_Sounds"), Qt::Key_Down);
    Press("Btn_SaveToRevoicer");
    ASSERT_EQ(Stored().Rows().size(), 1U);
    EXPECT_EQ(Stored().Rows()[0].entry->source, (instruments::VoiceNumbers{0, 0, 24}));
    EXPECT_NE(Stored().Rows()[0].entry->target, (instruments::VoiceNumbers{0, 0, 24}));
}

} // namespace
} // namespace tracksmith::forms
