#include <nlohmann/json.hpp>

#include "base/recording_message_host.h"
#include "cli_fixture.h"
#include "support/scratch_settings.h"

#include "app/load_sequence.h"
#include "instruments/catalogue.h"
#include "instruments/instrument_settings.h"

namespace tracksmith::cli {
namespace {

using nlohmann::json;

std::vector<json> JsonLines(const std::string& text) {
    std::vector<json> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(json::parse(line));
    }
    return lines;
}

/// The user's own data in the test's folder.
class InstrumentsTest : public CliTest {
protected:
    void SetUp() override {
        const std::string folder = system::PathText(folder_.Path());
#ifdef _WIN32
        _putenv_s("APPDATA", folder.c_str());
#else
        setenv("XDG_DATA_HOME", folder.c_str(), 1);
#endif
    }

    /// The system-exclusive messages of a converted file, without their F0.
    std::vector<test::Bytes> Messages(const std::string& file) const {
        session::Session session;
        RecordingMessageHost host;
        app::OpenMidiData(session, Get(file), "", host);
        std::vector<test::Bytes> messages;
        for (const song::Track& track : session.Song().tracks) {
            for (song::ConstEventLink event = track.first; event; event = event->next) {
                if (event->status == song::kSystemExclusive) {
                    const auto bytes = event->Payload();
                    messages.emplace_back(bytes.begin(), bytes.end());
                }
            }
        }
        return messages;
    }
};

TEST_F(InstrumentsTest, ListsTheCatalogueAndFindsInstrumentsByWords) {
    ASSERT_EQ(Run({"instruments", "--json"}), 0);
    EXPECT_EQ(JsonLines(out_).size(), instruments::kInstrumentCount);
    ASSERT_EQ(Run({"instruments", "--json", "tyros", "YAMAHA", "5"}), 0);
    const json line = JsonLines(out_).at(0);
    EXPECT_EQ(line["id"], 74);
    EXPECT_GT(line["voices"], 1000);
    EXPECT_EQ(line["operations"].front(), json({{"name", "RemoveGMSysex"}, {"when", nullptr}}));
    EXPECT_EQ(std::ranges::count(line["operations"], "only with Yamaha DSPs",
                                 [](const json& each) {
                                     return each["when"].is_string()
                                                ? each["when"].get<std::string>()
                                                : "";
                                 }),
              2);
    ASSERT_EQ(Run({"instruments", "--json", "genos2"}), 0);
    EXPECT_EQ(JsonLines(out_).at(0)["names"], "XG");
    EXPECT_EQ(Run({"instruments", "no", "such", "thing"}), 1);
    ASSERT_EQ(Run({"instruments", "genos2"}), 0);
    EXPECT_EQ(out_, "106  Yamaha Genos2                     XG names\n");
    ASSERT_EQ(Run({"instruments", "tyros", "5"}), 0);
    EXPECT_EQ(out_, " 74  Yamaha Tyros 5                    2056 voices\n");
}

TEST_F(InstrumentsTest, TheDocumentedTableIsWhatTheProgramDoes) {
    const test::Bytes document =
        test::FileBytes(std::filesystem::path(TRACKSMITH_SOURCE_DIR) / "docs" / "instruments.md");
    ASSERT_EQ(Run({"instruments", "--markdown"}), 0);
    const std::string text(document.begin(), document.end());
    EXPECT_TRUE(text.ends_with(out_)) << "tools/make_instrument_table.sh writes it anew";
    EXPECT_NE(out_.find("| 15 | Roland SC-88 | 860 | RemoveGMSysex,"), std::string::npos);
}

// Notes at tick 0 and later ones that need the same voice.
test::Bytes SongWithEarlyNotes() {
    return test::MidiFileBuilder(0)
        .Track(test::TrackBuilder()
                   .Sysex(0, {0x7E, 0x7F, 0x09, 0x01, 0xF7})
                   .Short(0, 0xB0, 0, 8)
                   .Short(0, 0xB0, 32, 1)
                   .Program(0, 0, 24)
                   .Note(0, 0, 60, 100)
                   .Note(0, 9, 36, 100)
                   .NoteOff(480, 0, 60)
                   .NoteOff(0, 9, 36)
                   .Note(0, 0, 62, 100)
                   .NoteOff(480, 0, 62)
                   .End(10))
        .Build();
}

TEST_F(InstrumentsTest, ConvertsForAnInstrumentAndSaysWhatItDid) {
    Put("songs/song.mid", SongWithEarlyNotes());
    ASSERT_EQ(Run({"convert", At("songs"), "--instrument", "genos", "--out", At("new")}), 0)
        << log_;
    EXPECT_TRUE(Says("Prepared for Yamaha Genos: −1 GM System On, +1 XG System On")) << log_;
    const test::Bytes xgOn{0x43, 0x10, 0x4C, 0x00, 0x00, 0x7E, 0x00, 0xF7};
    EXPECT_EQ(Messages("new/song.mid"), (std::vector<test::Bytes>{xgOn}));

    EXPECT_TRUE(Says("3 settings are repeated behind the reset (channel 1)")) << log_;
    EXPECT_TRUE(Says("2 notes begin before the instrument is ready (channels 1, 10)")) << log_;

    const test::Bytes before = Get("new/song.mid");
    EXPECT_EQ(Run({"convert", At("songs"), "--instrument", "15", "--out", At("dry"), "--dry-run"}),
              0);
    EXPECT_TRUE(Says("GS Reset"));
    EXPECT_FALSE(Exists("dry"));
    ASSERT_EQ(
        Run({"convert", At("songs"), "--instrument", "genos", "--out", At("dry"), "-n", "--json"}),
        0);
    EXPECT_EQ(JsonLines(out_).at(0)["ok"], true);
    EXPECT_EQ(JsonLines(out_).at(0)["target"], At("dry/song.mid"));
    const auto preparation = JsonLines(out_).at(0)["preparation"];
    EXPECT_EQ(preparation["removed"], 1);
    EXPECT_EQ(preparation["instrument"], "Yamaha Genos");
    EXPECT_EQ(preparation["inserted"], 1);
    EXPECT_EQ(preparation["kept"]["repeated"]["count"], 3);
    EXPECT_EQ(preparation["kept"]["earlyNotes"]["channels"], (std::vector<int>{1, 10}));
    ASSERT_EQ(Run({"convert", At("songs"), "--instrument", "genos", "--out", At("later"),
                   "--lead-in", "auto"}),
              0);
    EXPECT_TRUE(Says("an empty measure stands in front now")) << log_;
    EXPECT_FALSE(Says("before the instrument is ready")) << log_;
    EXPECT_EQ(Messages("later/song.mid"), (std::vector<test::Bytes>{xgOn}));
    EXPECT_EQ(Run({"convert", At("songs"), "--out", At("later"), "--lead-in", "auto"}), 2);
    EXPECT_EQ(Run({"convert", At("songs"), "--instrument", "psr-s9", "--out", At("new")}), 2);
    EXPECT_TRUE(Says("Yamaha PSR-S950")) << log_;
    EXPECT_EQ(Run({"convert", At("songs"), "--instrument", "none", "--out", At("new")}), 2);
    EXPECT_EQ(Get("new/song.mid"), before);
}

TEST_F(InstrumentsTest, PutsTheMessagesOnTheTrackAskedFor) {
    Put("song.mid", Format0Song());
    ASSERT_EQ(Run({"convert", At("song.mid"), "--split", "--instrument", "Roland SC-88Pro",
                   "--gm-before-gs", "--out", At("a")}),
              0);
    EXPECT_TRUE(Says("GM System On")) << log_;
    EXPECT_EQ(Messages("a/song.mid").at(0).at(0), 0x7E);
    ASSERT_EQ(Run({"convert", At("song.mid"), "--split", "--instrument", "Roland SC-88Pro",
                   "--sysex-track", "3", "--out", At("b")}),
              0);
    EXPECT_NE(Get("a/song.mid"), Get("b/song.mid"));
}

TEST_F(InstrumentsTest, PreparesAsTheUserHasChosenOnlyWhenAsked) {
    const test::ScratchSettings scratch;
    settings_ = scratch.Location();
    {
        settings::SettingsStore store(settings_);
        instruments::InstrumentSettings chosen(store);
        for (const instruments::SysexSwitch& each : instruments::SysexSwitches()) {
            if (each.field == &instruments::SysexOptions::gmBeforeGs) {
                ASSERT_TRUE(chosen.WriteSwitch(each, "Roland SC-88Pro", true));
            }
        }
    }
    Put("song.mid", Format1Song());
    const std::vector<std::string> convert{"convert", At("song.mid"), "--instrument",
                                           "Roland SC-88Pro", "--out"};
    const auto messages = [&](const std::string& folder, const std::string& option) {
        std::vector<std::string> arguments = convert;
        arguments.push_back(At(folder));
        if (!option.empty()) {
            arguments.push_back(option);
        }
        EXPECT_EQ(Run(arguments), 0) << log_;
        return Messages(folder + "/song.mid");
    };
    const test::Bytes gmOn{0x7E, 0x7F, 0x09, 0x01, 0xF7};
    EXPECT_EQ(std::ranges::count(messages("plain", ""), gmOn), 0);
    EXPECT_EQ(std::ranges::count(messages("chosen", "--with-settings"), gmOn), 1);
    EXPECT_EQ(Run({"convert", At("song.mid"), "--with-settings", "--out", At("x")}), 2);
}

// Whatever the number of jobs, files and lines come out the same and in order.
TEST_F(InstrumentsTest, JobsChangeNothingButTheTime) {
    for (int i = 0; i < 40; ++i) {
        const std::string name = "songs/" + std::to_string(100 + i) + ".mid";
        Put(name, i % 10 == 3 ? BrokenSong() : Format0Song());
    }
    const auto convert = [&](const char* jobs) {
        return Run({"convert", At("songs"), "--instrument", "sc-8850", "--out", At("new"), "--jobs",
                    jobs, "--yes"});
    };
    ASSERT_EQ(convert("1"), 5);
    const std::string out = out_;
    const std::string log = log_;
    EXPECT_TRUE(Says("40 files: 36 done, 4 failed")) << log_;
    const test::Bytes result = Get("new/139.mid");
    ASSERT_EQ(convert("4"), 5);
    EXPECT_EQ(out_, out);
    EXPECT_EQ(Get("new/139.mid"), result);
    ASSERT_EQ(Run({"convert", At("songs"), "--instrument", "sc-8850", "--out", At("new"), "--jobs",
                   "4", "--yes"}),
              5);
    EXPECT_EQ(log_.size(), log.size());
    EXPECT_EQ(Run({"convert", At("songs"), "--jobs", "0", "--out", At("new")}), 2);
}

TEST_F(InstrumentsTest, ListsVoicesAndTakesOwnVoiceLists) {
    ASSERT_EQ(Run({"voices", "Yamaha Tyros 5", "concert", "grand", "--json"}), 0);
    EXPECT_EQ(JsonLines(out_).at(0)["instrument"], "Yamaha Tyros 5");
    EXPECT_EQ(Run({"voices", "Yamaha Tyros 5", "zyxw"}), 1);
    EXPECT_TRUE(Says("0/112/1")) << log_;
    ASSERT_EQ(Run({"voices", "Yamaha Genos", "64/0/1", "--json"}), 0);
    EXPECT_EQ(JsonLines(out_).at(0)["own"], false);
    EXPECT_EQ(JsonLines(out_).at(0)["schema"], 1);
    ASSERT_EQ(Run({"voices", "Yamaha Genos", "NylonGuitar", "SW"}), 0);
    EXPECT_EQ(out_, "  8  34   1  NylonGuitar SW (S.Art!)           Panel       A.Guitar\n");
    ASSERT_EQ(Run({"voices", "Yamaha Genos"}), 0);
    EXPECT_TRUE(Says("1711 own + 745 inherited")) << log_;

    Put("list.ins", test::BytesOf(".Patch Names\n[P]\n0=First\n5=Sixth\n"
                                  ".Instrument Definitions\n[Korg]\nPatch[*]=P\n"));
    ASSERT_EQ(Run({"voices", "Korg Pa700", "--import", At("list.ins")}), 0) << log_;
    ASSERT_EQ(Run({"voices", "Korg Pa700", "sixth", "--json"}), 0) << log_;
    EXPECT_EQ(JsonLines(out_).at(0)["program"], 5);
    ASSERT_EQ(Run({"voices", "Korg Pa700", "--export", At("list.tsv")}), 0);
    ASSERT_EQ(Run({"voices", "Korg Pa1000 (Musikant)", "--import", At("list.tsv")}), 0) << log_;
    Put("bad.midnam", test::BytesOf("<MIDINameDocument>\n<Master"));
    EXPECT_EQ(Run({"voices", "Korg Pa700", "--import", At("bad.midnam")}), 3);
    EXPECT_TRUE(Says("bad.midnam")) << log_;
    EXPECT_EQ(Run({"voices", "Korg Pa700", "sixth"}), 0);
}

TEST_F(InstrumentsTest, NothingIsReplacedUnasked) {
    Put("list.ins", test::BytesOf(".Patch Names\n[P]\n0=First\n"
                                  ".Instrument Definitions\n[Korg]\nPatch[0]=P\n"));
    Put("other.ins", test::BytesOf(".Patch Names\n[P]\n0=Other\n"
                                   ".Instrument Definitions\n[Korg]\nPatch[0]=P\n"));
    const auto import = [this](const char* file) {
        return std::vector<std::string>{"voices", "Korg Pa700", "--import", At(file)};
    };
    ASSERT_EQ(Run(import("list.ins")), 0) << log_;
    EXPECT_EQ(Run(import("other.ins")), 4);
    EXPECT_TRUE(Says("--yes")) << log_;
    EXPECT_EQ(Run({"voices", "Korg Pa700", "other"}), 1);
    auto answered = import("other.ins");
    answered.emplace_back("--yes");
    EXPECT_EQ(Run(answered), 0) << log_;
    EXPECT_EQ(Run({"voices", "Korg Pa700", "other"}), 0);
    EXPECT_EQ(Run({"voices", "Korg Pa700", "--export", At("list.ins")}), 4);
    EXPECT_EQ(Run({"voices", "Korg Pa700", "--export", At("list.ins"), "--yes"}), 0);
}

TEST_F(InstrumentsTest, InfoNamesVoicesOfAnInstrument) {
    Put("song.mid", Format0Song());
    ASSERT_EQ(Run({"info", "--json", "--instrument", "XG Soundset", At("song.mid")}), 0);
    const auto channel = [this] { return JsonLines(out_).at(0)["channels"][0]; };
    EXPECT_EQ(channel()["voice"], "unknown 8·1·25");
    EXPECT_EQ(channel()["voiceMatch"], "unknown");
    ASSERT_EQ(Run({"info", "--json", "--instrument", "GM Soundset", At("song.mid")}), 0);
    EXPECT_EQ(channel()["voice"], "Acoustic Guitar (nylon)");
    EXPECT_EQ(channel()["voiceMatch"], "similar");
    ASSERT_EQ(Run({"info", "--instrument", "GM Soundset", At("song.mid")}), 0);
    EXPECT_TRUE(
        Shows("                     1        1         16        2  Little Song\n"
              "  Channels           #  Program       Bank    Notes  Voice\n"
              "                     1       25        8/1        1  "
              "≈ Acoustic Guitar (nylon)\n"))
        << out_;
    Put("exact.mid", test::MidiFileBuilder(0)
                         .Track(test::TrackBuilder().Program(0, 0, 24).Note(0, 0, 60, 9).End(9))
                         .Build());
    ASSERT_EQ(Run({"info", "--instrument", "GM Soundset", At("exact.mid")}), 0);
    EXPECT_TRUE(Shows("       25        -/-        1  Acoustic Guitar (nylon)\n")) << out_;
    EXPECT_EQ(Run({"info", "--instrument", "nothing", At("song.mid")}), 2);
    EXPECT_EQ(Run({"info", "--instrument=-1", At("song.mid")}), 2); // no part of "DoX-1"
    EXPECT_EQ(Run({"info", "--instrument", "109", At("song.mid")}), 2);
}

} // namespace
} // namespace tracksmith::cli
