#include "base/system/file_io.h"
#include "base/system/single_start.h"
#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTest>
#include <QUrl>

#include "app/forms/form_fixture.h"
#include "app/forms/settings/start_watch.h"

namespace tracksmith::forms {
namespace {

using FileCommandsTest = FormTest;

void Drop(TMainForm& form, const QList<QUrl>& urls) {
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&form, &enter);
    EXPECT_EQ(form.findChild<QWidget*>(QStringLiteral("DropHint"))->isVisible(),
              enter.isAccepted());
    if (enter.isAccepted()) {
        QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&form, &drop);
    }
}

TEST_F(FileCommandsTest, OpenAsksInTheLastFolderAndShowsTheSong) {
    EXPECT_TRUE(Find<QWidget>("Btn_OpenDemo")->isVisible());
    chooser_->answer = Write("waltz.mid", Waltz());
    Trigger("MMF_OpenMidifile");
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
    EXPECT_FALSE(Find<QWidget>("Btn_OpenDemo")->isVisible());
    chooser_->answer.reset();
    Trigger("MMF_OpenMidifile");
    EXPECT_EQ(chooser_->asked, Path("waltz.mid").parent_path());
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
}

struct BadFile {
    const char* name;
    test::Bytes bytes;
    const char* message;
    bool keepsSong;
};

class BadFileTest : public FormTest, public testing::WithParamInterface<BadFile> {};

TEST_P(BadFileTest, ShowsTheMessageAndKeepsTheWindowInOrder) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    const auto file = Write(GetParam().name, GetParam().bytes);
    BoxAnswer box("Btn_Ok");
    form_->OpenMidiFile(file);
    EXPECT_EQ(box.text.rfind(GetParam().message, 0), 0U) << box.text;
    EXPECT_NE(box.text.find(std::string("\n\n") + GetParam().name), std::string::npos) << box.text;
    EXPECT_NE(LabelText("Lbl_Notice").find(GetParam().name), std::string::npos);
    EXPECT_EQ(form_->Session().Work().hasSong, GetParam().keepsSong);
    EXPECT_EQ(Find<QWidget>("Overview")->isVisible(), GetParam().keepsSong);
    EXPECT_EQ(Find<QAction>("MMF_SaveMidifile")->isEnabled(), GetParam().keepsSong);
    // Nothing that could be saved names the bad file.
    EXPECT_EQ(form_->Session().Work().file.name,
              GetParam().keepsSong ? Path("waltz.mid") : std::filesystem::path());
}

INSTANTIATE_TEST_SUITE_P(Faults, BadFileTest,
                         testing::Values(BadFile{"short.mid", test::Bytes(23),
                                                 "Error in midifile: file too short!", true},
                                         BadFile{"noise.mid", test::Bytes(100),
                                                 "Error in midi file header - 1!", false}));

TEST_F(FileCommandsTest, SavingInAFormatWritesAFileThatLoadsAndAsksBeforeOverwriting) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    chooser_->answer = Path("zero.mid");
    Trigger("MMF_SaveFileAsFormat0");
    EXPECT_EQ(LabelText("Lbl_FileName"), "zero.mid");
    form_->OpenMidiFile(Path("zero.mid"));
    EXPECT_EQ(LabelText("Lbl_Facts"), "Format 0 · 480 · 1 track");
    EXPECT_EQ(RowText("Table_TimeSignatures", 0), form_->SongPositionToMTC(0) + "|0:00|3/4");

    form_->OpenMidiFile(Path("waltz.mid"));
    const auto before = system::ReadRegularFile(Path("zero.mid"));
    {
        BoxAnswer box("Btn_No");
        Trigger("MMF_SaveFileAsFormat1");
        EXPECT_NE(box.text.find("Do you really want to overwrite the midifile"), std::string::npos);
    }
    EXPECT_EQ(system::ReadRegularFile(Path("zero.mid")), before);
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
    BoxAnswer box("Btn_Yes");
    Trigger("MMF_SaveFileAsFormat1");
    form_->OpenMidiFile(Path("zero.mid"));
    EXPECT_EQ(LabelText("Lbl_Facts"), "Format 1 · 480 · 3 tracks");
}

TEST_F(FileCommandsTest, AFileThatAnOptionWouldLoadIsOffered) {
    const auto track = test::TrackBuilder()
                           .Note(0, 2, 60, 90)
                           .Sysex(0, {0x7E, 0x7F, 0x09, 0x01, 0xF7})
                           .Raw(480, {60, 0})
                           .End();
    BoxAnswer box("Btn_WayOn");
    form_->OpenMidiFile(Write("left.mid", test::MidiFileBuilder().Track(track).Build()));
    EXPECT_EQ(LabelText("Lbl_FileName"), "left.mid");
    EXPECT_FALSE(form_->Session().Options().runningStatusAcrossSysex);
}

