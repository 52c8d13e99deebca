#include "base/recording_message_host.h"
#include "form_fixture.h"
#include <QCheckBox>
#include <QComboBox>
#include <QMenu>
#include <QRadioButton>
#include <QTableWidget>
#include <QTest>

#include "editing/forms/carried_words.h"
#include "editing/forms/number_field.h"
#include "editing/forms/range_form.h"
#include "editing/forms/range_overview.h"
#include "song/midi_file_writer.h"

namespace tracksmith::forms {
namespace {

constexpr int kMeasure = 1'920;

/// The windows for ranges over eight measures: a note of channel 1 and a drum in each, and a note
/// of channel 4 from the second measure to the sixth.
class RangeFormsTest : public FormTest {
protected:
    static test::Bytes EightMeasures() {
        test::TrackBuilder piano;
        test::TrackBuilder drums;
        piano.Program(0, 0, 5);
        for (int measure = 0; measure < 8; ++measure) {
            piano.Note(measure == 0 ? 0 : 20, 0, 60 + measure, 90)
                .NoteOff(kMeasure - 20, 0, 60 + measure);
            drums.Note(measure == 0 ? 0 : kMeasure - 60, 9, 36, 90).NoteOff(60, 9, 36);
            if (measure == 2) {
                piano.Program(10, 0, 7);
                piano.Short(0, 0xB0, 7, 80);
                measure = 3; // what follows is ten ticks late: measure 4 has no piano
                piano.Note(kMeasure + 10, 0, 64, 90).NoteOff(kMeasure - 20, 0, 64);
                drums.Note(kMeasure - 60, 9, 36, 90).NoteOff(60, 9, 36);
            }
        }
        return test::MidiFileBuilder(1)
            .Track(piano.End())
            .Track(drums.End())
            .Track(test::TrackBuilder()
                       .Note(kMeasure + 960, 3, 40, 90)
                       .NoteOff(4 * kMeasure, 3, 40)
                       .End())
            .Build();
    }
    void SetUp() override {
        FormTest::SetUp();
        form_->OpenMidiFile(Write("eight.mid", EightMeasures()));
        before_ = Encoded();
    }
    std::vector<std::uint8_t> Encoded() const {
        RecordingMessageHost host(Language::English);
        return song::EncodeFormat1(form_->Session().Song(), {}, host);
    }
    RangeForm* Window() const {
        RangeForm* shown = nullptr;
        for (auto* window : form_->findChildren<RangeForm*>()) {
            shown = window->isVisible() ? window : shown;
        }
        return shown;
    }
    template <class Widget>
    Widget* In(const char* name) const {
        auto* found = Window()->findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    void Type(const char* field, const char* text) const {
        auto* line = In<NumberField>(field);
        line->setFocus();
        line->selectAll();
        for (const char* key = text; *key != '\0'; ++key) {
            QTest::keyClick(Window()->focusWidget(), *key); // which a colon changes
        }
        if (*text == '\0') {
            QTest::keyClick(line, Qt::Key_Delete);
        }
    }
    std::string Field(const char* field) const {
        return In<NumberField>(field)->Text().toStdString();
    }
    std::string Positions() const {
        const editing::RangeWish wish = Window()->Wish();
        return wish.from.measure + ":" + wish.from.beat + " " + wish.to.measure + ":" +
               wish.to.beat + " " + wish.destination.measure + ":" + wish.destination.beat;
    }
    std::string Figures() const {
        return In<QLabel>("Lbl_Figures")->accessibleName().toStdString();
    }
    /// What the window says would happen, once it has looked.
    void ExpectFigures(const std::string& expected) const {
        EXPECT_TRUE(QTest::qWaitFor([&] { return Figures() == expected; })) << Figures();
    }
    /// A row of what transposing moves.
    std::string Moves(int row) const {
        QStringList cells;
        const auto* table = In<QTableWidget>("Grid_Transpose");
        for (int column = 0; column < table->columnCount(); ++column) {
            cells << table->item(row, column)->text();
        }
        return cells.join(u'|').toStdString();
    }
    std::string Fault() const { return In<QLabel>("Lbl_RangeFault")->text().toStdString(); }
    QPushButton* Ok() const { return In<QPushButton>("Btn_Ok"); }
    std::string Caption(const char* action) const {
        return Find<QAction>(action)->text().toStdString();
    }

    std::vector<std::uint8_t> before_;
};

TEST_F(RangeFormsTest, DeletingIsForeseenCarriedOutAndUndone) {
    const std::int32_t length = form_->Session().Song().songLength;
    EXPECT_FALSE(Find<QAction>("MME_Undo")->isEnabled());
    Trigger("MME_RangeDelete");
    EXPECT_EQ(Positions(), "2:01 6:01 :");
    Type("E_SourceFromMeasure", "3:1");
    Type("E_SourceToMeasure", "5");
    EXPECT_EQ(Positions(), "3:1 5:01 :");
    ExpectFigures(
        "3 notes go\n1 note ends there\n1 note starts again\n"
        "2 settings carried over\nChannel 1: Clavi, Volume 80\n");
    EXPECT_EQ(In<QLabel>("Lbl_Length")->text().toStdString(), "2 measures · 0:04");
    EXPECT_EQ(Ok()->text().toStdString(), "Delete 2 &Measures");
    EXPECT_EQ(Encoded(), before_);
    Ok()->click();
    EXPECT_EQ(Window(), nullptr);
    EXPECT_EQ(form_->Session().Song().songLength, length - 2 * kMeasure);
    EXPECT_TRUE(form_->Session().Modified());

    for (const char* entry : {"MME_Undo", "PMC_Undo"}) {
        EXPECT_EQ(Caption(entry), "&Undo - delete range");
        EXPECT_TRUE(Find<QAction>(entry)->isEnabled());
    }
    const auto undoKey = QKeySequence::listFromString(QStringLiteral("Ctrl+Z")).front();
    EXPECT_TRUE(Find<QAction>("MME_Undo")->shortcuts().contains(undoKey));
    EXPECT_TRUE(Find<QAction>("MME_TakeBack")->shortcuts().isEmpty());
    const auto deleted = Encoded();
    {
        BoxAnswer no("Btn_No");
        Trigger("MME_Undo");
        EXPECT_EQ(no.text, "Undo the command \"delete range\"?");
    }
    EXPECT_EQ(Encoded(), deleted);
    EXPECT_TRUE(Find<QAction>("MME_Undo")->isEnabled());
    BoxAnswer yes("Btn_Yes");
    Trigger("PMC_Undo");
    EXPECT_EQ(Encoded(), before_);
    EXPECT_EQ(Caption("MME_Undo"), "&Undo");
    EXPECT_FALSE(Find<QAction>("MME_Undo")->isEnabled());
    // The undoing is the last change now: the key takes it back.
    EXPECT_TRUE(Find<QAction>("MME_TakeBack")->shortcuts().contains(undoKey));
    Trigger("MME_TakeBack");
    EXPECT_EQ(Encoded(), deleted);
}

TEST_F(RangeFormsTest, FaultsStandBelowTheFieldsAndNothingIsDone) {
    Trigger("MME_RangeDelete");
    struct Case {
        const char *field, *text, *fault;
    };
    for (const Case& each :
         {Case{"E_SourceFromMeasure", "",
               "Please enter measure and beat into the \"From\" field, "
               "e.g. \"8:04\", \"16:01\"."},
          {"E_SourceFromMeasure", "1", "The \"From\" position is too low!"},
          {"E_SourceFromMeasure", "7", "\"Start-Position\" must be smaller than \"End-Position\"!"},
          {"E_SourceFromMeasure", "3", ""},
          {"E_SourceToBeat", "0", "Error calculating the \"to\" position"},
          {"E_SourceToBeat", "2", ""}}) {
        Type(each.field, each.text);
        EXPECT_EQ(Fault(), each.fault);
        EXPECT_EQ(Ok()->isEnabled(), *each.fault == '\0') << each.fault;
    }
    // Up and down go on over the ends of measures.
    QTest::keyClick(In<NumberField>("E_SourceToBeat"), Qt::Key_Down);
    QTest::keyClick(In<NumberField>("E_SourceToBeat"), Qt::Key_Down);
    EXPECT_EQ(Positions(), "3:01 5:04 :");
    QTest::keyClick(In<NumberField>("E_SourceToBeat"), Qt::Key_Up);
    QTest::keyClick(In<NumberField>("E_SourceToMeasure"), Qt::Key_Up);
    EXPECT_EQ(Positions(), "3:01 7:01 :");
    // They stay in the song.
    Type("E_SourceFromMeasure", "2");
    Type("E_SourceFromBeat", "1");
    for (int step = 0; step < 6; ++step) {
        QTest::keyClick(In<NumberField>("E_SourceFromBeat"), Qt::Key_Down);
    }
    EXPECT_EQ(Positions(), "1:01 7:01 :");
    QTest::keyClick(In<NumberField>("E_SourceFromMeasure"), Qt::Key_Down);
    EXPECT_EQ(Positions(), "1:01 7:01 :");
    for (int step = 0; step < 6; ++step) {
        QTest::keyClick(In<NumberField>("E_SourceToMeasure"), Qt::Key_Up);
    }
    EXPECT_EQ(Window()->Wish().to.measure, "9");
    In<QPushButton>("Btn_Cancel")->click();
    EXPECT_EQ(Encoded(), before_);
    EXPECT_FALSE(Find<QAction>("MME_Undo")->isEnabled());
}

TEST_F(RangeFormsTest, PlacesComeFromTheMusicTheLoopAndTheMouse) {
    session::Transport& controls = form_->Session().Controls();
    controls.MoveToTick(2 * kMeasure + 500);
    Trigger("PMC_CopyStartPosition");
    EXPECT_EQ(Positions(), "3:02 7:01 7:01");
    controls.MoveToTick(4 * kMeasure);
    Trigger("PMC_CopyEndPosition");
    controls.MoveToTick(6 * kMeasure + 1'440);
    Trigger("PMC_CopyDestPosition");
    EXPECT_EQ(Positions(), "3:02 5:01 7:04");
    In<QPushButton>("Btn_ToolDelete")->click();
    EXPECT_EQ(Window()->Tool(), editing::RangeTool::Delete);
    EXPECT_EQ(Positions(), "3:02 5:01 :");
    controls.SetLoop(kMeasure, 3 * kMeasure);
    In<QPushButton>("Btn_UseLoop")->click();
    EXPECT_EQ(Positions(), "2:01 4:01 :");

    auto* overview = In<RangeOverview>("NowOverview");
    int edges = 0;
    QObject::connect(overview, &RangeOverview::RangeDragged, [&] { ++edges; });
    const int middle = overview->height() / 2;
    const double start = overview->width() * 0.3;
    QTest::mousePress(overview, Qt::LeftButton, {}, {static_cast<int>(start), middle});
    for (int x = static_cast<int>(start); x < overview->width() - 5; x += 5) {
        QMouseEvent move(QEvent::MouseMove, QPointF(x, middle),
                         overview->mapToGlobal(QPointF(x, middle)), Qt::NoButton, Qt::LeftButton,
                         {});
        QApplication::sendEvent(overview, &move);
    }
    EXPECT_GT(edges, 1);
    EXPECT_EQ(Window()->Wish().to.measure, "9");
    In<QPushButton>("Btn_ToolTranspose")->click();
    BoxAnswer box("Btn_Ok");
    Trigger("PMC_DeleteEndPosition");
    EXPECT_EQ(box.text, "Please close the \"Transpose range\" window.");
}

// A click on the overview seeks the nearest measure; the edges of a range can be taken hold of.
TEST_F(RangeFormsTest, TheRangeIsDraggedByItsEdges) {
    session::Transport& controls = form_->Session().Controls();
    Trigger("MME_RangeDelete");
    auto* overview = In<RangeOverview>("NowOverview");
    const int middle = overview->height() / 2;
    const auto move = [&](int x, Qt::MouseButtons buttons) {
        QMouseEvent event(QEvent::MouseMove, QPointF(x, middle),
                          overview->mapToGlobal(QPointF(x, middle)), Qt::NoButton, buttons, {});
        QApplication::sendEvent(overview, &event);
    };
    const auto xOf = [&](int measure) { // the middle of where a click leads there
        Type("E_SourceFromMeasure", measure < 4 ? "6" : "2");
        Type("E_SourceToMeasure", measure < 4 ? "7" : "3");
        std::vector<int> found;
        for (int x = 0; x < overview->width(); x += 2) {
            controls.MoveToTick(77);
            QTest::mouseClick(overview, Qt::LeftButton, {}, {x, middle});
            if (controls.Tick() == (measure - 1) * kMeasure) {
                found.push_back(x);
            }
        }
        EXPECT_FALSE(found.empty()) << measure;
        return found.empty() ? 0 : (found.front() + found.back()) / 2;
    };
    const std::array places{xOf(2), xOf(3), xOf(5), xOf(6)};
    const auto drag = [&](int from, int to) {
        Type("E_SourceFromMeasure", "3");
        Type("E_SourceToMeasure", "5");
        move(from, Qt::NoButton);
        const bool edge = overview->cursor().shape() == Qt::SizeHorCursor;
        QTest::mousePress(overview, Qt::LeftButton, {}, {from, middle});
        move(to, Qt::LeftButton);
        QTest::mouseRelease(overview, Qt::LeftButton, {}, {to, middle});
        return Positions() + (edge ? "edge" : "");
    };
    EXPECT_EQ(drag(places[1] + 5, places[0]), "2:01 5:01 :edge");
    EXPECT_EQ(drag(places[2] - 5, places[3]), "3:01 6:01 :edge");
    EXPECT_EQ(drag(places[2] + 5, places[0]), "2:01 3:01 :edge"); // over the other one
    EXPECT_EQ(drag(places[3], places[2]), "5:01 6:01 :");
    In<QPushButton>("Btn_ToolTranspose")->click();
    const BoxAnswer box("Btn_Ok");
    In<QPushButton>("Btn_UseLoop")->click();
    EXPECT_EQ(box.text, "There is no loop.");
}

TEST_F(RangeFormsTest, EachSeamOfACopyIsHeardAndTheStateMayStay) {
    session::Transport& controls = form_->Session().Controls();
    Trigger("MME_RangeCopy");
    Type("E_SourceFromMeasure", "7");
    Type("E_SourceToMeasure", "9");
    Type("E_DestMeasure", "3:01");
    const auto heard = [&](const char* seam) {
        In<QPushButton>(seam)->click();
        In<QPushButton>("Btn_Preview")->click();
        const auto loop = *controls.Loop();
        In<QPushButton>("Btn_Preview")->click();
        return std::pair(loop.startTick, loop.endTick);
    };
    EXPECT_EQ(heard("Btn_BlockStart"), std::pair(kMeasure, 3 * kMeasure));
    EXPECT_EQ(heard("Btn_BlockEnd"), std::pair(3 * kMeasure, 5 * kMeasure));
    In<QCheckBox>("Chk_BringState")->click();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return Figures().find("0 settings carried over") != std::string::npos;
    })) << Figures();
}

TEST(CarriedWordsTest, SettingsAreSaidInAMusiciansWords) {
    editing::CarriedState carried;
    carried.metas = {{0, 0x51, {0x09, 0x27, 0xC0}}, {0, 0x58, {6, 3, 24, 8}}, {0, 0x59, {2, 0}}};
    for (const auto& [status, data1, data2] :
         std::vector<std::array<std::uint8_t, 3>>{{0xB3, 0, 8},
                                                  {0xB3, 32, 34},
                                                  {0xC3, 24, 0},
                                                  {0xB3, 101, 0},
                                                  {0xB3, 100, 0},
                                                  {0xB3, 6, 12},
                                                  {0xB3, 38, 1},
                                                  {0xB3, 99, 1},
                                                  {0xB3, 98, 8},
                                                  {0xB3, 6, 70},
                                                  {0xB3, 99, 127},
                                                  {0xB3, 98, 127},
                                                  {0xB3, 6, 1},
                                                  {0xB3, 7, 96},
                                                  {0xB3, 7, 96},
                                                  {0xE3, 1, 65},
                                                  {0xD3, 9, 0},
                                                  {0xA3, 60, 5},
                                                  {0xC9, 0, 0}}) {
        carried.behind.push_back({0, status, data1, data2});
    }
    const auto name = [](std::uint8_t channel, std::optional<std::uint8_t> msb,
                         std::optional<std::uint8_t> lsb, std::uint8_t program) {
        return channel == 9 ? std::string()
                            : "Voice " + std::to_string(*msb) + "/" + std::to_string(*lsb) + "/" +
                                  std::to_string(program);
    };
    EXPECT_EQ(CarriedWords(carried, name, Language::English).join(u'\n').toStdString(),
              "Tempo 100\nMetre 6/8\nKey\n"
              "Channel 4: Voice 8/34/24, Bend range 12, Parameter 1/8: 70, Volume 96, "
              "Pitch bend 129, Channel pressure 9, Key pressure\nChannel 10: Program 1");
}

TEST_F(RangeFormsTest, PreviewPlaysTheSeamAndLeavesEverythingAsItWas) {
    session::Transport& controls = form_->Session().Controls();
    controls.SetLoop(kMeasure, 4 * kMeasure);
    controls.MoveToTick(5 * kMeasure);
    Trigger("MME_RangeDelete");
    Type("E_SourceFromMeasure", "3:1");
    Type("E_SourceToMeasure", "5:1");
    auto* preview = In<QPushButton>("Btn_Preview");
    const auto expectHeard = [&](std::int32_t from, std::int32_t to) {
        EXPECT_TRUE(controls.Heard() && controls.Playing());
        ASSERT_TRUE(controls.Loop());
        EXPECT_EQ(controls.Loop()->startTick, from);
        EXPECT_EQ(controls.Loop()->endTick, to);
        EXPECT_EQ(preview->text().toStdString(), "Stop &Preview");
    };
    const auto expectAsBefore = [&] {
        EXPECT_FALSE(controls.Heard() || controls.Playing());
        EXPECT_EQ(controls.Loop()->startTick, kMeasure);
        EXPECT_EQ(controls.Tick(), 5 * kMeasure);
        EXPECT_EQ(Encoded(), before_);
        EXPECT_FALSE(form_->Session().Modified());
    };
    preview->click();
    expectHeard(kMeasure, 3 * kMeasure);
    QTest::qWait(700); // the ports are looked at meanwhile
    expectHeard(kMeasure, 3 * kMeasure);
    Type("E_SourceFromMeasure", "4:1"); // another seam, without stopping
    EXPECT_TRUE(QTest::qWaitFor([&] { return controls.Loop()->startTick == 2 * kMeasure; }));
    expectHeard(2 * kMeasure, 4 * kMeasure);
    preview->click();
    expectAsBefore();
    EXPECT_EQ(preview->text().toStdString(), "&Preview");
    preview->click();
    Trigger("MMP_PlayStop"); // the player's own button ends it too
    expectAsBefore();
    preview->click();
    In<QPushButton>("Btn_ToolTranspose")->click();
    expectAsBefore();
    In<QPushButton>("Btn_Preview")->click();
    EXPECT_EQ(controls.Loop()->endTick, 4 * kMeasure);
    Ok()->click();
    EXPECT_FALSE(controls.Heard());
    EXPECT_EQ(Caption("MME_Undo"), "&Undo - transpose range");
}

TEST_F(RangeFormsTest, CopyingAndTransposingNameWhatTheyDo) {
    Trigger("MME_RangeCopy");
    Type("E_SourceFromMeasure", "7");
    Type("E_SourceToMeasure", "8");
    Type("E_DestMeasure", "3:01");
    ExpectFigures(
        "2 notes come, the song grows by 0:02\n1 note ends there\n"
        "1 note starts again\n4 settings carried over\n"
        "Channel 1: Clavi, Volume 80, Electric Piano 2, Volume 100\n");
    Ok()->click();
    EXPECT_EQ(Caption("MME_Undo"), "&Undo - copy range");
    Trigger("MME_RangeTranspose");
    Type("E_SourceFromMeasure", "2");
    Type("E_SourceToMeasure", "4");
    Type("E_Semitones", "-70");
    ExpectFigures(
        "3 notes on 2 channels\n3 notes have to be folded by octaves\n"
        "2 notes stay\n");
    EXPECT_EQ(In<QTableWidget>("Grid_Transpose")->rowCount(), 3);
    Type("E_Semitones", "1");
    auto* semitones = In<NumberField>("E_Semitones");
    QTest::keyClick(semitones, Qt::Key_Down);
    QTest::keyClick(semitones, Qt::Key_Down);
    EXPECT_EQ(Field("E_Semitones"), "-1");
    for (int step = 0; step < 3; ++step) {
        QTest::keyClick(semitones, Qt::Key_Up);
    }
    EXPECT_EQ(Field("E_Semitones"), "+2");
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return Moves(0) == "1|Electric Piano 2|2|C#3 – F3|→|D#3 – G3";
    })) << Moves(0);
    EXPECT_EQ(Moves(2), "10||2|drums||stay as they are");
    In<QRadioButton>("RB_OnlyOnChannel")->click();
    auto* list = In<QComboBox>("CB_OnlyOnChannel");
    EXPECT_EQ(list->count(), 15);
    EXPECT_EQ(list->itemText(9).left(5).toStdString(), "11 - ");
    list->setCurrentIndex(3);
    emit list->activated(3);
    EXPECT_EQ(Ok()->text().toStdString(), "T&ranspose Channel 4 by +2");
    {
        BoxAnswer box("Btn_Ok");
        list->setCurrentIndex(9);
        emit list->activated(9);
        EXPECT_EQ(box.text, "This MIDI channel can't be transposed.");
    }
    // This entry names channel 11 and stands for channel 10.
    EXPECT_EQ(Ok()->text().toStdString(), "T&ranspose Channel 10 by +2");
    const auto copied = Encoded();
    {
        BoxAnswer no("Btn_No");
        Ok()->click();
        EXPECT_EQ(no.text, "With this entry (11) the notes of channel 10 are transposed. Go on?");
    }
    EXPECT_EQ(Encoded(), copied);
    EXPECT_NE(Window(), nullptr);
    list->setCurrentIndex(3);
    emit list->activated(3);
    Ok()->click();
    EXPECT_EQ(Caption("MME_Undo"), "&Undo - transpose range");
    EXPECT_NE(Encoded(), copied);
    // Another song ends both the window and what could be undone.
    Trigger("MME_RangeDelete");
    BoxAnswer discard("Btn_Discard");
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    EXPECT_EQ(Window(), nullptr);
    EXPECT_FALSE(Find<QAction>("MME_Undo")->isEnabled());
}

} // namespace
} // namespace tracksmith::forms
