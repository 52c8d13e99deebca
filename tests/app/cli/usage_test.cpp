#include <array>
#include <cstdlib>
#include <map>

#include "cli_fixture.h"

#include "app/cli/console.h"

namespace tracksmith::cli {
namespace {

struct UsageCase {
    std::vector<std::string> arguments;
    const char* complaint;
};

class UsageTest : public CliTest, public testing::WithParamInterface<UsageCase> {};

TEST_P(UsageTest, WrongArgumentsEndWithTwo) {
    EXPECT_EQ(Run(GetParam().arguments), 2);
    EXPECT_EQ(out_, "");
    EXPECT_TRUE(Says(GetParam().complaint)) << log_;
}

INSTANTIATE_TEST_SUITE_P(
    Wrong, UsageTest,
    testing::Values(
        UsageCase{{}, "Usage error"}, UsageCase{{"info"}, "FILE"},
        UsageCase{{"nonsense"}, "Usage error"},
        UsageCase{{"info", "a.mid", "--nonsense"}, "--nonsense"},
        UsageCase{{"info", "a.mid", "--lang", "fr"}, "--lang"},
        UsageCase{{"convert", "a.mid", "--format", "2", "--out", "x"}, "--format"},
        UsageCase{{"convert", "a.mid"}, "--out"},
        UsageCase{{"convert", "a.mid", "--out", "x", "--in-place"}, "exclude"},
        UsageCase{{"convert", "a.mid", "b.mid", "--out", "-"}, "Only one song"},
        UsageCase{{"convert", "-", "--in-place"}, "standard input"},
        UsageCase{{"convert", "a.mid", "--lead-in", "auto", "--out", "x"}, "--lead-in"},
        UsageCase{{"convert", "a.mid", "--revoice", "t", "--out", "x"}, "--revoice"},
        UsageCase{{"convert", "a.mid", "--with-settings", "--out", "x"}, "--with-settings"},
        UsageCase{{"convert", "a.mid", "--skip-done", "--in-place"}, "--skip-done"},
        UsageCase{{"convert", "a.mid", "--skip-done", "--out", "-"}, "--skip-done"},
        UsageCase{{"convert", "a.mid", "--sysex-track", "0", "--out", "x"}, "--sysex-track"},
        UsageCase{
            {"revoice", "a.mid", "--instrument", "genos2", "--skip-done", "--table", "t", "-n"},
            "--skip-done"},
        UsageCase{{"set", "a.mid", "b.mid", "-c", "1"}, "b.mid"},
        UsageCase{{"set", "a.mid", "-c", "1", "--out", "x", "--in-place"}, "exclude"},
        UsageCase{{"ports", "--input", "x"}, "--ask"}));

TEST_F(CliTest, VersionAndHelp) {
    EXPECT_EQ(Run({"--version"}), 0);
    EXPECT_TRUE(out_.starts_with("tracksmith-cli 1.2.3\nFree software under the MIT licence"));
    EXPECT_TRUE(Shows("\n  pugixml: MIT\n")) << out_;
    EXPECT_FALSE(Shows("Qt")) << out_; // only of the windows
    EXPECT_EQ(Run({"convert", "--help", "--lang", "de"}), 0);
    EXPECT_TRUE(Shows("Aufruf: tracksmith-cli convert [OPTIONEN] FILE...")) << out_;
    EXPECT_TRUE(Shows("Die Originale ersetzen")) << out_;
    EXPECT_FALSE(Shows("Options")) << out_;
    EXPECT_EQ(Run({"--help", "--lang", "de"}), 0);
    EXPECT_TRUE(Shows("Aufruf: tracksmith-cli [OPTIONEN] BEFEHL\n")) << out_;
    EXPECT_TRUE(Shows("\nBefehle:\n  info ")) << out_;
    EXPECT_EQ(log_, "");
}

struct Offered {
    std::vector<std::string> command;
    /// Files and options as the help lists them.
    std::string options;
};

class OfferedTest : public CliTest, public testing::WithParamInterface<Offered> {};

// What scripts are written with must not vanish.
TEST_P(OfferedTest, EveryOptionIsThere) {
    auto help = GetParam().command;
    help.emplace_back("--help");
    ASSERT_EQ(Run(help), 0);
    std::string options;
    std::istringstream lines(out_);
    for (std::string line; std::getline(lines, line);) {
        const bool entry = line.starts_with("  ") && line.size() > 2 && line[2] != ' ';
        const std::string name = entry ? line.substr(2, line.find(' ', 2) - 2) : "";
        options += name.empty() || name == "-h,--help" ? "" : name + " ";
    }
    EXPECT_EQ(options, GetParam().options);
}

const std::string kReading = "--running-status-across-sysex --honour-zel-ignore ";
const std::string kTarget = "-o,--out --in-place -n,--dry-run ";

INSTANTIATE_TEST_SUITE_P(
    Commands, OfferedTest,
    testing::Values(
        Offered{{"info"}, "FILE --instrument --json --all " + kReading + "--min-length "},
        Offered{{"convert"},
                "FILE --format -o,--out --skip-done --instrument --with-settings --gm-before-gs "
                "--sysex-track --lead-in --revoice -j,--jobs --in-place --running-status "
                "--omit-port-events --split --json -n,--dry-run " +
                    kReading + "--min-length "},
        Offered{
            {"check"},
            "FILE --instrument --repair -o,--out --skip-done --strict --report --json " + kReading},
        Offered{{"play"},
                "FILE --port --from --to --loop --tempo --soundfont " + kReading + "--min-length "},
        Offered{{"ports"}, "--json --ask --input "},
        Offered{{"instruments"}, "SEARCH --json --markdown "},
        Offered{{"voices"}, "INSTRUMENT SEARCH --json --import --model --export "},
        Offered{{"set"},
                "FILE -c,--channel --voice --volume --pan --expression --reverb --chorus "
                "--harmonic --release --attack --brightness --variation --transpose --instrument "
                "--insert " +
                    kTarget + kReading},
        Offered{{"revoice"},
                "FILE --instrument --table --suggest --add-banks -o,--out --skip-done "
                "-n,--dry-run " +
                    kReading + "--min-length "},
        Offered{{"diff"}, "BEFORE AFTER --instrument --json " + kReading},
        Offered{{"backups"}, "list restore "}, Offered{{"backups", "list"}, "--json "},
        Offered{{"backups", "restore"}, "BACKUP -o,--out "},
        Offered{{"range"}, "delete copy transpose "},
        Offered{{"range", "delete"}, "FILE --from --to " + kTarget + "--json " + kReading},
        Offered{{"range", "copy"},
                "FILE --from --to --dest --no-state " + kTarget + "--json " + kReading},
        Offered{{"range", "transpose"},
                "FILE --from --to --semitones -c,--channel --instrument " + kTarget + "--json " +
                    kReading}));

TEST_F(CliTest, LanguageOfTheSystemAndOfTheOption) {
    const std::string missing = At("missing.mid");
    EXPECT_EQ(Run({"info", missing}), 3);
    EXPECT_TRUE(Says("Error opening the midi file")) << log_;
    EXPECT_EQ(Run({"--lang=de", "info", missing}), 3);
    EXPECT_TRUE(Says("Fehler beim Zugriff")) << log_;
    language_ = Language::German;
    EXPECT_EQ(Run({"info", missing}), 3);
    EXPECT_TRUE(Says("Fehler beim Zugriff")) << log_;
    EXPECT_EQ(Run({"info", missing, "--lang", "en"}), 3);
    EXPECT_TRUE(Says("Error opening the midi file")) << log_;
}

#ifndef _WIN32

// The first of them that says anything counts, as everywhere on such systems.
TEST(ConsoleTest, LanguageOfTheEnvironment) {
    constexpr std::array kNames{"LC_ALL", "LC_MESSAGES", "LANG"};
    std::map<std::string, std::string> before;
    for (const char* name : kNames) {
        const char* value = std::getenv(name);
        before[name] = value == nullptr ? "" : value;
    }
    const auto languageWith = [&](const std::array<const char*, 3>& values) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] == nullptr ? unsetenv(kNames[i]) : setenv(kNames[i], values[i], 1);
        }
        return SystemLanguage();
    };
    EXPECT_EQ(languageWith({nullptr, nullptr, nullptr}), Language::English);
    EXPECT_EQ(languageWith({nullptr, nullptr, "de_AT.UTF-8"}), Language::German);
    EXPECT_EQ(languageWith({"", "de", "en_GB.UTF-8"}), Language::German);
    EXPECT_EQ(languageWith({"C", "de", "de"}), Language::English);
    for (const auto& [name, value] : before) {
        value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
    }
}

#endif

TEST_F(CliTest, LostStandardOutputIsReported) {
    Put("song.mid", Format0Song());
    std::istringstream in;
    std::ostringstream log;
    std::ostream closed(nullptr);
    const std::vector<std::string> arguments{"info", At("song.mid")};
    EXPECT_EQ(RunCli(arguments, {in, closed, log, "1", Language::English, false}), 4);
    EXPECT_NE(log.str().find("standard output"), std::string::npos);
}

} // namespace
} // namespace tracksmith::cli
