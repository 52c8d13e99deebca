#include <nlohmann/json.hpp>

#include "cli_fixture.h"

#include "app/backups/backup_folder.h"

namespace tracksmith::cli {
namespace {

#ifndef _WIN32

class BackupsCommandTest : public CliTest {
protected:
    void SetUp() override {
        setenv("XDG_DATA_HOME", folder_.Path().c_str(), 1);
        const backups::BackupFolder backups(backups::UsualBackupFolder());
        static_cast<void>(
            backups.Write({"Waltz", "/songs/Waltz.mid", "20261120_183742"}, Format0Song()));
        static_cast<void>(backups.Write({"Polka", "", "20261121_183742"}, Format1Song()));
    }
    void TearDown() override { unsetenv("XDG_DATA_HOME"); }
};

TEST_F(BackupsCommandTest, ListsAndRestores) {
    ASSERT_EQ(Run({"backups", "list"}), 0);
    const auto size = [](const test::Bytes& file) {
        const std::string text = std::to_string(file.size());
        return std::string(9 - text.size(), ' ') + text;
    };
    EXPECT_EQ(out_, "  1  2026-11-21 18:37:42" + size(Format1Song()) +
                        "  Polka_20261121_183742.mid\n  2  2026-11-20 18:37:42" +
                        size(Format0Song()) + "  Waltz_20261120_183742.mid  (/songs/Waltz.mid)\n");
    ASSERT_EQ(Run({"backups", "list", "--json"}), 0);
    const auto first = nlohmann::json::parse(out_.substr(0, out_.find('\n')));
    const std::string name = "Polka_20261121_183742.mid";
    const nlohmann::json expected{{"schema", 1},
                                  {"number", 1},
                                  {"name", name},
                                  {"song", "Polka"},
                                  {"date", "2026-11-21 18:37:42"},
                                  {"bytes", Format1Song().size()},
                                  {"file", (backups::UsualBackupFolder() / name).string()},
                                  {"original", nullptr}};
    EXPECT_EQ(first, expected) << first;
    for (const char* wanted : {"2", "Waltz_20261120_183742", "Waltz_20261120_183742.mid"}) {
        ASSERT_EQ(Run({"backups", "restore", wanted, "--out", At("back.mid"), "--yes"}), 0);
        EXPECT_EQ(Get("back.mid"), Format0Song());
        EXPECT_EQ(log_, "Waltz_20261120_183742.mid -> " + At("back.mid") + "\n");
    }
    EXPECT_EQ(Run({"backups", "restore", "1", "--out", At("back.mid")}), 4); // it exists
    EXPECT_EQ(Get("back.mid"), Format0Song());
    for (const char* wanted : {"0", "3", "2x", "Waltz", "Waltz_20261120_183742.mi"}) {
        EXPECT_EQ(Run({"backups", "restore", wanted, "--out", At("none.mid")}), 3) << wanted;
        EXPECT_TRUE(Says(std::string("There is no such backup: ") + wanted)) << log_;
    }
    EXPECT_EQ(Run({"backups", "restore", "1"}), 2);
    EXPECT_EQ(Run({"backups"}), 2);
    EXPECT_FALSE(Exists("none.mid"));
    std::filesystem::remove_all(backups::UsualBackupFolder());
    EXPECT_EQ(Run({"backups", "list"}), 0);
    EXPECT_EQ(log_, "There are no backups.\n");
    EXPECT_EQ(Run({"backups", "list", "--quiet"}), 0);
    EXPECT_EQ(log_, "");
}

#endif

TEST_F(CliTest, DiffTellsSongsApartByItsExitStatus) {
    Put("a.mid", Format0Song());
    Put("b.mid", Format1Song());
    Put("broken.mid", BrokenSong());
    ASSERT_EQ(Run({"convert", At("a.mid"), "--format", "1", "--split", "--out", At("split")}), 0);
    EXPECT_EQ(Run({"diff", At("a.mid"), At("split/a.mid")}), 0);
    EXPECT_EQ(out_, "No difference.\n");
    EXPECT_EQ(Run({"diff", At("a.mid"), At("b.mid"), "--json"}), 1);
    EXPECT_FALSE(nlohmann::json::parse(out_)["same"]);
    EXPECT_EQ(Run({"diff", At("a.mid"), At("broken.mid")}), 3);
    EXPECT_EQ(Run({"diff", At("a.mid")}), 2);
}

TEST_F(CliTest, DiffNamesVoicesAndStaysSilentWhenTold) {
    const auto song = [](int program, int channel) {
        return test::MidiFileBuilder(0)
            .Track(test::TrackBuilder()
                       .Short(0, 0xB0 | channel, 0, 8)
                       .Short(0, 0xB0 | channel, 32, 34)
                       .Program(0, channel, program)
                       .Note(480, channel, 60, 90)
                       .NoteOff(480, channel, 60)
                       .End())
            .Build();
    };
    Put("a.mid", song(0, 2));
    Put("b.mid", song(1, 2));
    ASSERT_EQ(Run({"diff", At("a.mid"), At("b.mid"), "--instrument", "Yamaha Genos"}), 1);
    EXPECT_TRUE(Shows("NylonGuitar SW (S.Art!)")) << out_;
    ASSERT_EQ(Run({"diff", At("a.mid"), At("b.mid")}), 1);
    EXPECT_FALSE(Shows("NylonGuitar")) << out_;
    EXPECT_EQ(Run({"diff", At("a.mid"), At("b.mid"), "--instrument", "nothing"}), 2);
    ASSERT_EQ(Run({"diff", At("a.mid"), At("a.mid"), "--quiet"}), 0);
    EXPECT_EQ(out_, "");
    ASSERT_EQ(Run({"diff", At("a.mid"), At("missing.mid"), "--json"}), 3);
    EXPECT_FALSE(nlohmann::json::parse(out_)["ok"]);
    Put("folder/c.mid", song(0, 2));
    Put("folder/d.mid", song(0, 2));
    EXPECT_EQ(Run({"diff", At("a.mid"), At("folder")}), 2);
}

} // namespace
} // namespace tracksmith::cli
