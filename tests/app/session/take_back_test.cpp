#include "app/session/take_back.h"

#include <functional>

#include "support/failing_allocation.h"

#include "app/session/session_fixture.h"

namespace tracksmith::session {
namespace {

using namespace test;

class TakeBackTest : public SessionFixture {};

TEST_F(TakeBackTest, GoesBackAndForth) {
    Open(ThreeNotes());
    const Bytes before = Saved();
    session.TakeBackLastChange(host); // nothing to take back
    ChangeWhole();
    ChangeWhole();
    const Bytes twice = Saved();
    EXPECT_EQ(session.LastChange().Name().english, "Trial");
    session.TakeBackLastChange(host);
    EXPECT_TRUE(session.LastChange().Taken());
    EXPECT_TRUE(session.Modified()); // by the first of the two
    EXPECT_NE(Saved(), before);
    session.TakeBackLastChange(host);
    EXPECT_FALSE(session.LastChange().Taken());
    EXPECT_EQ(Saved(), twice);
    EXPECT_FALSE(session.LastChange().Touched());
    session.MarkModified();
    EXPECT_TRUE(session.LastChange().Touched());
    session.TakeBackLastChange(host);
    EXPECT_FALSE(session.LastChange().Touched());
    EXPECT_EQ(song::CheckSong(session.Song()), "");
}

TEST_F(TakeBackTest, KnowsWhetherTheSongIsThatOfTheFile) {
    Open(ThreeNotes());
    ChangeWhole();
    session.TakeBackLastChange(host);
    EXPECT_FALSE(session.Modified());
    session.TakeBackLastChange(host);
    EXPECT_TRUE(session.Modified());
    session.MarkSaved("start.mid", SaveFormat::AsSong);
    session.TakeBackLastChange(host); // now the older state differs from the file
    EXPECT_TRUE(session.Modified());
    session.TakeBackLastChange(host);
    EXPECT_FALSE(session.Modified());
}

TEST_F(TakeBackTest, EndsWithAnotherSongAndWithAnotherEdit) {
    Open(ThreeNotes());
    ChangeWhole();
    Open(ThreeNotes(70));
    EXPECT_FALSE(session.LastChange().Available());
    ChangeWhole();
    session.Change(kSmallEdit, host, Raise);
    EXPECT_FALSE(session.LastChange().Available());
    EXPECT_EQ(session.LastChange().Bytes(), 0U);
}

TEST_F(TakeBackTest, AStepOfLoadingIsDecodedAgain) {
    const Bytes file = ThreeNotes();
    Open(file);
    session.Options().sysexOptions.defaultTrack = 7;
    std::vector<bool> asked;
    session.OfferTakingBackLoadStep(kPrepareSong.name,
                                    [&](Workspace& work, bool withStep, MessageHost&) {
                                        EXPECT_EQ(work.sysexOptions.defaultTrack, 7);
                                        asked.push_back(withStep);
                                        Decode(work, ThreeNotes(withStep ? 60 : 50));
                                    });
    session.Controls().Play();
    EXPECT_EQ(Hear(500), std::vector{60});
    session.TakeBackLastChange(host);
    EXPECT_EQ(Hear(1'000), std::vector{50});
    session.TakeBackLastChange(host);
    EXPECT_EQ(Hear(1'000), std::vector{60});
    EXPECT_EQ(asked, (std::vector{false, true}));
    EXPECT_EQ(Saved(), (Open(file), Saved()));
}

TEST_F(TakeBackTest, AFailureKeepsTheSongInMemory) {
    Open(ThreeNotes());
    const Bytes before = Saved();
    session.OfferTakingBackLoadStep(kPrepareSong.name,
                                    [](Workspace&, bool, MessageHost&) { throw std::bad_alloc(); });
    EXPECT_THROW(session.TakeBackLastChange(host), EMidiError);
    EXPECT_EQ(host.messages, std::vector<std::string>{"Error allocating memory!"});
    EXPECT_EQ(Saved(), before);
    EXPECT_FALSE(session.LastChange().Taken());
}

// Whichever allocation fails, the song is as before or as after, and what is offered to be taken
// back is the other one.
TEST_F(TakeBackTest, NoFailingAllocationLosesTheSong) {
    Open(ThreeNotes());
    const Bytes before = Saved();
    ChangeWhole();
    const Bytes after = Saved();
    const std::vector<std::function<void()>> steps{[this] { ChangeWhole(); },
                                                   [this] { session.TakeBackLastChange(host); }};
    int failures = 0;
    for (std::size_t step = 0; step < steps.size(); ++step) {
        for (int index = 0; index < 60; ++index) {
            Open(ThreeNotes());
            if (step == 1) {
                ChangeWhole();
            }
            try {
                const FailingAllocation failing(index);
                steps[step]();
            } catch (const std::exception&) {
                ++failures;
            }
            EXPECT_EQ(song::CheckSong(session.Song()), "");
            const Bytes now = Saved();
            EXPECT_TRUE(now == before || now == after) << step << " " << index;
            if (session.LastChange().Available()) {
                session.TakeBackLastChange(host);
                EXPECT_EQ(Saved(), now == before ? after : before) << step << " " << index;
            }
        }
    }
    EXPECT_GT(failures, 5);
}

} // namespace
} // namespace tracksmith::session
