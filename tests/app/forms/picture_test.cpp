#include "form_fixture.h"
#include <QAbstractSlider>
#include <QDialog>
#include <QDragEnterEvent>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include "app/forms/dialogs.h"
#include "app/forms/guide/guide_form.h"
#include "app/forms/slow_medium.h"

// Whether the windows still look as they did when somebody looked at them. With
// TRACKSMITH_KEEP_PICTURES in the environment the pictures are painted anew instead; look at them
// before you commit them.

namespace tracksmith::forms {
namespace {

const std::filesystem::path kPictures =
    std::filesystem::path(TRACKSMITH_SOURCE_DIR) / "tests/app/forms/pictures";

// Half as large: small files, in which other edges of letters do not matter.
QImage Half(QWidget& window) {
    const QImage picture = window.grab().toImage();
    return picture.scaled(picture.size() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGB32);
}

bool Alike(QRgb a, QRgb b) {
    constexpr int kMost = 24;
    return std::abs(qRed(a) - qRed(b)) <= kMost && std::abs(qGreen(a) - qGreen(b)) <= kMost &&
           std::abs(qBlue(a) - qBlue(b)) <= kMost;
}

// The share of the points that differ, 1 for another size.
double Difference(const QImage& a, const QImage& b) {
    if (a.size() != b.size()) {
        return 1;
    }
    int others = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            others += Alike(a.pixel(x, y), b.pixel(x, y)) ? 0 : 1;
        }
    }
    return static_cast<double>(others) / (a.width() * a.height());
}

class PictureTest : public FormTest {
protected:
    void SetUp() override {
        FormTest::SetUp();
#ifdef _WIN32
        GTEST_SKIP() << "the pictures have the fonts of Linux";
#endif
        QApplication::setCursorFlashTime(0);
        form_->resize(1280, 720);
    }
    void OpenDemo() const {
        form_->OpenMidiFile(std::filesystem::path(TRACKSMITH_SOURCE_DIR) / "data/demo/demo.mid");
        form_->Session().Controls().MoveByMeasures(20);
    }

    // So few points are a letter or two. Some of what is shown is worked out beside the window.
    void ExpectPicture(QWidget& window, const std::string& name) const {
        constexpr double kMost = 0.0003;
        constexpr int kSettledMs = 1'000;
        const QString file = PathToQString(kPictures / (name + ".png"));
        if (qEnvironmentVariableIsSet("TRACKSMITH_KEEP_PICTURES")) {
            QTest::qWait(kSettledMs);
            ASSERT_TRUE(Half(window).save(file));
            return;
        }
        const QImage kept = QImage(file).convertToFormat(QImage::Format_RGB32);
        double difference = 1;
        const auto looksAlike = [&] {
            difference = Difference(Half(window), kept);
            return difference <= kMost;
        };
        if (!QTest::qWaitFor(looksAlike, kSettledMs * 20)) {
            const QString seen = PathToQString(std::filesystem::temp_directory_path() /
                                               ("tracksmith-" + name + ".png"));
            Half(window).save(seen);
            ADD_FAILURE() << name << ": " << difference * 100 << " % differ, see "
                          << seen.toStdString();
        }
    }
};

TEST_F(PictureTest, TheMainWindowLooksAsItDid) {
    ExpectPicture(*form_, "empty");
    OpenDemo();
    for (const char* page : {"mix", "sound", "routing", "lists"}) {
        ExpectPicture(*form_, page);
        Trigger("MMV_NextPage");
    }
    Trigger("MMF_ThemeLight");
    ExpectPicture(*form_, "light");
}

TEST_F(PictureTest, TheDialogsLookAsTheyDid) {
    OpenDemo();
    for (const auto& [action, dialog] : kDialogs) {
        if (dialog == std::string("Dlg_About")) {
            continue; // tells versions
        }
        Trigger(action);
        auto* window = Find<QDialog>(dialog);
        ExpectPicture(*window, dialog);
        delete window;
    }
    form_->PickVoice(2);
    ExpectPicture(*Find<QDialog>("PickerForm"), "PickerForm");
}

