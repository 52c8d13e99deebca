#include <QCheckBox>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>

#include "app/backups/backup_folder.h"
#include "app/forms/form_fixture.h"

namespace tracksmith::forms {
namespace {

/// Backups in the window: what is written at the end, what is offered, the list.
class BackupsTest : public FormTest {
protected:
    void OpenAndModify() {
        form_->OpenMidiFile(Write("waltz.mid", Waltz()));
        std::filesystem::last_write_time(
            Path("waltz.mid"),
            std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
        form_->Session().MarkModified();
    }
    std::vector<backups::Backup> Backups() const {
        return backups::BackupFolder(Path("tracksmith") / "AutoBackups").List().backups;
    }
    bool IsOffered() const { return Find<QPushButton>("Btn_RestoreBackup")->isVisible(); }
};

TEST_F(BackupsTest, WhatASignalEndsIsOfferedAtTheNextStart) {
    OpenAndModify();
    form_->AgreeToEnd(false);
    ASSERT_EQ(Backups().size(), 1U);
    form_->AgreeToEnd(true); // the window closes on the way out
    OpenWindow();
    ASSERT_TRUE(IsOffered());
    EXPECT_NE(LabelText("Lbl_Notice").find("waltz"), std::string::npos);
    const auto dirty = test::TrackBuilder().Raw(0, {0xF7, 0x01, 0x55}).End();
    form_->OpenMidiFile(Write("other.mid", test::MidiFileBuilder(0).Track(dirty).Build()));
    // The offer waits below what there is to say about that song.
    EXPECT_EQ(LabelText("Lbl_NoticesWaiting"), "and 1 more");
    EXPECT_TRUE(Find<QLabel>("Lbl_NoticesWaiting")->isVisible());
    QTest::mouseClick(Find<QToolButton>("Btn_CloseNotice"), Qt::LeftButton);
    ASSERT_TRUE(IsOffered());
    EXPECT_FALSE(Find<QLabel>("Lbl_NoticesWaiting")->isVisible());
    QTest::mouseClick(Find<QPushButton>("Btn_RestoreBackup"), Qt::LeftButton);
    EXPECT_FALSE(IsOffered());
    EXPECT_TRUE(form_->Session().Modified());
    EXPECT_EQ(form_->Session().Work().file.name, Path("waltz.mid"));
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid*");
    {
        BoxAnswer discard("Btn_Discard");
        EXPECT_TRUE(form_->AgreeToEnd(true));
    }
    OpenWindow();
    EXPECT_FALSE(IsOffered());
}

TEST_F(BackupsTest, AProperEndOffersNothing) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    EXPECT_TRUE(form_->AgreeToEnd(true));
    EXPECT_TRUE(Backups().empty());
    OpenWindow();
    EXPECT_FALSE(IsOffered());
}

TEST_F(BackupsTest, TheListRestoresAStateAndLeavesTheFile) {
    OpenAndModify();
    BoxAnswer discard("Btn_Discard");
    Trigger("MMF_NewMidifile");
    Trigger("MMF_RestoreEarlier");
    auto* table = Find<QTableWidget>("Table_Backups");
    ASSERT_EQ(table->rowCount(), 1);
    EXPECT_EQ(table->item(0, 1)->text(), QStringLiteral("waltz"));
    EXPECT_EQ(table->item(0, 2)->text(), QStringLiteral("1 KB"));
    EXPECT_EQ(PathFromQString(table->item(0, 3)->text()), Path("waltz.mid"));
    EXPECT_FALSE(Find<QCheckBox>("Chk_OnlyThisSong")->isEnabled());
    QTest::keyClick(table, Qt::Key_Return);
    EXPECT_EQ(form_->Session().Work().file.name, Path("waltz.mid"));
    EXPECT_TRUE(form_->Session().Modified());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the closed list
    static_cast<void>(backups::BackupFolder(backups::UsualBackupFolder())
                          .Write({"Polka", "/songs/Polka.mid", "20261120_101112"}, Waltz()));
    Trigger("MMF_RestoreEarlier");
    auto* onlyThis = Find<QCheckBox>("Chk_OnlyThisSong");
    EXPECT_TRUE(onlyThis->isChecked());
    const int all = static_cast<int>(Backups().size());
    const int own = Find<QTableWidget>("Table_Backups")->rowCount();
    onlyThis->click();
    EXPECT_EQ(Find<QTableWidget>("Table_Backups")->rowCount(), all);
    onlyThis->click();
    EXPECT_EQ(Find<QTableWidget>("Table_Backups")->rowCount(), own);
    EXPECT_LT(own, all);
    auto* listen = Find<QPushButton>("Btn_ListenToBackup");
    ASSERT_TRUE(QTest::qWaitFor([&] { return listen->isEnabled(); }));
    EXPECT_EQ(LabelText("Lbl_Differs"), "Against the open song: no difference");
    listen->click();
    EXPECT_TRUE(form_->Session().HearsOther());
    EXPECT_TRUE(form_->Session().Controls().Playing());
    listen->click();
    EXPECT_FALSE(form_->Session().Controls().Playing());
    listen->click();
    Find<QDialog>("Dlg_Restore")->reject();
    EXPECT_FALSE(form_->Session().HearsOther());
    EXPECT_FALSE(form_->Session().Controls().Playing());
}

TEST_F(BackupsTest, WhatCannotBeRestoredIsSaid) {
    Trigger("MMF_RestoreEarlier");
    EXPECT_EQ(LabelText("Lbl_RestoreState"), "There are no saved states yet.");
    EXPECT_FALSE(Find<QPushButton>("Btn_Restore")->isEnabled());
    delete Find<QDialog>("Dlg_Restore");
    const auto write = [](const char* name, const test::Bytes& bytes) {
        static_cast<void>(backups::BackupFolder(backups::UsualBackupFolder())
                              .Write({name, "/songs/gone.mid", "20261120_101112"}, bytes));
    };
    write("Noise", test::Bytes(1'025));
    write("Waltz", Waltz());
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    Trigger("MMP_TransposeUp");
    Trigger("MMF_RestoreEarlier");
    EXPECT_EQ(LabelText("Lbl_RestoreState"), "");
    auto* table = Find<QTableWidget>("Table_Backups");
    const auto choose = [&](const char* name) {
        const int row = table->findItems(QLatin1String(name), Qt::MatchExactly).at(0)->row();
        table->selectRow(row);
        EXPECT_EQ(table->item(row, 0)->text(), QStringLiteral("Fri 20 Nov 2026  10:11:12"));
        return table->item(row, 2)->text().toStdString();
    };
    const auto* listen = Find<QPushButton>("Btn_ListenToBackup");
    EXPECT_EQ(choose("Waltz"), "1 KB");
    EXPECT_TRUE(QTest::qWaitFor([&] { return listen->isEnabled(); }));
    EXPECT_EQ(LabelText("Lbl_Differs"), "Against the open song: Notes 3");
    EXPECT_EQ(choose("Noise"), "2 KB");
    EXPECT_FALSE(listen->isEnabled());
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return LabelText("Lbl_Differs") != "Comparing the song …"; }));
    EXPECT_EQ(LabelText("Lbl_Differs").rfind("This cannot be compared: ", 0), 0U)
        << LabelText("Lbl_Differs");
}

TEST_F(BackupsTest, TheIntervalIsChosenInTheMenuAndRemembered) {
    EXPECT_TRUE(Find<QAction>("MMS_AutoBackup5")->isChecked());
    for (const char* chosen : {"MMS_AutoBackup10", "MMS_AutoBackupOff"}) {
        Trigger(chosen);
        OpenWindow();
        EXPECT_TRUE(Find<QAction>(chosen)->isChecked()) << chosen;
    }
    OpenAndModify();
    BoxAnswer discard("Btn_Discard");
    Trigger("MMF_NewMidifile");
    EXPECT_TRUE(Backups().empty());
}

} // namespace
} // namespace tracksmith::forms
