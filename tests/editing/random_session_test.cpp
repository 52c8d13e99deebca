#include "app/session/session_fixture.h"
#include "editing/random_music.h"
#include "editing/range_tools.h"
#include "mixer/mixer.h"

namespace tracksmith::editing {
namespace {

using namespace test;

/// Tools, undoing, taking back, transposing and sliders in any order; what can be undone must come
/// back byte by byte, whatever has happened since.
class RandomSessionTest : public SessionFixture {
protected:
    // The song without what the mixer moves.
    Bytes Stored() {
        const int moved = mixer.Transposing().song;
        EXPECT_TRUE(mixer.TransposeChange(0));
        const Bytes bytes = Saved();
        EXPECT_TRUE(mixer.TransposeChange(moved));
        return bytes;
    }
    PositionText Position(Dice& dice) {
        return SplitPosition(std::to_string(1 + dice.Roll(12)) + ":" +
                             std::to_string(1 + dice.Roll(4)));
    }
    void RunTool(Dice& dice) {
        const RangeWish wish{RangeTool::Copy, Position(dice), Position(dice), Position(dice)};
        const Bytes former = Stored();
        const UndoTool tag = undo.Tag();
        try {
            switch (dice.Roll(3)) {
                case 0:
                    tools.Delete(wish);
                    break;
                case 1:
                    tools.Copy(wish, dice.Roll(2) == 0);
                    break;
                default:
                    tools.Transpose(
                        wish,
                        {std::to_string(dice.Roll(30) - 15), {}, "", mixer.Transposing(), {}});
            }
            before = former;
        } catch (const EMidiError&) {
            EXPECT_EQ(Stored(), former);
            EXPECT_EQ(undo.Tag(), tag);
        }
    }
    void UndoIt() {
        if (undo.MME_UndoClick(host)) {
            EXPECT_EQ(Stored(), before);
            session.TakeBackLastChange(host);
            session.TakeBackLastChange(host);
            EXPECT_EQ(Stored(), before);
        }
    }
    void Step(Dice& dice) {
        switch (dice.Roll(6)) {
            case 0:
                UndoIt();
                break;
            case 1:
                EXPECT_TRUE(mixer.TransposeChange(dice.Roll(7) - 3));
                break;
            case 2:
                mixer.Move(static_cast<std::size_t>(dice.Roll(2)), mixer::Control::Volume,
                           dice.Roll(128));
                break;
            default:
                RunTool(dice);
        }
    }

    mixer::Mixer mixer{session};
    Undo undo{session};
    RangeTools tools{session, undo, host};
    Bytes before;
};

TEST_F(RandomSessionTest, WhatIsUndoneComesBackByteByByte) {
    host.answer = true;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        Open(RandomMusic(dice));
        for (int step = 0; step < 12; ++step) {
            Step(dice);
            ASSERT_EQ(song::CheckSong(session.Song()), "");
        }
    }
}

} // namespace
} // namespace tracksmith::editing
