#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "player_fixture.h"

#include "song/shared_byte.h"

namespace tracksmith::test {
namespace {

using namespace std::chrono_literals;

// With the real clock and thread: whatever the moment, a Stop ends the passes.
TEST(ThreadTest, AStopIsNeverLost) {
    std::atomic<std::int64_t> passes = 0;
    std::atomic<bool> stopped = true;
    const auto pass = [&](player::PassState&) -> std::int64_t {
        EXPECT_FALSE(stopped);
        ++passes;
        return 0;
    };
    player::TMidiPlayerThread thread(std::make_shared<player::SteadyStopwatch>(), pass, {});
    thread.Start();
    for (int i = 0; i < 20'000; ++i) {
        const std::int64_t passesBefore = passes;
        stopped = false;
        ASSERT_TRUE(thread.AllowPasses());
        while (i % 100 == 0 && passes == passesBefore) {
            std::this_thread::yield();
        }
        for (int spin = i % 64; spin > 0; --spin) {
            static_cast<void>(thread.State());
        }
        ASSERT_TRUE(thread.Passes().Forbid(10s).ended);
        stopped = true;
        ASSERT_EQ(thread.State(), player::kStateStopped);
    }
}

/// A thread whose passes hang in a driver until they are let go.
struct HangingThread {
    std::atomic<bool> hang = true;
    std::atomic<int> inside = 0;
    std::atomic<int> goneOn = 0;
    std::atomic<int> freed = 0;
    player::TMidiPlayerThread thread{std::make_shared<player::SteadyStopwatch>(),
                                     [this](player::PassState& pass) { return Pass(pass); },
                                     [this] { ++freed; }};

