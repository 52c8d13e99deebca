#include <nlohmann/json.hpp>
#include <thread>

#include "cli_fixture.h"

#include "app/cli/memory_share.h"

#ifndef _WIN32
#include <unistd.h>
#endif

namespace tracksmith::cli {
namespace {

using nlohmann::json;

/// A song whose last note relies on a running status from before a message.
test::Bytes StatusAcrossSong() {
    return test::MidiFileBuilder()
        .Track(test::TrackBuilder()
                   .Text(0, 3, "x zel_ignore")
                   .Note(0, 0, 60, 1)
                   .Sysex(5, {0x7E, 0xF7})
                   .Raw(0, {61, 1})
                   .End())
        .Build();
}

TEST_F(CliTest, ARefusedFileIsExplainedAndTheSwitchThatLoadsItNamed) {
    Put("a.mid", StatusAcrossSong());
    EXPECT_EQ(Run({"info", "--json", At("a.mid"), "--lang", "de"}), 3);
    EXPECT_TRUE(Says(At("a.mid") + ": Die Datei ist beschädigt: In Spur 1, Byte ")) << log_;
    EXPECT_TRUE(Says(At("a.mid") + ": Mit --running-status-across-sysex lässt")) << log_;
    const json line = json::parse(out_);
    EXPECT_EQ(line["fault"], "damagedTrack");
    EXPECT_EQ(line["track"], 1);
    EXPECT_EQ(line["loadableWith"], "--running-status-across-sysex");
    EXPECT_EQ(line["advice"].get<std::string>().rfind("Die Datei ist", 0), 0U);

    const test::Bytes bytes = StatusAcrossSong();
    EXPECT_EQ(Run({"info", "-"}, std::string(bytes.begin(), bytes.end())), 3);
    EXPECT_TRUE(Says("-: With --running-status-across-sysex it can be loaded.")) << log_;

    const std::string across = "--running-status-across-sysex";
    EXPECT_EQ(Run({"info", "--all", At("a.mid"), across}), 0) << log_;
    EXPECT_EQ(out_.find("(ignored)"), std::string::npos) << out_;
    EXPECT_EQ(Run({"info", "--all", At("a.mid"), across, "--honour-zel-ignore"}), 0) << log_;
    EXPECT_NE(out_.find("(ignored)"), std::string::npos) << out_;
    EXPECT_EQ(Run({"convert", At("a.mid"), "--in-place"}), 3);
    EXPECT_EQ(Get("a.mid"), StatusAcrossSong());
    EXPECT_EQ(Run({"convert", At("a.mid"), "--in-place", across}), 0) << log_;
    EXPECT_EQ(Run({"info", At("a.mid")}), 0) << "the switch does not reach the writer";
}

TEST_F(CliTest, AFailedSaveNamesTheReason) {
    Put("song.mid", Format1Song());
    std::filesystem::create_directories(folder_ / "new" / "song.mid");
    EXPECT_EQ(Run({"convert", At("song.mid"), "--out", At("new"), "--yes"}), 4);
    EXPECT_TRUE(Says("That is a folder.\n")) << log_;
}

TEST_F(CliTest, ResultsAndMessagesOfABatchComeInOrder) {
    for (int i = 0; i < 24; ++i) {
        Put("songs/" + std::to_string(100 + i) + ".mid", i % 5 == 0   ? BrokenSong()
                                                         : i % 2 == 0 ? Format0Song()
                                                                      : Format1Song());
    }
    const std::vector<std::string> arguments{"convert", At("songs"), "--out",
                                             At("new"), "--yes",     "--jobs"};
    const auto run = [&](const char* jobs) {
        std::vector<std::string> all = arguments;
        all.emplace_back(jobs);
        EXPECT_EQ(Run(all), 5);
        return out_ + "|" + log_;
    };
    const std::string one = run("1");
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(run("8"), one);
    }
}

TEST_F(CliTest, TooLittleMemoryEndsWithTheMessage) {
    Put("song.mid", Format1Song());
    openDevices_ = [](const devices::SynthOptions&) -> std::unique_ptr<devices::MidiDevices> {
        throw std::bad_alloc();
    };
    EXPECT_EQ(Run({"play", At("song.mid")}), 4);
    EXPECT_TRUE(Says("Error allocating memory!")) << log_;
    EXPECT_EQ(Run({"ports"}), 4);
    EXPECT_EQ(log_, "Error allocating memory!\n");
}

TEST(MemoryShare, LendsNoMoreThanThereIsAndLeavesNobodyWaiting) {
    MemoryShare share(100);
    std::atomic<std::uint64_t> lent = 0;
    std::atomic<bool> exceeded = false;
    std::vector<std::jthread> threads;
    for (std::uint64_t i = 0; i < 8; ++i) {
        threads.emplace_back([&, i] {
            for (std::uint64_t turn = 0; turn < 100; ++turn) {
                const MemoryShare::Part part = share.Take(turn % 20 == 0 ? 1'000 : 10 + i);
                exceeded = exceeded || (lent += part.Bytes()) > share.Total();
                lent -= part.Bytes();
            }
        });
    }
    threads.clear();
    EXPECT_FALSE(exceeded);
    EXPECT_EQ(share.Take(1'000).Bytes(), 100U);
}

#ifndef _WIN32

TEST_F(CliTest, NamesThatAreNoUtf8CanBeFoundAgain) {
    const std::string name =
        At("gr\xFC\xDF"
           "e.mid");
    test::PutFile(std::filesystem::path(name), Format0Song());
    for (const char* folder : {"",
                               "gr\xFC\xDF"
                               "e.mid"}) {
        ASSERT_EQ(Run({"info", "--json", At(folder)}), 0) << log_;
        const json line = json::parse(out_);
        EXPECT_NE(line["file"].get<std::string>().find("grüße.mid"), std::string::npos);
        const std::string hex = line["fileBytes"];
        std::string bytes;
        for (std::size_t at = 0; at < hex.size(); at += 2) {
            bytes += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
        }
        EXPECT_TRUE(std::filesystem::exists(bytes)) << hex;
    }
    Put("a\tb.mid", BrokenSong());
    EXPECT_EQ(Run({"info", "--json", At("a\tb.mid")}), 3);
    EXPECT_EQ(json::parse(out_)["file"], At("a\tb.mid"));
}

/// Gives up the rights of root, who may read everything, while it lives.
class WithoutRights {
public:
    WithoutRights() {
        if (geteuid() == 0) {
            EXPECT_EQ(seteuid(65534), 0);
        }
    }
    WithoutRights(const WithoutRights&) = delete;
    WithoutRights& operator=(const WithoutRights&) = delete;
    ~WithoutRights() { EXPECT_EQ(seteuid(getuid()), 0); }
};

TEST_F(CliTest, FoldersThatCannotBeReadAreFailures) {
    Put("songs/closed/a.mid", Format0Song());
    Put("songs/b.mid", Format0Song());
    std::filesystem::permissions(folder_ / "songs" / "closed", std::filesystem::perms::none);
    {
        const WithoutRights user;
        EXPECT_EQ(Run({"info", "--json", At("songs")}), 5);
        EXPECT_TRUE(Says(At("songs/closed") + ": The folder cannot be read. The permission"))
            << log_;
        EXPECT_TRUE(Says("2 files: 1 done, 1 failed")) << log_;
        const json first = json::parse(out_.substr(0, out_.find('\n')));
        EXPECT_EQ(first["file"], At("songs/closed"));
        EXPECT_FALSE(first["ok"]);
        EXPECT_EQ(Run({"info", At("songs/closed")}), 3);
        EXPECT_FALSE(Says("contains no song")) << log_;
    }
    std::filesystem::permissions(folder_ / "songs" / "closed", std::filesystem::perms::owner_all);
    // A link to a folder above would never end.
    std::filesystem::create_directory_symlink("..", folder_ / "songs" / "closed" / "up");
    EXPECT_EQ(Run({"info", At("songs")}), 0);
    EXPECT_TRUE(Says("2 files: 2 done")) << log_;
}

#endif

} // namespace
} // namespace tracksmith::cli
