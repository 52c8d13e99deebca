#include <array>

#include <QAccessible>
#include <QHelpEvent>
#include <QScreen>
#include <QSpinBox>
#include <QTest>
#include <QToolTip>

#include "app/forms/form_fixture.h"
#include "app/forms/overview/overview_widget.h"
#include "app/session/transport.h"

namespace tracksmith::forms {
namespace {

class OverviewTest : public FormTest {
protected:
    void SetUp() override {
        FormTest::SetUp();
        form_->OpenMidiFile(Write("waltz.mid", Waltz()));
        QApplication::processEvents();
        overview_ = Find<OverviewWidget>("Overview");
    }

    /// The middle of a cell; the channels in use, 3 and 10, have the rows 0 and 1.
    QPoint Cell(std::size_t row, int column) const {
        const OverviewGeometry geometry = overview_->Geometry();
        return QPointF(geometry.X(column + 0.5), geometry.Y(row) + geometry.RowHeight() / 2)
            .toPoint();
    }
    QColor Pixel(std::size_t row, int column) const {
        return overview_->grab().toImage().pixelColor(Cell(row, column));
    }

    OverviewWidget* overview_ = nullptr;
};

TEST_F(OverviewTest, OnlyCellsWithNotesHaveTheirChannelsColour) {
    // Channel 3 plays in measures 1 to 2, channel 10 in measure 3 (from tick 2,880).
    EXPECT_EQ(overview_->ColumnCount(), 3);
    EXPECT_EQ(overview_->Geometry().channels, (std::vector<int>{2, 9}));
    EXPECT_EQ(Pixel(0, 2), Pixel(1, 1));
    EXPECT_NE(Pixel(0, 1), Pixel(1, 1));
    EXPECT_NE(Pixel(1, 2), Pixel(0, 2));
    EXPECT_NEAR(Pixel(0, 1).hslHue(), ChannelColour(2, overview_->palette()).hslHue(), 8);
}

TEST_F(OverviewTest, ChosenChannelStandsOut) {
    const QColor before = Pixel(0, 1);
    Find<QAbstractButton>("Btn_Channel09")->click();
    EXPECT_LT(Pixel(0, 1).lightness(), before.lightness());
    overview_->SetCursorColumn(2);
    EXPECT_EQ(LabelText("Lbl_NotesHere"), "1");
    Find<QAbstractButton>("Btn_Channel02")->click(); // instead
    EXPECT_FALSE(Find<QAbstractButton>("Btn_Channel09")->isChecked());
    EXPECT_EQ(LabelText("Lbl_NotesHere"), "0");
    Find<QAbstractButton>("Btn_Channel02")->click();
    EXPECT_EQ(Pixel(0, 1), before);
}

struct Move {
    Qt::Key key;
    int from;
    int to;
};

TEST_F(OverviewTest, KeysMoveTheCursorAndTheDisplayFollows) {
    for (const Move& move : {Move{Qt::Key_Right, 0, 1}, Move{Qt::Key_Right, 2, 2},
                             Move{Qt::Key_Left, 1, 0}, Move{Qt::Key_Left, 0, 0}}) {
        overview_->SetCursorColumn(move.from);
        QTest::keyClick(overview_, move.key);
        EXPECT_EQ(overview_->CursorColumn(), move.to) << move.key << " from " << move.from;
        EXPECT_EQ(LabelText("Lbl_Position"), form_->SongPositionToMTC(move.to * 1440));
    }
    QTest::mouseClick(overview_, Qt::LeftButton, {}, Cell(0, 1));
    EXPECT_EQ(LabelText("Lbl_Time"), "0:01 / 0:03");
    EXPECT_EQ(LabelText("Lbl_TimeSignature"), "3/4");
    EXPECT_EQ(Find<QSpinBox>("E_Tempo")->value(), 100);
    EXPECT_EQ(LabelText("Lbl_NotesHere"), "2");
}

TEST_F(OverviewTest, ChoosingATempoMovesTheCursorThere) {
    Find<QTableView>("Table_Tempos")->selectRow(1);
    EXPECT_EQ(overview_->CursorColumn(), 1);
}

TEST_F(OverviewTest, DraggingDrawsALoopOverWholeMeasures) {
    const std::array still{Pixel(1, 0), Pixel(1, 1), Pixel(1, 2)};
    const auto drag = [&](int from, int to) {
        QTest::mousePress(overview_, Qt::LeftButton, {}, Cell(0, from));
        QTest::mouseMove(overview_, Cell(0, to));
        QMouseEvent moved(QEvent::MouseMove, Cell(0, to), overview_->mapToGlobal(Cell(0, to)),
                          Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(overview_, &moved);
        // Seen before the button is let go: the columns dragged over, and only they.
        for (int column = 0; column < 3; ++column) {
            EXPECT_EQ(Pixel(1, column) != still.at(static_cast<std::size_t>(column)), column != 2)
                << column;
        }
        QTest::mouseRelease(overview_, Qt::LeftButton, {}, Cell(0, to));
    };
    drag(1, 0);
    const auto& loop = form_->Session().Controls().Loop();
    ASSERT_TRUE(loop);
    EXPECT_EQ(loop->startTick, 0);
    EXPECT_EQ(loop->endTick, 2880);
    EXPECT_TRUE(loop->on);
    EXPECT_NE(Pixel(1, 0), still[0]);
    EXPECT_EQ(form_->Session().Controls().Tick(), 0); // a drag is no seek
}

TEST_F(OverviewTest, OnlyTheLeftButtonSeeksAndOnlyInTheSongThatItWasPressedIn) {
    QTest::mouseClick(overview_, Qt::RightButton, {}, Cell(0, 1));
    EXPECT_EQ(overview_->CursorColumn(), 0);
    QTest::mousePress(overview_, Qt::LeftButton, {}, Cell(0, 2));
    QTest::mouseClick(overview_, Qt::RightButton, {}, Cell(0, 1)); // while the left one is held
    EXPECT_EQ(overview_->CursorColumn(), 0);
    form_->OpenMidiFile(Path("waltz.mid"));
    QTest::mouseRelease(overview_, Qt::LeftButton, {}, Cell(0, 2));
    EXPECT_EQ(overview_->CursorColumn(), 0);
    overview_->SetCursorColumn(2);
    QTest::mouseClick(overview_, Qt::LeftButton, {}, Cell(0, 0));
    EXPECT_EQ(overview_->CursorColumn(), 0);
}

// Only where the place was and is the overview is painted anew: the screen must look as if all of
// it were.
TEST_F(OverviewTest, ThePlaceLeavesNoTrace) {
    EXPECT_TRUE(QTest::qWaitForWindowExposed(form_.get()));
    const OverviewGeometry geometry = overview_->Geometry();
    const QRect inside = geometry.cells.united(geometry.measureRuler).toRect();
    const QPoint corner = overview_->mapTo(form_.get(), inside.topLeft());
    for (const int tick : {1439, 1440, 2100, 2879, 1500, 2950, 30}) {
        form_->Session().Controls().MoveToTick(tick);
        QApplication::processEvents();
        const QPixmap seen = form_->screen()->grabWindow(form_->winId(), corner.x(), corner.y(),
                                                         inside.width(), inside.height());
        EXPECT_EQ(seen.toImage().convertToFormat(QImage::Format_RGB32),
                  overview_->grab(inside).toImage().convertToFormat(QImage::Format_RGB32))
            << tick;
    }
}

TEST_F(OverviewTest, ToolTipNamesMeasureChannelAndNotes) {
    const QPoint at = Cell(0, 1);
    QHelpEvent hover(QEvent::ToolTip, at, overview_->mapToGlobal(at));
    QApplication::sendEvent(overview_, &hover);
    EXPECT_EQ(QToolTip::text().toStdString(), "Measure 2 · Channel 3 · 2 notes");
    QToolTip::hideText();
}

TEST_F(OverviewTest, ScreenReadersSeeTheCursorAsAValue) {
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(overview_);
    ASSERT_NE(spoken, nullptr);
    ASSERT_NE(spoken->valueInterface(), nullptr);
    EXPECT_EQ(spoken->text(QAccessible::Name).toStdString(), "Note overview");
    EXPECT_EQ(spoken->valueInterface()->maximumValue().toInt(), 3);
    spoken->valueInterface()->setCurrentValue(2);
    EXPECT_EQ(overview_->CursorColumn(), 1);
    EXPECT_EQ(spoken->text(QAccessible::Value).toStdString(), "Measure 2 · 2 notes");
}

TEST(OverviewSceneTest, TicksFindTheirColumnAlsoOutsideTheSong) {
    song::NoteOverview notes;
    notes.notes[0].resize(2);
    notes.columnTick = {0, 1000, 3000};
    for (const auto& [tick, column] :
         {std::pair(-5, 0.0), std::pair(0, 0.0), std::pair(500, 0.5), std::pair(1000, 1.0),
          std::pair(2000, 1.5), std::pair(9000, 2.0)}) {
        EXPECT_DOUBLE_EQ(ColumnOfTick(notes, tick), column) << tick;
    }
    EXPECT_DOUBLE_EQ(ColumnOfTick(song::NoteOverview(), 77), 0);
}

} // namespace
} // namespace tracksmith::forms
