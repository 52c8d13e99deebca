#include "moves_benchmark.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "base/recording_message_host.h"
#include "lateness.h"
#include "song_generator.h"
#include "timing_driver.h"

#include "app/backups/auto_backup.h"
#include "app/load_sequence.h"
#include "mixer/mixer.h"
#include "song/track_walk.h"

namespace tracksmith::benchmarks {
namespace {

constexpr auto kPlayed = 10s;
constexpr auto kFrame = 33ms;
constexpr std::size_t kMostNotes = 4'000'000;

/// When the notes behind a place are due, in ms of the play position.
std::vector<std::int64_t> NoteTimes(const song::Song& song, std::int64_t fromMs) {
    std::vector<std::int64_t> times;
    song::TrackWalk<song::DueOrder> walk(song);
    while (walk.Peek() != nullptr) {
        const std::size_t track = walk.NextTrack();
        const song::MidiEvent& event = *walk.Take();
        if (event.Command() <= song::kNoteOn && event.IsChannelMessage() &&
            song::DueMs(song.tracks[track], event) >= fromMs) {
            times.push_back(song::DueMs(song.tracks[track], event));
        }
    }
    return times;
}

/// What goes on beside playing, called for each frame of a display.
using Beside = std::function<void(mixer::Mixer& mixer, std::uint64_t frame)>;

void MoveNothing(mixer::Mixer& /*mixer*/, std::uint64_t /*frame*/) {}

void MoveVolumes(mixer::Mixer& mixer, std::uint64_t frame) {
    for (std::size_t channel = 0; channel < song::kMidiChannels; ++channel) {
        mixer.Move(channel, mixer::Control::Volume, static_cast<double>((frame + channel) % 128));
    }
}

/// Every second a volume is moved and the song backed up.
Beside BackUp(backups::AutoBackup& backup) {
    return [&backup](mixer::Mixer& mixer, std::uint64_t frame) {
        constexpr std::uint64_t kFrames = 30;
        if (frame % kFrames == kFrames / 2) {
            mixer.Move(0, mixer::Control::Volume, static_cast<double>(frame % 128));
            Require(backup.WriteNow(), "be backed up");
        }
    };
}

Lateness PlayFor(session::Session& session, TimingDriver& driver, const Beside& beside) {
    player::TMidiPlayer& player = session.Controls().Player();
    const std::int64_t from = player.SongEndTime() / 2;
    Require(player.MoveToTimePosition(from), "move");
    const std::vector<std::int64_t> due = NoteTimes(session.Song(), from);
    mixer::Mixer mixer(session);
    mixer.Refresh();
    driver.Restart();
    Require(player.Play().playing, "play");
    const Clock::time_point start = StartOf(player);
    const Clock::time_point end = Clock::now() + kPlayed;
    auto next = Clock::now();
    for (std::uint64_t frame = 0; Clock::now() < end; ++frame) {
        mixer.Refresh();
        mixer.LetLevelsFall();
        beside(mixer, frame);
        for (next += kFrame; Clock::now() < next;) {
            mixer.Flush();
            std::this_thread::sleep_for(5ms);
        }
    }
    const std::size_t count = std::min(driver.Count(), due.size());
    Require(player.Stop(), "stop");
    Lateness lateness;
    for (std::size_t i = 0; i < count; ++i) {
        lateness.Add(driver.Time(i) - (start + due[i] * 1ms));
    }
    return lateness;
}

Lateness PlayBackingUp(session::Session& session, TimingDriver& driver, MessageHost& host) {
    const auto folder = std::filesystem::temp_directory_path() / "tracksmith_benchmark_backups";
    Lateness lateness;
    {
        backups::AutoBackup backup(session, folder, host);
        lateness = PlayFor(session, driver, BackUp(backup));
    }
    std::filesystem::remove_all(folder);
    return lateness;
}

} // namespace

void MeasureMoves(std::ostream& out) {
    session::Session session;
    TimingDriver driver(kMostNotes, true);
    RecordingMessageHost host;
    session.StartPlayer({{{&driver, false}}, nullptr, "", host});
    session.Controls().Player().OpenPort(0);
    session.Controls().Player().SuppressSysex(true); // the device takes none
    const auto file = std::make_shared<const std::vector<std::uint8_t>>(GenerateSong(2'000'000));
    app::OpenMidiData(session, file, "benchmark.mid", host);
    out << "2 million events beside the mixer:\n";
    PrintLateness(out, "controls at rest", PlayFor(session, driver, MoveNothing));
    PrintLateness(out, "all volumes moving", PlayFor(session, driver, MoveVolumes));
    PrintLateness(out, "backup every second", PlayBackingUp(session, driver, host));
    PrintLateness(out, "1 ms poll", PollLoop(1000, 10));
    session.EndPlayer();
}

} // namespace tracksmith::benchmarks
