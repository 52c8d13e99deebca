#include "dispatch_benchmark.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <iomanip>
#include <ostream>
#include <thread>

#include "base/recording_message_host.h"
#include "base/system/file_io.h"
#include "base/system/thread_timing.h"
#include "lateness.h"
#include "moves_benchmark.h"
#include "song_generator.h"
#include "timing_driver.h"

#include "player/player.h"
#include "song/event_chain.h"
#include "song/midi_file_reader.h"
#include "song/time_map.h"

namespace tracksmith::benchmarks {
namespace {

/// A song of chords of three notes, every `stepMs` milliseconds one begins or ends.
void MakeChords(song::Song& song, int steps, int stepMs) {
    song::ClearSong(song);
    song.division = 500; // one tick a millisecond at 120 BPM
    song.tracks.resize(16);
    song.trackCount = 16;
    song.songLength = (steps + 1) * stepMs;
    for (std::size_t index = 0; index < song.tracks.size(); ++index) {
        song::InitTrack(song, song.tracks[index]);
    }
    for (int step = 0; step < steps; ++step) {
        const auto channel = static_cast<std::uint8_t>(step / 2 % 16);
        const auto status = static_cast<std::uint8_t>((step % 2 == 0 ? 0x90 : 0x80) | channel);
        for (const std::uint8_t key : std::initializer_list<std::uint8_t>{60, 64, 67}) {
            song::AppendEvent(song.tracks[channel],
                              song::NewShortEvent(song.pool, (step + 1) * stepMs, status, key, 64));
        }
    }
    for (song::Track& track : song.tracks) {
        song::AppendEvent(
            track, song::NewMetaEvent(song.pool, song.songLength, song::kMetaEndOfTrack, {}));
    }
    song::UpdateTimeZoneData(song);
}

double ProcessorShare(std::chrono::nanoseconds before, Clock::duration wall) {
    return 100 * std::chrono::duration<double>(system::ProcessorTime() - before).count() /
           std::chrono::duration<double>(wall).count();
}

void MeasurePlaying(std::ostream& out) {
    constexpr int kSteps = 1980;
    constexpr int kStepMs = 10;
    song::Song song;
    MakeChords(song, kSteps, kStepMs);
    TimingDriver driver(kSteps * 3 + 100);
    RecordingMessageHost host;
    player::TMidiPlayer player(song);
    player.FormCreate({{{&driver, false}}, nullptr, "", host});
    Require(player.SongLoaded(), "take the song");
    player.OpenPort(0);
    driver.Restart();

    const auto idleBefore = system::ProcessorTime();
    std::this_thread::sleep_for(3s);
    const double stopped = ProcessorShare(idleBefore, 3s);

    const auto before = system::ProcessorTime();
    Require(player.Play().playing, "play");
    const Clock::time_point start = StartOf(player);
    std::this_thread::sleep_until(start + kSteps * kStepMs * 1ms + 100ms);
    const double playing = ProcessorShare(before, Clock::now() - start);
    Require(player.Stop(), "stop");

    Lateness lateness;
    for (std::size_t i = 0; i < std::size_t{kSteps} * 3 && i < driver.Count(); ++i) {
        lateness.Add(driver.Time(i) - (start + (static_cast<int>(i) / 3 + 1) * kStepMs * 1ms));
    }
    out << "dispatch: " << kSteps * 3 << " messages in " << kSteps * kStepMs / 1000 << " s\n";
    PrintLateness(out, "player", lateness);
    const auto pollBefore = system::ProcessorTime();
    const Clock::time_point pollStart = Clock::now();
    PrintLateness(out, "1 ms poll", PollLoop(kSteps, kStepMs));
    const double polling = ProcessorShare(pollBefore, Clock::now() - pollStart);
    out << std::setprecision(3) << "  processor: playing " << playing << " %, stopped " << stopped
        << " %, 1 ms poll " << polling << " %\n";
}

/// Plays the demo song for a while: how much processor a song as people play it takes.
void MeasureDemo(std::ostream& out) {
    constexpr std::chrono::seconds kPlayed = 20s;
    const auto bytes = system::ReadRegularFile(TRACKSMITH_DEMO_SONG);
    if (!bytes) {
        out << "  the demo song cannot be read\n";
        return;
    }
    song::Song song;
    RecordingMessageHost host;
    song::DecodeMidiData(song, *bytes, {}, host);
    song::UpdateTimeZoneData(song);
    TimingDriver driver(100'000);
    player::TMidiPlayer player(song);
    player.FormCreate({{{&driver, false}}, nullptr, "", host});
    Require(player.SongLoaded(), "take the song");
    player.SuppressSysex(true); // the device takes none
    Require(player.MoveToTimePosition(player.SongEndTime() / 2), "move");
    Require(player.Play().playing, "play");
    driver.Restart();
    const auto before = system::ProcessorTime();
    const Clock::time_point start = Clock::now();
    std::this_thread::sleep_for(kPlayed);
    const double playing = ProcessorShare(before, Clock::now() - start);
    Require(player.Stop(), "stop");
    out << std::setprecision(3) << "  demo song, " << driver.Count() / kPlayed.count()
        << " messages a second: processor " << playing << " %\n";
}

void MeasureStartAndTempo(std::ostream& out) {
    song::Song song;
    RecordingMessageHost host;
    song::DecodeMidiData(song, GenerateSong(2'000'000), {}, host);
    song::UpdateTimeZoneData(song);
    TimingDriver driver(4'000'000);
    player::TMidiPlayer player(song);
    player.FormCreate({{{&driver, false}}, nullptr, "", host});
    Require(player.SongLoaded(), "take the song");
    player.SuppressSysex(true);
    Require(player.MoveToTimePosition(player.SongEndTime() / 2), "move");
    driver.Restart();
    const Clock::time_point asked = Clock::now();
    Require(player.Play().playing, "play");
    while (driver.Count() == 0) {
        std::this_thread::yield();
    }
    const auto toFirst = driver.Time(0) - asked;
    std::this_thread::sleep_for(500ms);
    const std::size_t before = driver.Count();
    const Clock::time_point changed = Clock::now();
    Require(player.SetTempoOffset(7), "change the tempo");
    const auto change = Clock::now() - changed;
    std::this_thread::sleep_for(500ms);
    Require(player.Stop(), "stop");
    const std::size_t count = driver.Count();
    const auto gap = [&](std::size_t from, std::size_t to) {
        Clock::duration most{};
        for (std::size_t i = std::max<std::size_t>(from, 1); i < to; ++i) {
            most = std::max(most, driver.Time(i) - driver.Time(i - 1));
        }
        return std::chrono::duration<double, std::milli>(most).count();
    };
    const auto ms = [](Clock::duration time) {
        return std::chrono::duration<double, std::milli>(time).count();
    };
    out << std::setprecision(2) << "  2 million events: Play in the middle to the first message "
        << ms(toFirst) << " ms, tempo change carried out within " << ms(change)
        << " ms\n  longest gap between messages: without a tempo change " << gap(before / 2, before)
        << " ms, with one " << gap(before, count) << " ms\n";
}

} // namespace

void RunDispatchBenchmark(std::ostream& out) {
    MeasurePlaying(out);
    MeasureDemo(out);
    MeasureStartAndTempo(out);
    MeasureMoves(out);
}

} // namespace tracksmith::benchmarks