    std::int64_t Pass(player::PassState& pass) {
        pass.EnterDriver();
        ++inside;
        while (hang) {
            std::this_thread::sleep_for(1ms);
        }
        goneOn += pass.LeaveDriver() ? 1 : 0;
        return player::Stopwatch::kForever;
    }
    void Hang() {
        hang = true;
        const int before = inside;
        thread.Start();
        EXPECT_TRUE(thread.AllowPasses());
        Until([&] { return inside > before; });
    }
    template <typename Done>
    static void Until(Done done) {
        while (!done()) {
            std::this_thread::sleep_for(1ms);
        }
    }
};

// A pass that hangs in a driver cannot hang Stop, and its late end does not start playing again.
TEST(ThreadTest, StopWaitsForAPassButNotForEver) {
    HangingThread hanging;
    player::PassState& passes = hanging.thread.Passes();
    hanging.Hang();
    EXPECT_FALSE(passes.Stuck());
    const player::PassState::Halt halt = passes.Forbid(20ms);
    EXPECT_TRUE(!halt.ended && !halt.free && halt.wasPlaying);
    EXPECT_TRUE(passes.Stuck());
    // It is not waited for twice.
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(passes.Forbid(10s).free);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    hanging.hang = false;
    HangingThread::Until([&] { return hanging.freed == 1; });
    EXPECT_EQ(hanging.goneOn, 1);
    EXPECT_FALSE(passes.Stuck());
    EXPECT_TRUE(passes.Forbid(10s).ended);
    EXPECT_EQ(hanging.thread.State(), player::kStateStopped);
}

// Once it is given up it finds that out when the driver returns, and the next ones are not.
TEST(ThreadTest, AGivenUpPassDoesNotGoOn) {
    HangingThread hanging;
    hanging.Hang();
    const player::PassState::Halt halt = hanging.thread.Passes().Forbid(1ms, true);
    EXPECT_TRUE(!halt.ended && halt.free);
    EXPECT_TRUE(hanging.thread.Passes().Forbid(1ms).free);
    hanging.hang = false;
    HangingThread::Until([&] { return hanging.freed == 1; });
    EXPECT_EQ(hanging.goneOn, 0);
    hanging.Hang();
    hanging.hang = false;
    EXPECT_TRUE(hanging.thread.Passes().Forbid(10s, true).ended);
    EXPECT_EQ(hanging.goneOn, 1);
}

TEST(ThreadTest, RealClockNeverWakesEarly) {
    player::SteadyStopwatch stopwatch;
    stopwatch.PrepareThread();
    for (int i = 0; i < 300; ++i) {
        const std::int64_t deadline = stopwatch.ElapsedUs() + i * 7;
        stopwatch.SleepUntil(deadline);
        EXPECT_GE(stopwatch.ElapsedUs(), deadline);
    }
    stopwatch.Wake();
    stopwatch.SleepUntil(player::Stopwatch::kForever);
}

// Everything that the owner's thread may do, at random moments while the playback thread plays, for
// as many seconds as TRACKSMITH_STRESS_SECONDS says.
TEST(ThreadTest, StressFromTheOwnersThread) {
    TrackBuilder notes;
    for (int i = 0; i < 20'000; ++i) {
        notes.Note(1, i % 16, i % 128, 64).Short(0, 0xB0 | (i % 16), 7, i % 128);
        notes.NoteOff(1, i % 16, i % 128);
    }
    DecodedSong decoded(MillisecondFile()
                            .Track(TrackBuilder().Tempo(0, 500'000).Tempo(900, 400'000).End())
                            .Track(notes.End())
                            .Track(notes)
                            .Build());
    decoded.Timed();
    RecordingDriver driver({"Keyboard", "Module"});
    RecordingMessageHost host;
    SoundingNotes sounding;
    const auto collect = [&] {
        for (const Received& message : driver.Take()) {
            sounding.Take(message);
        }
    };
    player::TMidiPlayer player(decoded.song);
    player.FormCreate({{{&driver, false}}, nullptr, "", host, 10s});
    ASSERT_TRUE(player.SongLoaded());
    Dice dice(5);
    player::ChannelRoutes routes = player.Routes().Routes();
    const char* seconds = std::getenv("TRACKSMITH_STRESS_SECONDS");
    const auto end = std::chrono::steady_clock::now() +
                     std::chrono::seconds(seconds == nullptr ? 2 : std::atoi(seconds));
    while (std::chrono::steady_clock::now() < end) {
        const auto channel = static_cast<std::size_t>(dice.Roll(16));
        switch (dice.Roll(14)) {
            case 0:
                EXPECT_TRUE(player.Stop());
                // On a busy machine a port may have been taken for lost.
                player.CheckPorts();
                collect();
                EXPECT_EQ(sounding.Count(), 0U);
                break;
            case 1:
                EXPECT_TRUE(player.MoveToTimePosition(dice.Roll(30'000)));
                break;
            case 2:
                EXPECT_TRUE(player.SetTempoOffset(dice.Roll(300) - 100));
                break;
            case 3:
                player.SetChannelMuted(channel, dice.Roll(2) == 0);
                break;
            case 4:
                player.SetChannelSolo(channel, dice.Roll(4) == 0);
                break;
            case 5:
                EXPECT_TRUE(player.SetTrackMuted(1, dice.Roll(2) == 0));
                break;
            case 6:
                routes[channel] = {static_cast<std::size_t>(dice.Roll(2)),
                                   static_cast<std::uint8_t>(dice.Roll(16))};
                EXPECT_TRUE(player.SetRoutes(routes));
                break;
            case 7:
                driver.SetPresent("Module", false);
                player.CheckPorts();
                collect();
                sounding.Forget("Module");
                driver.SetPresent("Module", true);
                player.CheckPorts();
                break;
            case 8:
                EXPECT_TRUE(player.SetLoop(dice.Roll(9000), dice.Roll(9000)));
                EXPECT_TRUE(player.SetLooping(dice.Roll(2) == 0));
                break;
            case 9:
                if (const song::EventLink event = player.InEffect().Controller(channel, 7).event) {
                    song::WriteShared(event->data2, static_cast<std::uint8_t>(dice.Roll(128)));
                    player.SendChannel(channel, 0xB0, 7, 1);
                }
                break;
            case 10:
                player.Panic();
                break;
            default:
                EXPECT_TRUE(player.Play());
                static_cast<void>(player.Place());
                std::this_thread::sleep_for(std::chrono::microseconds(dice.Roll(3000)));
        }
        system::DispatchMessages();
        collect();
    }
    player.CheckPorts();
    player.FormDestroy();
    collect();
    EXPECT_EQ(sounding.Count(), 0U);
}

} // namespace
} // namespace tracksmith::test
