#include "dispatch_benchmark.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <iomanip>
#include <ostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "base/recording_message_host.h"
#include "base/system/file_io.h"
#include "base/system/thread_timing.h"
#include "song_generator.h"

#include "player/player.h"
#include "song/event_chain.h"
#include "song/midi_file_reader.h"
#include "song/time_map.h"

namespace tracksmith::benchmarks {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// One device that notes when each message comes; allocates nothing while it receives.
class TimingDriver final : public midi::MidiOutputDriver {
public:
    explicit TimingDriver(std::size_t most) { times_.resize(most); }

    void Restart() { count_ = 0; }
    std::size_t Count() const { return count_; }
    Clock::time_point Time(std::size_t index) const { return times_[index]; }

    std::uint32_t DeviceCount() override { return 1; }
    midi::ResultCode Capabilities(std::uint32_t, midi::DeviceCapabilities& capabilities) override {
        capabilities.productName = "Recorder";
        return midi::kNoError;
    }
    midi::ResultCode Open(std::uint32_t, midi::DriverCallback, void*,
                          midi::DeviceHandle& handle) override {
        handle = 1;
        return midi::kNoError;
    }
    midi::ResultCode Close(midi::DeviceHandle) override { return midi::kNoError; }
    midi::ResultCode Reset(midi::DeviceHandle) override { return midi::kNoError; }
    midi::ResultCode ShortMessage(midi::DeviceHandle, std::uint32_t) override {
        const std::size_t index = count_;
        if (index < times_.size()) {
            times_[index] = Clock::now();
            count_ = index + 1;
        }
        return midi::kNoError;
    }
    midi::ResultCode PrepareHeader(midi::DeviceHandle, midi::MidiHeader&) override {
        return midi::kNotSupported;
    }
    midi::ResultCode LongMessage(midi::DeviceHandle, midi::MidiHeader&) override {
        return midi::kNotSupported;
    }
    midi::ResultCode UnprepareHeader(midi::DeviceHandle, midi::MidiHeader&) override {
        return midi::kNotSupported;
    }
    midi::ResultCode GetVolume(std::uint32_t, std::uint32_t&) override {
        return midi::kNotSupported;
    }
    midi::ResultCode SetVolume(std::uint32_t, std::uint32_t) override {
        return midi::kNotSupported;
    }
    midi::ResultCode CachePatches(midi::DeviceHandle, std::uint32_t,
                                  std::span<const std::uint16_t, 128>, std::uint32_t) override {
        return midi::kNotSupported;
    }
    midi::ResultCode CacheDrumPatches(midi::DeviceHandle, std::uint32_t,
                                      std::span<const std::uint16_t, 128>, std::uint32_t) override {
        return midi::kNotSupported;
    }
    midi::ResultCode Message(midi::DeviceHandle, std::uint32_t, std::uintptr_t,
                             std::uintptr_t) override {
        return midi::kNotSupported;
    }
    std::string ErrorText(midi::ResultCode) override { return {}; }

private:
    std::vector<Clock::time_point> times_;
    std::atomic<std::size_t> count_ = 0;
};

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

/// How late messages came, in microseconds.
struct Lateness {
    std::vector<double> us;

    void Add(Clock::duration late) {
        us.push_back(std::chrono::duration<double, std::micro>(late).count());
    }
    double Share(double share) const {
        std::vector<double> sorted = us;
        std::sort(sorted.begin(), sorted.end());
        const auto last = static_cast<double>(sorted.size() - 1);
        return sorted.empty() ? 0 : sorted[static_cast<std::size_t>(share * last)];
    }
    std::ptrdiff_t Early() const {
        return std::count_if(us.begin(), us.end(), [](double late) { return late < 0; });
    }
};

void PrintLateness(std::ostream& out, const char* name, const Lateness& lateness) {
    out << "  " << std::left << std::setw(24) << name << std::right << std::fixed
        << std::setprecision(0) << " p50 " << std::setw(6) << lateness.Share(0.5) << " us  p99 "
        << std::setw(6) << lateness.Share(0.99) << " us  most " << std::setw(6) << lateness.Share(1)
        << " us  early " << lateness.Early() << " of " << lateness.us.size() << '\n';
}

double ProcessorShare(std::chrono::nanoseconds before, Clock::duration wall) {
    return 100 * std::chrono::duration<double>(system::ProcessorTime() - before).count() /
           std::chrono::duration<double>(wall).count();
}

/// Sends the same messages from a loop that sleeps a millisecond between two looks.
Lateness PollLoop(int steps, int stepMs) {
    Lateness lateness;
    const Clock::time_point start = Clock::now();
    for (int next = 0; next < steps;) {
        const Clock::time_point now = Clock::now();
        for (Clock::time_point due = start + (next + 1) * stepMs * 1ms; next < steps && due <= now;
             due = start + (++next + 1) * stepMs * 1ms) {
            lateness.Add(now - due);
        }
        std::this_thread::sleep_for(1ms);
    }
    return lateness;
}

/// The moment at which the playing position was 0, never before it.
Clock::time_point StartOf(const player::TMidiPlayer& player) {
    Clock::time_point start = Clock::time_point::max();
    for (int i = 0; i < 1000; ++i) {
        const auto position = std::chrono::microseconds(player.Place().us);
        start = std::min(start, Clock::now() - position);
    }
    return start;
}

/// A figure measured although the player did not do it would say nothing.
void Require(bool done, const char* what) {
    if (!done) {
        throw std::runtime_error(std::string("the player refuses to ") + what);
    }
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
}

} // namespace tracksmith::benchmarks