// Channel 3: a note that begins again while it sounds, one without end, the pedal left on; muted.
TEST_F(PictureTest, FaultsAndLampsLookAsTheyDid) {
    form_->OpenMidiFile(Write("faulty.mid", test::MidiFileBuilder()
                                                .Track(test::TrackBuilder()
                                                           .Program(0, 2, 5)
                                                           .Note(480, 2, 60, 9)
                                                           .Note(480, 2, 60, 9)
                                                           .NoteOff(20, 2, 60)
                                                           .NoteOff(40, 2, 60)
                                                           .Note(420, 2, 64, 9)
                                                           .Short(0, 0xB2, 64, 127)
                                                           .End(4000))
                                                .Build()));
    Find<QAbstractButton>("Btn_Mute02")->click();
    Find<QAbstractButton>("Btn_Solo02")->click();
    ExpectPicture(*form_, "lamps");
    Trigger("MMF_Health");
    auto* findings = Find<QTableView>("Table_Findings");
    for (int row = 0; row < findings->model()->rowCount(); ++row) {
        findings->selectRow(row);
        ExpectPicture(*Find<QDialog>("Dlg_Health"), "finding" + std::to_string(row));
    }
}

// Lines of words with chords: one that fits, and a long one of which the sung part is seen.
TEST_F(PictureTest, WordsAndChordsLookAsTheyDid) {
    test::TrackBuilder words;
    words.Text(0, 5, "Gr\xFC\xDF ").Text(480, 5, "dich Gott, ").Text(480, 5, "auch heut\r");
    for (int beat = 0; beat < 24; ++beat) {
        words.Text(480, 5, "immer weiter ");
    }
    words.Text(480, 5, "\rEnde").Note(0, 0, 60, 9).NoteOff(480, 0, 60);
    form_->OpenMidiFile(
        Write("sung.mid", test::MidiFileBuilder()
                              .Track(words.End())
                              .Track(test::TrackBuilder()
                                         .Meta(480, 0x7F, {0x43, 0x7B, 1, 0x36, 10, 0x7F, 0x7F})
                                         .Meta(480, 0x7F, {0x43, 0x7B, 1, 0x35, 19, 0x7F, 0x7F})
                                         .Meta(960, 0x7F, {0x43, 0x7B, 1, 0x31, 0, 0x7F, 0x7F})
                                         .End())
                              .Build()));
    Trigger("MMV_LyricsPage");
    for (const auto& [name, tick] : {std::pair("begun", 500), std::pair("long", 7'300)}) {
        form_->Session().Controls().MoveToTick(tick);
        ExpectPicture(*Find<QWidget>("LyricsBand"), std::string("band_") + name);
        ExpectPicture(*Find<QWidget>("LyricsPage"), std::string("page_") + name);
    }
}

// With something to show: voices found, suggested and changed, a file over the window.
TEST_F(PictureTest, WhatIsFoundLooksAsItDid) {
    store_->WriteStrToUserRegistry("MidiInstrument00", "Yamaha Genos");
    OpenWindow();
    form_->resize(1280, 720);
    OpenDemo();
    ExpectPicture(*Find<QWidget>("NoticeBar"), "notice");
    Find<QPushButton>("Btn_Details")->click();
    ExpectPicture(*Find<QDialog>("Dlg_Changes"), "Dlg_Changes");
    delete Find<QDialog>("Dlg_Changes");
    form_->PickVoice(2);
    auto* picker = Find<QDialog>("PickerForm");
    Find<QLineEdit>("E_SelectSoundName")->setText(QStringLiteral("gui acou"));
    QTest::keyClick(Find<QLineEdit>("E_SelectSoundName"), Qt::Key_Down);
    Find<QPushButton>("Btn_Favourite")->click();
    ExpectPicture(*picker, "picker_found");
    delete picker;
    Trigger("MME_AutoRevoicer");
    Find<QPushButton>("Btn_Suggest")->click();
    ExpectPicture(*Find<QDialog>("Dlg_AutoRevoicer"), "revoicer_found");
    Find<QPushButton>("Btn_RevoiceFolder")->click();
    ExpectPicture(*Find<QDialog>("Dlg_RevoiceFolder"), "Dlg_RevoiceFolder");
    delete Find<QDialog>("Dlg_AutoRevoicer");
    Trigger("MMP_TransposeUp");
    Trigger("MMP_TempoUp");
    Find<QAbstractSlider>("TB_Volume02")->setValue(33);
    Trigger("MMF_WhatChanged");
    ExpectPicture(*Find<QDialog>("Dlg_WhatChanged"), "changes_found");
    delete Find<QDialog>("Dlg_WhatChanged");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QStringLiteral("/songs/a.mid")),
                  QUrl::fromLocalFile(QStringLiteral("/songs/b.mid"))});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(form_.get(), &enter);
    ExpectPicture(*Find<QWidget>("DropHint"), "drop");
}

