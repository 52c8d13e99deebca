#include "app/session/session.h"

#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "app/session/session_fixture.h"
#include "song/song_position.h"

namespace tracksmith::session {
namespace {

using namespace test;
using Told = std::vector<std::string>;

class SessionTest : public SessionFixture {};

TEST_F(SessionTest, AnEditStopsEditsAndPlaysOnAtTheSamePlace) {
    Open(ThreeNotes());
    session.Controls().Play();
    EXPECT_EQ(Hear(1'050), (std::vector{60, 60}));
    told.clear();
    EXPECT_TRUE(ChangeWhole());
    EXPECT_EQ(told, (Told{"stop", "play", "song Trial"}));
    EXPECT_TRUE(session.Modified());
    EXPECT_EQ(session.Controls().Ms(), 1'050);
    EXPECT_EQ(Hear(1'000), std::vector{61});
    told.clear();
    session.Change(kSmallEdit, host, Raise); // a kind that does not play on
    EXPECT_EQ(told, (Told{"stop", "song Small"}));
    EXPECT_FALSE(session.Controls().Playing());
}

TEST_F(SessionTest, AnEditThatChangesNothingLeavesNoTrace) {
    Open(ThreeNotes());
    EXPECT_FALSE(session.Change(kWholeEdit, host, [](Workspace&) { return false; }));
    EXPECT_FALSE(session.Modified());
    EXPECT_FALSE(session.LastChange().Available());
}

TEST_F(SessionTest, WhileAnotherSongIsAwaitedThisOneCanOnlyBeReplaced) {
    Open(ThreeNotes());
    const Bytes before = Saved();
    session.Controls().Play();
    session.SetAwaitsSong(true);
    EXPECT_TRUE(session.RefusesChange());
    EXPECT_THROW(ChangeWhole(), EMidiError);
    EXPECT_EQ(host.messages.back(), session.WhyNoChange()->english);
    EXPECT_TRUE(session.Controls().Playing());
    EXPECT_EQ(Saved(), before);
    Open(ThreeNotes(72));
    session.SetAwaitsSong(false);
    EXPECT_EQ(session.WhyNoChange(), nullptr);
    EXPECT_TRUE(ChangeWhole());
}

TEST_F(SessionTest, AFailedEditLeavesTheSongAsItWas) {
    Open(ThreeNotes());
    const Bytes before = Saved();
    session.Controls().Play();
    EXPECT_EQ(Hear(10), std::vector{60});
    EXPECT_THROW(session.Change(kWholeEdit, host,
                                [](Workspace& work) -> bool {
                                    Raise(work);
                                    song::RemoveEvent(work.song, work.song.tracks[1],
                                                      work.song.tracks[1].first->next);
                                    throw std::runtime_error("no");
                                }),
                 std::runtime_error);
    EXPECT_EQ(Saved(), before);
    EXPECT_EQ(song::CheckSong(session.Song()), "");
    EXPECT_FALSE(session.Modified());
    EXPECT_TRUE(session.Controls().Playing());
    EXPECT_EQ(Hear(1'500), std::vector{60});
}

// Everything that depends on the song is found again: times, zones, the place and what is played.
TEST_F(SessionTest, TimesAndCursorsFollowAnEdit) {
    Open(ThreeNotes());
    session.Controls().MoveToTick(1'000);
    session.Change(kSmallEdit, host, [](Workspace& work) {
        song::Track& track = work.song.tracks[0];
        constexpr std::array<std::uint8_t, 3> kTempo{0x0F, 0x42, 0x40}; // half as fast
        song::InsertByTick(track,
                           song::NewMetaEvent(work.song.pool, 1'000, song::kMetaTempo, kTempo));
        return true;
    });
    EXPECT_EQ(song::CheckSong(session.Song()), "");
    EXPECT_EQ(session.Controls().Tick(), 1'000);
    EXPECT_EQ(session.Controls().Bpm(), 60);
    session.Controls().Play();
    EXPECT_EQ(Hear(1'900), std::vector{60});
    EXPECT_EQ(Hear(200), std::vector{60});
}

// A driver that does not return from a call, until it is let go.
class HangingDriver {
public:
    explicit HangingDriver(RecordingDriver& driver) : driver_(driver) {
        driver_.onMessage = [this] {
            std::unique_lock lock(mutex_);
            hangs_ = true;
            changed_.notify_all();
            changed_.wait(lock, [this] { return free_; });
        };
    }
    void WaitUntilItHangs() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return hangs_; });
    }
    void LetGo() {
        const std::lock_guard lock(mutex_);
        free_ = true;
        changed_.notify_all();
    }

private:
    RecordingDriver& driver_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool hangs_ = false;
    bool free_ = false;
};

TEST_F(SessionTest, NothingIsChangedWhileADriverHangs) {
    Open(ThreeNotes());
    const Bytes before = Saved();
    HangingDriver hanging(driver);
    session.Controls().Play();
    hanging.WaitUntilItHangs();
    for (const ChangeKind& kind : {kWholeEdit, kReplaceSong, kTakeBack}) {
        host.messages.clear();
        EXPECT_THROW(session.Change(kind, host,
                                    [](Workspace& work) {
                                        song::ClearSong(work.song);
                                        return true;
                                    }),
                     EMidiError);
        ASSERT_EQ(host.messages.size(), 1U) << kind.name.english;
        EXPECT_NE(host.messages[0].find("Keyboard"), std::string::npos) << host.messages[0];
        EXPECT_EQ(Saved(), before);
    }
    session.Controls().SetBpm(90);
    session.Controls().MoveToTick(500);
    session.Controls().SetLoop(0, 1'000);
    hanging.LetGo();
    for (int i = 0; i < 200 && !session.Controls().Stop(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ASSERT_TRUE(session.Controls().Stop());
    driver.onMessage = nullptr;
    EXPECT_TRUE(session.Change(kReplaceSong, host, [](Workspace& work) {
        Decode(work, ThreeNotes(70));
        return true;
    }));
    session.Controls().SetBpm(240);
    AwaitSending();
    driver.Take();
    session.Controls().Play();
    EXPECT_EQ(Hear(1'200), (std::vector{70, 70, 70}));
}

TEST_F(SessionTest, APracticeTempoIsNoEdit) {
    Open(ThreeNotes());
    const Bytes file = Saved();
    session.Controls().SetTempoPercent(80);
    EXPECT_TRUE(session.Modified()); // saving would store it
    EXPECT_EQ(session.Controls().Bpm(), 96);
    ChangeWhole();
    EXPECT_EQ(session.Controls().Bpm(), 96); // also behind an edit, which saw the file's tempo
    session.Controls().ResetTempo();
    session.TakeBackLastChange(host);
    EXPECT_FALSE(session.Modified());
    EXPECT_EQ(Saved(), file);
}

TEST_F(SessionTest, TheSavedTempoIsTheFilesFromThenOn) {
    Open(ThreeNotes());
    session.Controls().SetBpm(100);
    session.Controls().MoveToTick(700);
    session.MarkSaved("saved.mid", SaveFormat::Format0);
    EXPECT_FALSE(session.Modified());
    EXPECT_EQ(session.Controls().TempoPercent(), 100);
    EXPECT_EQ(session.Controls().Bpm(), 100);
    EXPECT_EQ(session.Controls().Tick(), 700);
    session.Controls().SetBpm(50);
    session.Controls().ResetTempo();
    EXPECT_EQ(session.Controls().Bpm(), 100);
    EXPECT_EQ(session.Work().file.format, SaveFormat::Format0);
    EXPECT_EQ(session.Work().file.name, "saved.mid");
}

TEST_F(SessionTest, AChangeOfTheFileByOthersIsNoticed) {
    const TemporaryFolder folder;
    PutFile(folder / "song.mid", ThreeNotes());
    FileState state = LoadedFile(folder / "song.mid", true);
    EXPECT_TRUE(state.name.empty()); // the demo song is saved elsewhere
    EXPECT_FALSE(state.ChangedOnDisk());
    PutFile(folder / "song.mid", Bytes(3));
    EXPECT_TRUE(state.ChangedOnDisk());
    state.stamp = StampOf(state.source);
    EXPECT_FALSE(state.ChangedOnDisk());
    std::filesystem::remove(folder / "song.mid");
    EXPECT_TRUE(state.ChangedOnDisk());
}

} // namespace
} // namespace tracksmith::session