#ifndef _WIN32 // whose registry is not ours to damage
TEST_F(FileCommandsTest, DamagedSettingsAreTold) {
    form_.reset();
    Write("settings.json", {'n', 'o'});
    OpenWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QWidget>("NoticeBar")->isVisible(); }));
    EXPECT_NE(LabelText("Lbl_Notice").find("settings"), std::string::npos);
}
#endif

TEST_F(FileCommandsTest, FailedSaveChangesNothing) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    form_->Session().MarkModified();
    chooser_->answer = Path("no such folder") / "song.mid";
    {
        BoxAnswer box("Btn_Close");
        Trigger("MMF_SaveMidifileAs");
        EXPECT_EQ(box.text.rfind("Error rewriting the midi file \"", 0), 0U);
    }
    EXPECT_EQ(form_->Session().Work().file.name, Path("waltz.mid"));
    EXPECT_TRUE(form_->Session().Modified());
}

TEST_F(FileCommandsTest, AFailedSaveLeadsToAnotherPlace) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    form_->Session().MarkModified();
    chooser_->answers = {Path("no such folder") / "song.mid", Path("other.mid")};
    BoxAnswer box("Btn_WayOn");
    Trigger("MMF_SaveMidifileAs");
    EXPECT_TRUE(std::filesystem::exists(Path("other.mid")));
    EXPECT_FALSE(form_->Session().Modified());
    EXPECT_EQ(LabelText("Lbl_FileName"), "other.mid");
}

TEST_F(FileCommandsTest, TheChosenFormatStaysAndTheTempoIsSaved) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    chooser_->answer = Path("zero.mid");
    Trigger("MMF_SaveFileAsFormat0");
    form_->Session().Controls().SetTempoPercent(50);
    EXPECT_TRUE(form_->Session().Modified());
    BoxAnswer box("Btn_Yes");
    Trigger("MMF_SaveMidifile");
    EXPECT_NE(LabelText("Lbl_Notice").find("60 BPM"), std::string::npos);
    EXPECT_EQ(Find<QSpinBox>("E_TempoPercent")->value(), 100);
    form_->OpenMidiFile(Path("zero.mid"));
    EXPECT_EQ(form_->Session().Work().song.fileFormat, 0);
    EXPECT_EQ(Find<QSpinBox>("E_Tempo")->value(), 60);
}

TEST_F(FileCommandsTest, AFileChangedByOthersIsToldAndNotOverwrittenUnasked) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    Write("waltz.mid", test::Bytes(40));
    QEvent activation(QEvent::ActivationChange);
    EXPECT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    QApplication::sendEvent(form_.get(), &activation);
    EXPECT_NE(LabelText("Lbl_Notice").find("changed by another program"), std::string::npos);
    BoxAnswer box("Btn_No");
    Trigger("MMF_SaveMidifile");
    EXPECT_NE(box.text.find("changed by another program"), std::string::npos);
    EXPECT_EQ(std::filesystem::file_size(Path("waltz.mid")), 40U);
}

TEST_F(FileCommandsTest, ChangesAreNotLostUnasked) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    form_->Session().MarkModified();
    form_->ShowFileState();
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid*");
    EXPECT_TRUE(Find<QLabel>("Lbl_Modified")->isVisible());
    {
        BoxAnswer box("Btn_Cancel");
        Trigger("MMF_NewMidifile");
        EXPECT_NE(box.text.find("waltz.mid"), std::string::npos);
        EXPECT_TRUE(form_->Session().Work().hasSong);
        EXPECT_FALSE(form_->close());
    }
    BoxAnswer box("Btn_Discard");
    Trigger("MMF_NewMidifile");
    EXPECT_EQ(form_->Session().Work().song.trackCount, 17);
    EXPECT_TRUE(form_->Session().Work().file.name.empty());
    EXPECT_EQ(LabelText("Lbl_SongName"), "New Song");
    form_->ClearMidiMemory();
    EXPECT_TRUE(Find<QWidget>("Btn_OpenDemo")->isVisible());
}

TEST_F(FileCommandsTest, WhatIsNotSavedStaysOpen) {
    Trigger("MMF_NewMidifile");
    form_->Session().MarkModified();
    {
        const BoxAnswer save("Btn_Save"); // and no file is named
        Trigger("MMF_NewMidifile");
    }
    EXPECT_TRUE(form_->Session().Modified());
    const BoxAnswer save("Btn_Save");
    chooser_->answer = Path("kept.mid");
    Trigger("MMF_NewMidifile");
    EXPECT_TRUE(std::filesystem::exists(Path("kept.mid")));
    EXPECT_FALSE(form_->Session().Modified());
    EXPECT_TRUE(form_->Session().Work().file.name.empty());
}