// Not the guide itself, whose words change.
TEST_F(PictureTest, ThePagesOfAGuideLookAsTheyDid) {
    QImage wide(1'500, 300, QImage::Format_RGB32); // painted no wider than the lines
    wide.fill(Qt::darkCyan);
    ASSERT_TRUE(wide.save(PathToQString(Path("wide.png"))));
    const auto file = Write(
        "guide.md", test::BytesOf("# A Guide\n\nIts first words, *some* of them **heavy**.\n\n"
                                  "## A Table\n\n| key | does |\n|---|---|\n| Space | plays |\n"
                                  "| Esc | leaves |\n\n### A Picture\n\n![wide](wide.png)\n\n"
                                  "- a link to the [table](#a-table)\n- `code`\n"));
    GuideForm guide([file](Language) { return file; }, Language::English, nullptr);
    guide.setAttribute(Qt::WA_DeleteOnClose, false);
    guide.show();
    guide.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&guide));
    guide.findChild<QListWidget*>()->setFocus();
    guide.findChild<QListWidget*>()->setCurrentRow(1);
    ExpectPicture(guide, "guide");
}

// A loop, on and off; a channel brought out, transposed, one that has the keyboard.
TEST_F(PictureTest, WhatIsChosenLooksAsItDid) {
    OpenDemo();
    EXPECT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    form_->Session().Controls().LoopFromHere();
    Find<QAbstractButton>("Btn_Channel02")->click();
    Find<QWidget>("Overview")->setFocus();
    ExpectPicture(*Find<QWidget>("Overview"), "overview_loop");
    form_->Session().Controls().SetLooping(false);
    ExpectPicture(*Find<QWidget>("Overview"), "overview_loop_off");
    Find<QAbstractSlider>("Transpose02")->setValue(3);
    Find<QAbstractSlider>("TransposeSong")->setValue(-2);
    for (const char* focused : {"TB_Volume02", "TB_Panorama02", "Btn_Voice02", "Transpose02"}) {
        Find<QWidget>(focused)->setFocus();
        ExpectPicture(*Find<QWidget>("Strip_Channel02"), std::string("strip_") + focused);
    }
    Trigger("MME_RangeDelete"); // what is in the loop
    ExpectPicture(*Find<QDialog>("Dlg_DeleteRange"), "delete_loop");
}

TEST_F(PictureTest, TheStartPageLooksAsItDid) {
    Trigger("MMF_FirstSteps");
    ExpectPicture(*form_, "start");
}

// A song that takes its time, and then is none; the same in German, in a small window, in large
// letters.
TEST_F(PictureTest, LoadingAndRefusalLookAsTheyDid) {
    SlowMedium medium;
    Trigger("MMF_OpenDemoSong"); // which no list of files has, whose folders differ
    form_->Loader().SetTimes(
        {std::chrono::milliseconds(0), std::chrono::milliseconds(0), std::chrono::milliseconds(0)});
    form_->Loader().SetReader(medium.Reader());
    test::Bytes bytes = Waltz();
    bytes.resize(bytes.size() / 2);
    const auto cut = Write("waltz.mid", bytes);
    form_->OpenMidiFile(cut);
    ExpectPicture(*form_, "loading");
    Trigger("MMF_German");
    {
        BoxAnswer box("Btn_Ok");
        medium.Deliver(cut);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !box.text.empty(); }));
    }
    form_->resize(1024, 700);
    ExpectPicture(*form_, "refused");
    form_->resize(1280, 720);
    Trigger("MMV_TextSize200");
    ExpectPicture(*form_, "large");
}

} // namespace
} // namespace tracksmith::forms
