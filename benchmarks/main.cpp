#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "base/recording_message_host.h"
#include "budget_table.h"
#include "dispatch_benchmark.h"
#include "song_generator.h"
#include "stopwatch.h"

#include "app/backups/auto_backup.h"
#include "app/diff/compare_songs.h"
#include "app/load_sequence.h"
#include "editing/range_tools.h"
#include "song/midi_file_reader.h"
#include "song/midi_file_writer.h"
#include "song/song_position.h"
#include "song/song_snapshot.h"
#include "song/time_map.h"

// Measures loading, saving and the whole-song operations against two yardsticks of the same run: a
// copy of the file and a scan of it with every check. Rounds are interleaved and medians printed,
// so that a busy machine changes all figures alike.

#ifdef _WIN32
#define popen _popen
#define pclose _pclose
#endif

namespace tracksmith::benchmarks {
namespace {

struct Input {
    const char* name;
    std::size_t events;
    int rounds;
    // Budgets of the input; 0 for none.
    double loadOfScan;
    double saveOfScan;
    double nsToRetime;
};

constexpr Input kInputs[] = {{"song", 30'000, 41, 0, 0, 0},
                             {"big", 2'000'000, 9, 0.45, 1, 4},
                             {"huge", 20'000'000, 3, 0.40, 0, 0}};

/// Keeps the compiler from leaving out what is only measured.
volatile std::uint64_t sink = 0;

struct Times {
    Series copy;
    Series scan;
    Series load;
    Series loadPrepared;
    Series snapshot;
    Series retime;
    Series saveFormat1;
    Series saveFormat0;
    Series rangeDelete;
    Series rangeCopy;
    Series rangeTranspose;
    Series undo;
    Series diff;
    Series backupCoding;
    Series backupWriting;
};

void Load(session::Session& session, const app::SharedBytes& file) {
    RecordingMessageHost host;
    app::OpenMidiData(session, file, "benchmark.mid", host);
}

/// The measure at a part of the song's length.
editing::PositionText MeasureAt(const song::Song& song, int quarter) {
    const std::int64_t tick = std::int64_t{song.songLength} / 4 * quarter;
    return editing::SplitPosition(
        std::to_string(song::GetMeasureBeatFromSongPos(song, tick).measure + 1));
}

/// Writes a backup of the modified song, as a user's program does beside its work.
void MeasureBackup(Times& times, session::Session& session) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / "tracksmith_benchmark_backups";
    RecordingMessageHost host;
    {
        backups::AutoBackup backup(session, folder, host);
        times.backupCoding.Measure([&] { backup.WriteNow(); });
        times.backupWriting.Measure([&] { backup.Finish(); });
    }
    std::filesystem::remove_all(folder);
    if (!host.messages.empty()) {
        throw std::runtime_error(host.messages.front());
    }
}

/// Changes the second quarter of the song by each range tool, with the copy for undoing, and undoes
/// it.
void MeasureRangeTools(Times& times, session::Session& session, const song::Song& original) {
    RecordingMessageHost host;
    host.answer = true;
    editing::Undo undo(session);
    editing::RangeTools tools(session, undo, host);
    const song::Song& song = session.Song();
    const editing::RangeWish wish{editing::RangeTool::Copy, MeasureAt(song, 1), MeasureAt(song, 2),
                                  MeasureAt(song, 3)};
    tools.Transpose(wish, {"0", {}, "", {}, {}}); // makes the room for the copies
    times.rangeDelete.Measure([&] { tools.Delete(wish); });
    times.diff.Measure([&] { sink = sink + diff::CompareSongs(original, song).rows.size(); });
    MeasureBackup(times, session);
    times.undo.Measure([&] { undo.MME_UndoClick(host); });
    times.rangeCopy.Measure([&] { tools.Copy(wish); });
    undo.MME_UndoClick(host);
    times.rangeTranspose.Measure([&] { tools.Transpose(wish, {"3", {}, "", {}, {}}); });
    undo.MME_UndoClick(host);
}

void MeasureRound(Times& times, session::Session& session, song::SongSnapshot& snapshot,
                  const app::SharedBytes& bytes, std::vector<std::uint8_t>& copy,
                  const song::Song& original) {
    constexpr session::ChangeKind kRetime{.name = Text{Both{"Re-timing"}}};
    RecordingMessageHost host;
    const std::span<const std::uint8_t> file = *bytes;
    const song::Song& song = session.Song();
    times.copy.Measure([&] {
        std::memcpy(copy.data(), file.data(), file.size());
        sink = sink + copy[file.size() / 2];
    });
    times.scan.Measure([&] { sink = sink + song::ScanMidiData(file, host).checksum; });
    // Both loads that are compared are warm: some of their kind go before.
    constexpr int kWarmUps = 3;
    for (const bool prepares : {true, false}) {
        session.Options().sysexOptions.automatic = prepares;
        for (int i = 0; i < kWarmUps; ++i) {
            Load(session, bytes);
        }
        (prepares ? times.loadPrepared : times.load).Measure([&] { Load(session, bytes); });
    }
    times.snapshot.Measure([&] { snapshot.Take(song); });
    session.Change(kRetime, host, [&](session::Workspace& work) {
        times.retime.Measure([&] { song::SetTimePositions(work.song); });
        return false;
    });
    times.saveFormat1.Measure(
        [&] { sink = sink + session.Encoder().Format1(song, {}, host).size(); });
    times.saveFormat0.Measure(
        [&] { sink = sink + session.Encoder().Format0(song, {}, host).size(); });
    MeasureRangeTools(times, session, original);
}

std::size_t CountEvents(const song::Song& song) {
    std::size_t events = 0;
    for (const song::Track& track : song.tracks) {
        events += static_cast<std::size_t>(track.eventCount);
    }
    return events;
}

/// What a fresh process needed for its first load and for later ones, in seconds.
struct FirstLoad {
    double first = 0;
    double warm = 0;
};

/// Runs in a process of its own: the first load touches fresh memory, the others do not.
int PrintFirstLoad(std::size_t events) {
    const auto file = std::make_shared<const std::vector<std::uint8_t>>(GenerateSong(events));
    session::Session session;
    const double first = Seconds([&] { Load(session, file); });
    Series warm;
    for (int i = 0; i < 5; ++i) {
        warm.Measure([&] { Load(session, file); });
    }
    std::printf("%.9f %.9f\n", first, warm.Median());
    return 0;
}

/// The middle one of several fresh processes of this program.
std::optional<FirstLoad> MeasureFirstLoad(const std::string& program, std::size_t events) {
    constexpr int kProcesses = 5;
    std::vector<FirstLoad> runs;
    for (int i = 0; i < kProcesses; ++i) {
        const std::string command = "\"" + program + "\" --first-load " + std::to_string(events);
        std::FILE* pipe = popen(command.c_str(), "r");
        FirstLoad run;
        const bool good =
            pipe != nullptr && std::fscanf(pipe, "%lf %lf", &run.first, &run.warm) == 2;
        if (pipe != nullptr) {
            pclose(pipe);
        }
        if (!good || run.warm <= 0) {
            return std::nullopt;
        }
        runs.push_back(run);
    }
    std::sort(runs.begin(), runs.end(), [](const FirstLoad& a, const FirstLoad& b) {
        return a.first / a.warm < b.first / b.warm;
    });
    return runs[kProcesses / 2];
}

void PrintSpeed(BudgetTable& table, const char* name, double ratio, double budget) {
    if (budget > 0) {
        table.AtLeast(name, ratio, budget, "of the scan's speed");
    } else {
        table.Row(name, ratio, "of the scan's speed");
    }
}

/// How much there is of everything in one input.
struct Sizes {
    std::size_t fileBytes;
    std::size_t events;
    std::size_t recordBytes;
    std::size_t snapshotBytes;
};

Sizes SizesOf(const song::Song& song, const song::SongSnapshot& snapshot,
              std::span<const std::uint8_t> file) {
    RecordingMessageHost host;
    const song::ScanResult scan = song::ScanMidiData(file, host);
    return {file.size(), CountEvents(song), song.pool.UsedBytes() - scan.payloadBytes,
            snapshot.Bytes()};
}

void PrintTimes(BudgetTable& table, const Input& input, const Times& times, const Sizes& sizes) {
    const double scan = times.scan.Median();
    const auto bytes = static_cast<double>(sizes.fileBytes);
    const double toNs = 1e9 / static_cast<double>(sizes.events);
    table.Row("scan", bytes / scan / 1e9, "GB/s");
    table.Row("scan", scan * toNs, "ns an event");
    table.Row("copy of the file", scan / times.copy.Median(), "of the scan's speed");
    PrintSpeed(table, "load, warm", scan / times.load.Median(), input.loadOfScan);
    table.AtMost("load and prepare for an instrument",
                 times.loadPrepared.Median() / times.load.Median(), 1.1, "times the load alone");
    PrintSpeed(table, "save as format 1", scan / times.saveFormat1.Median(), input.saveOfScan);
    // The inputs are of format 1: this is a conversion, which merges all tracks.
    table.Row("convert to format 0", scan / times.saveFormat0.Median(), "of the scan's speed");
    table.AtMost("snapshot into the kept buffer", times.snapshot.Median() * toNs, 4, "ns an event");
    table.Row("snapshot",
              static_cast<double>(sizes.snapshotBytes) / times.snapshot.Median() /
                  (bytes / times.copy.Median()),
              "of the copy's bytes a second");
    const double retime = times.retime.Median() * toNs;
    if (input.nsToRetime > 0) {
        table.AtMost("re-timing", retime, input.nsToRetime, "ns an event");
    } else {
        table.Row("re-timing", retime, "ns an event");
    }
}

void PrintRangeTools(BudgetTable& table, const Input& input, const Times& times) {
    constexpr double kMostLoads = 5;
    const auto print = [&](const char* name, const Series& series) {
        const double loads = series.Median() / times.load.Median();
        if (input.loadOfScan > 0) {
            table.AtMost(name, loads, kMostLoads, "times the load");
        } else {
            table.Row(name, loads, "times the load");
        }
    };
    print("cut a quarter of the song", times.rangeDelete);
    print("copy a quarter of the song", times.rangeCopy);
    print("transpose a quarter of the song", times.rangeTranspose);
    table.Row("undo a cut", times.undo.Median() / times.load.Median(), "times the load");
    print("compare with the song before a cut", times.diff);
    table.Row("backup: coding, before the caller goes on", 1e3 * times.backupCoding.Median(), "ms");
    constexpr double kMostMs = 100;
    if (input.saveOfScan > 0) {
        table.AtMost("backup: writing in the background", 1e3 * times.backupWriting.Median(),
                     kMostMs, "ms");
    } else {
        table.Row("backup: writing in the background", 1e3 * times.backupWriting.Median(), "ms");
    }
}

/// Measures one input; false when something could not be measured.
bool MeasureInput(BudgetTable& table, const Input& input, int rounds, const std::string& program) {
    const auto bytes =
        std::make_shared<const std::vector<std::uint8_t>>(GenerateSong(input.events));
    const std::vector<std::uint8_t>& file = *bytes;
    std::vector<std::uint8_t> copy(file.size());
    session::Session session;
    session.Options().outputs.outputs.front().SetName("Roland SC-88Pro");
    song::SongSnapshot snapshot;
    song::Song original;
    RecordingMessageHost unseen;
    song::DecodeMidiData(original, file, {}, unseen);
    song::UpdateTimeZoneData(original);
    Times warmUp;
    MeasureRound(warmUp, session, snapshot, bytes, copy, original);
    Times times;
    for (int i = 0; i < rounds; ++i) {
        MeasureRound(times, session, snapshot, bytes, copy, original);
    }
    const Sizes sizes = SizesOf(session.Song(), snapshot, file);
    table.Heading(std::string(input.name) + ": " + std::to_string(sizes.events) + " events, " +
                  std::to_string(file.size()) + " bytes, " + std::to_string(rounds) + " rounds");
    PrintTimes(table, input, times, sizes);
    PrintRangeTools(table, input, times);
    table.AtMost("memory without payloads",
                 static_cast<double>(sizes.recordBytes) / static_cast<double>(sizes.events), 50,
                 "bytes an event");
    const std::optional<FirstLoad> fresh = MeasureFirstLoad(program, input.events);
    if (!fresh) {
        std::fprintf(stderr, "the first load in a fresh process could not be measured\n");
        return false;
    }
    table.AtMost("first load in a fresh process", fresh->first / fresh->warm, 3,
                 "times a warm one");
    return true;
}

/// How much longer loading takes with preparing where all settings stand before the reset that it
/// puts in, and so are kept: the most that preparing has to do.
double MeasureSettings(SettingsKind kind, int rounds) {
    constexpr std::size_t kSettings = 2'000'000;
    const auto file =
        std::make_shared<const std::vector<std::uint8_t>>(GenerateSettings(kSettings, kind));
    session::Session session;
    session.Options().outputs.outputs.front().SetName("Roland SC-88Pro");
    Series load;
    Series prepared;
    for (int i = 0; i < rounds; ++i) {
        for (const bool prepares : {true, false}) {
            session.Options().sysexOptions.automatic = prepares;
            Load(session, file);
            (prepares ? prepared : load).Measure([&] { Load(session, file); });
        }
    }
    return prepared.Median() / load.Median();
}

void MeasureAllSettings(BudgetTable& table, int rounds) {
    constexpr const char* kUnit = "times the load alone";
    table.Heading("settings: 2000000 before the reset, " + std::to_string(rounds) + " rounds");
    table.AtMost("load and prepare, from sliders and wheels",
                 MeasureSettings(SettingsKind::Movements, rounds), 1.5, kUnit);
    table.AtMost("load and prepare, with banks and parameters",
                 MeasureSettings(SettingsKind::SetUps, rounds), 1.5, kUnit);
}

int Run(const std::string& program, bool quick, bool huge) {
    BudgetTable table;
    bool complete = true;
    MeasureAllSettings(table, quick ? 3 : 15);
    for (const Input& input : kInputs) {
        if (input.events > 2'000'000 && !huge) {
            continue;
        }
        complete = MeasureInput(table, input, quick ? 3 : input.rounds, program) && complete;
    }
    std::printf("\n%d over budget\n", table.Over());
    return complete && table.Over() == 0 ? 0 : 1;
}

} // namespace
} // namespace tracksmith::benchmarks

namespace tracksmith::benchmarks {
namespace {

int RunAsAsked(int argc, char** argv) {
    bool quick = false;
    bool huge = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--first-load" && i + 1 < argc) {
            return PrintFirstLoad(std::stoul(argv[i + 1]));
        }
        if (argument == "--dispatch") {
            RunDispatchBenchmark(std::cout);
            return 0;
        }
        quick = quick || argument == "--quick";
        huge = huge || argument == "--huge";
        if (argument != "--quick" && argument != "--huge") {
            std::fprintf(stderr, "usage: tracksmith_benchmarks [--quick] [--huge] | --dispatch\n");
            return 2;
        }
    }
    return Run(argv[0], quick, huge);
}

} // namespace
} // namespace tracksmith::benchmarks

int main(int argc, char** argv) {
    try {
        return tracksmith::benchmarks::RunAsAsked(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