TEST_F(FileCommandsTest, ASecondStartHandsItsFilesToTheFirst) {
    const QByteArray former = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", folder_.path().toUtf8());
    system::SingleStart first("first");
    const StartWatch watch(*form_, first);
    const system::SingleStart second("first");
    Trigger("MMF_About");
    EXPECT_TRUE(second.HandOver({Write("waltz.mid", Waltz())}));
    QTest::qWait(250);
    EXPECT_FALSE(form_->Session().HasSong()); // not under a dialog
    Find<QDialog>("Dlg_About")->reject();
    EXPECT_TRUE(QTest::qWaitFor([this] { return form_->Session().HasSong(); }));
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
    form_->showMinimized();
    EXPECT_TRUE(second.HandOver({}));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !form_->isMinimized(); }));
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
    former.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", former);
}

TEST_F(FileCommandsTest, TheDemoSongIsNotOverwritten) {
    Find<QPushButton>("Btn_OpenDemo")->click();
    EXPECT_EQ(LabelText("Lbl_FileName"), "Demo song");
    EXPECT_GT(form_->Session().Song().trackCount, 1);
    chooser_->answer = Path("mine.mid");
    Trigger("MMF_SaveMidifile");
    EXPECT_EQ(chooser_->asked, PathFromQString(QDir::homePath()) / "demo.mid");
    EXPECT_EQ(LabelText("Lbl_FileName"), "mine.mid");
    EXPECT_TRUE(std::filesystem::exists(Path("mine.mid")));
}

TEST_F(FileCommandsTest, LocalFilesCanBeDropped) {
    const auto url = QUrl::fromLocalFile(PathToQString(Write("waltz.mid", Waltz())));
    const auto other = QUrl::fromLocalFile(PathToQString(Write("again.mid", Waltz())));
    const QUrl remote(QStringLiteral("https://example.org/waltz.mid"));
    Drop(*form_, {remote});
    Drop(*form_, {url, remote});
    EXPECT_FALSE(form_->Session().Work().hasSong);
    Drop(*form_, {url, other});
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
    EXPECT_FALSE(Find<QWidget>("DropHint")->isVisible());
    Trigger("MMF_NextSong"); // in the order of the drop
    EXPECT_EQ(LabelText("Lbl_FileName"), "again.mid");
}

TEST_F(FileCommandsTest, SongsOfAFolderAreOpenedOneAfterTheOther) {
    EXPECT_FALSE(Find<QAction>("MMF_NextSong")->isEnabled());
    Write("b.mid", Waltz());
    Write("C.KAR", {'n', 'o', 'n', 'e'});
    Write("d.midi", Waltz());
    Write("notes.txt", Waltz());
    form_->OpenMidiFile(Write("a.mid", Waltz()));
    Trigger("MMF_PreviousSong");
    EXPECT_EQ(LabelText("Lbl_FileName"), "a.mid"); // the first
    Trigger("MMF_NextSong");
    EXPECT_EQ(LabelText("Lbl_FileName"), "b.mid");
    EXPECT_TRUE(LabelText("Lbl_Status").find("2 of 4") != std::string::npos)
        << LabelText("Lbl_Status");
    // One that cannot be read is told of once and passed by.
    BoxAnswer box("Btn_Ok");
    Trigger("MMF_NextSong");
    EXPECT_NE(box.text.find("C.KAR"), std::string::npos) << box.text;
    Trigger("MMF_NextSong");
    EXPECT_EQ(LabelText("Lbl_FileName"), "d.midi");
    Trigger("MMF_NextSong");
    EXPECT_EQ(LabelText("Lbl_FileName"), "d.midi");
    form_->OpenMidiFile(Path("b.mid"));
    Trigger("MMF_PreviousSong");
    EXPECT_EQ(LabelText("Lbl_FileName"), "a.mid");
}

TEST_F(FileCommandsTest, CommandsHaveTheUsualKeys) {
    const std::pair<const char*, const char*> keys[]{
        {"MMF_NewMidifile", "Ctrl+N"},    {"MMF_OpenMidifile", "Ctrl+O"},
        {"MMF_SaveMidifile", "Ctrl+S"},   {"MMF_SaveMidifileAs", "Ctrl+Shift+S"},
        {"MMF_ReloadMidifile", "Ctrl+R"}, {"MMF_Quit", "Ctrl+Q"}};
    for (const auto& [action, key] : keys) {
        EXPECT_TRUE(Find<QAction>(action)->shortcuts().contains(QKeySequence(QLatin1String(key))))
            << action;
    }
}

TEST_F(FileCommandsTest, WindowComesBackAsItWasLeft) {
    const QSize wanted = form_->minimumSizeHint().expandedTo({1000, 650}); // on any screen
    ASSERT_NE(form_->size(), wanted);
    form_->resize(wanted);
    Trigger("MMF_ThemeLight");
    form_->close();
    OpenWindow();
    EXPECT_EQ(form_->size(), wanted);
    EXPECT_TRUE(Find<QAction>("MMF_ThemeLight")->isChecked());
    EXPECT_GT(form_->palette().color(QPalette::Window).lightness(), 128);
}

} // namespace
} // namespace tracksmith::forms
