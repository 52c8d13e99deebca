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
    testing::Values(UsageCase{{}, "Usage error"}, UsageCase{{"info"}, "FILE"},
                    UsageCase{{"nonsense"}, "Usage error"},
                    UsageCase{{"info", "a.mid", "--nonsense"}, "--nonsense"},
                    UsageCase{{"info", "a.mid", "--lang", "fr"}, "--lang"},
                    UsageCase{{"convert", "a.mid", "--format", "2", "--out", "x"}, "--format"},
                    UsageCase{{"convert", "a.mid"}, "--out"},
                    UsageCase{{"convert", "a.mid", "--out", "x", "--in-place"}, "exclude"},
                    UsageCase{{"convert", "a.mid", "b.mid", "--out", "-"}, "Only one song"},
                    UsageCase{{"convert", "-", "--in-place"}, "standard input"}));

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
    EXPECT_TRUE(Shows("\nBefehle:\n  info ")) << out_;
    EXPECT_EQ(log_, "");
}

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
