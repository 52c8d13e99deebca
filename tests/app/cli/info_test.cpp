#include <nlohmann/json.hpp>

#include "cli_fixture.h"

namespace tracksmith::cli {
namespace {

using nlohmann::json;

std::vector<json> Lines(const std::string& text) {
    std::vector<json> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(json::parse(line));
    }
    return lines;
}

TEST_F(CliTest, InfoJsonHasEveryField) {
    Put("song.mid", Format0Song());
    ASSERT_EQ(Run({"info", "--json", At("song.mid")}), 0);
    const std::vector<json> lines = Lines(out_);
    ASSERT_EQ(lines.size(), 1U);
    json expected = json::parse(R"json({
        "schema": 1, "ok": true, "error": null, "format": 0, "fileFormat": 0, "division": 480,
        "trackCount": 1, "notes": 2, "tempos": 2, "timeSignatures": 1, "keySignatures": 0,
        "sysex": 1, "families": ["GM"], "lyrics": 1, "songLength": 1450, "lengthMs": 1408,
        "channels": [
            {"channel": 1, "notes": 1, "bankMsb": 8, "bankLsb": 1, "program": 24,
             "voice": "Acoustic Guitar (nylon)", "voiceMatch": "similar"},
            {"channel": 10, "notes": 1, "bankMsb": null, "bankLsb": null, "program": null,
             "voice": null, "voiceMatch": null}],
        "changes": {"noteOnVelocityZero": 1}})json");
    json found = lines[0];
    EXPECT_EQ(found["file"], At("song.mid"));
    EXPECT_TRUE(found["lengthText"].is_string());
    EXPECT_EQ(found["tracks"][0]["name"], "Little Song");
    EXPECT_EQ(found["tracks"][0]["channel"], 1);
    EXPECT_EQ(found["tracks"][0]["notes"], 2);
    EXPECT_EQ(found["tracks"][0]["events"], found["events"]);
    for (const char* field : {"file", "lengthText", "tracks", "events"}) {
        found.erase(field);
    }
    EXPECT_EQ(found, expected) << json::diff(found, expected);
}

TEST_F(CliTest, InfoTextIsSetInColumns) {
    Put("song.mid", Format0Song());
    ASSERT_EQ(Run({"info", At("song.mid")}), 0);
    EXPECT_EQ(out_, At("song.mid") +
                        "\n"
                        "  Name           Little Song\n"
                        "  Format         0\n"
                        "  Division       480 ticks per quarter note\n"
                        "  Length         002.01.010   0:01.408\n"
                        "  Events         16\n"
                        "  Notes          2\n"
                        "  SysEx          1\n"
                        "  Messages for   GM\n"
                        "  Lyrics         1\n"
                        "  Key signatures 0\n"
                        "  Tempo          001.01.000     0:00   120 BPM\n"
                        "                 001.03.000     0:01   150 BPM\n"
                        "  Time signature 001.01.000     0:00   3/4\n"
                        "  Tracks             #  Channel     Events    Notes  Name\n"
                        "                     1        1         16        2  Little Song\n"
                        "  Channels           #  Program       Bank    Notes  Voice\n"
                        "                     1       25        8/1        1  "
                        "≈ Acoustic Guitar (nylon)\n"
                        "                    10        -        -/-        1  \n"
                        "  Changed            1  note-ons with velocity 0 stored as note-offs\n");
    Put("bare.mid", test::MidiFileBuilder()
                        .Track(test::TrackBuilder().Text(0, 1, "x").End(999))
                        .Track(test::TrackBuilder().Text(0, 3, "Words").Text(0, 5, "la").End(999))
                        .Build());
    ASSERT_EQ(Run({"info", At("bare.mid"), At("song.mid")}), 0);
    EXPECT_TRUE(Shows("  Messages for   -\n")) << out_;
    EXPECT_TRUE(
        Shows("                     2        -          4        0  Words\n"
              "  Changed        nothing\n\n")) // a blank line between songs
        << out_;
}

TEST_F(CliTest, BadFilesAmongGoodOnes) {
    Put("songs/a.mid", Format0Song());
    Put("songs/B.MIDI", BrokenSong());
    Put("songs/deep/c.Kar", Format1Song());
    Put("songs/readme.txt", BrokenSong());
    Put("empty/readme.txt", BrokenSong());
    EXPECT_EQ(Run({"info", "--json", At("songs"), At("missing.mid"), At("empty")}), 5);
    std::vector<std::string> good;
    std::vector<std::string> bad;
    for (const json& line : Lines(out_)) {
        EXPECT_EQ(line["schema"], 1);
        EXPECT_EQ(line["ok"].get<bool>(), line["error"].is_null());
        (line["ok"] ? good : bad).push_back(line["file"]);
    }
    EXPECT_EQ(good, (std::vector{At("songs/a.mid"), At("songs/deep/c.Kar")}));
    EXPECT_EQ(bad, (std::vector{At("empty"), At("songs/B.MIDI"), At("missing.mid")}));
    EXPECT_TRUE(Says("5 files: 2 done, 3 failed")) << log_;
    Run({"info", "--quiet", At("songs")});
    EXPECT_FALSE(Says("done")) << log_;
    EXPECT_TRUE(Says("B.MIDI")) << log_;
    EXPECT_FALSE(Says("\r"));
    terminal_ = true;
    Run({"info", At("songs")});
    EXPECT_TRUE(Says("\r1 / 3") && Says("\r2 / 3") && !Says("3 / 3")) << log_;
}

TEST_F(CliTest, SingleUnreadableInputEndsWithThree) {
    Put("broken.mid", BrokenSong());
    Put("empty/readme.txt", {});
    for (const std::string name : {"broken.mid", "missing.mid", "empty"}) {
        EXPECT_EQ(Run({"info", At(name)}), 3) << name;
        EXPECT_EQ(out_, "");
        EXPECT_TRUE(Says(name)) << log_;
    }
    EXPECT_EQ(Run({"info", "-"}, "too short"), 3);
}

TEST_F(CliTest, InfoTextShowsLongListsWholeOnlyOnDemand) {
    test::TrackBuilder track;
    for (std::uint32_t i = 0; i < 20; ++i) {
        track.Tempo(480, 400'000 + 10'000 * i);
    }
    const test::Bytes file =
        test::MidiFileBuilder(0).Track(track.Note(480, 0, 60, 0).End()).Build();
    const std::string input(file.begin(), file.end());
    const auto shownTempos = [this] {
        std::size_t count = 0;
        for (std::size_t at = 0; (at = out_.find(" BPM\n", at)) != std::string::npos; ++at) {
            ++count;
        }
        return count;
    };
    ASSERT_EQ(Run({"info", "-", "--lang", "de"}, input), 0);
    const std::size_t shown = shownTempos();
    EXPECT_LT(shown, 20U);
    ASSERT_EQ(Run({"info", "-", "--all"}, input), 0);
    const std::size_t all = shownTempos();
    EXPECT_GE(all, 20U);
    Run({"info", "-", "--lang", "de"}, input);
    EXPECT_NE(out_.find("… und " + std::to_string(all - shown) + " weitere"), std::string::npos)
        << out_;
    EXPECT_NE(out_.find("Auflösung      480 Ticks"), std::string::npos) << out_;
}

} // namespace
} // namespace tracksmith::cli
