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
    player::SteadyStopwatch stopwatch;
    std::atomic<std::int64_t> passes = 0;
    std::atomic<bool> stopped = true;
    std::atomic<player::TMidiPlayerThread*> self = nullptr;
    player::TMidiPlayerThread thread(stopwatch, [&]() -> std::int64_t {
        player::TMidiPlayerThread* const own = self;
        if (own == nullptr || !own->BeginPass()) {
            return player::Stopwatch::kForever;
        }
        EXPECT_FALSE(stopped);
        ++passes;
        own->EndPass();
        return 0;
    });
    self = &thread;
    thread.Start();
    for (int i = 0; i < 100'000; ++i) {
        const std::int64_t passesBefore = passes;
        stopped = false;
        ASSERT_TRUE(thread.AllowPasses());
        stopwatch.Wake();
        while (i % 100 == 0 && passes == passesBefore) {
            std::this_thread::yield();
        }
        for (int spin = i % 64; spin > 0; --spin) {
            static_cast<void>(thread.State());
        }
        ASSERT_TRUE(thread.ForbidPasses().ended);
        stopped = true;
        ASSERT_EQ(thread.State(), player::kStateStopped);
    }
}

// A pass that hangs in a driver cannot hang Stop, and its late end does not start playing again.
TEST(ThreadTest, StopWaitsForAPassButNotForEver) {
    player::SteadyStopwatch stopwatch;
    std::atomic<bool> hang = true;
    std::atomic<bool> inside = false;
    player::TMidiPlayerThread* self = nullptr;
    player::TMidiPlayerThread thread(stopwatch, [&]() -> std::int64_t {
        if (self->BeginPass()) {
            inside = true;
            while (hang) {
                std::this_thread::sleep_for(1ms);
            }
            self->EndPass();
        }
        return player::Stopwatch::kForever;
    });
    self = &thread;
    thread.AllowPasses();
    thread.Start();
    while (!inside) {
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_FALSE(thread.ForbidPasses(20ms).ended);
    hang = false;
    EXPECT_TRUE(thread.ForbidPasses(10s).ended);
    EXPECT_EQ(thread.State(), player::kStateStopped);
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
    player.FormCreate({{{&driver, false}}, nullptr, "", host});
    player.SongLoaded();
    Dice dice(5);
    const char* seconds = std::getenv("TRACKSMITH_STRESS_SECONDS");
    const auto end = std::chrono::steady_clock::now() +
                     std::chrono::seconds(seconds == nullptr ? 2 : std::atoi(seconds));
    while (std::chrono::steady_clock::now() < end) {
        const auto channel = static_cast<std::size_t>(dice.Roll(16));
        switch (dice.Roll(14)) {
            case 0:
                player.Stop();
                // On a busy machine a port may have been taken for lost.
                player.CheckPorts();
                collect();
                EXPECT_EQ(sounding.Count(), 0U);
                break;
            case 1:
                player.MoveToTimePosition(dice.Roll(30'000));
                break;
            case 2:
                player.SetTempoOffset(dice.Roll(300) - 100);
                break;
            case 3:
                player.SetChannelMuted(channel, dice.Roll(2) == 0);
                break;
            case 4:
                player.SetChannelSolo(channel, dice.Roll(4) == 0);
                break;
            case 5:
                player.SetTrackMuted(1, dice.Roll(2) == 0);
                break;
            case 6:
                player.SetRoute(channel, static_cast<std::size_t>(dice.Roll(2)),
                                static_cast<std::uint8_t>(dice.Roll(16)));
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
                player.SetLoop(dice.Roll(9000), dice.Roll(9000));
                player.SetLooping(dice.Roll(2) == 0);
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
                player.Play();
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
