#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "cli_fixture.h"

namespace tracksmith::cli {
namespace {

class RenderTest : public CliTest {
protected:
    void SetUp() override {
        Put("song.mid", Format0Song());
        code_ = Run({"render", At("song.mid"), "--out", At("song.wav")});
        if (code_ == 6) {
            EXPECT_NE(log_, ""); // says what is missing
            EXPECT_FALSE(Exists("song.wav"));
            GTEST_SKIP() << log_;
        }
    }

    int code_ = 0;
};

TEST_F(RenderTest, MakesAnAudioFile) {
    ASSERT_EQ(code_, 0) << log_;
    const test::Bytes audio = Get("song.wav");
    ASSERT_GT(audio.size(), 44'100U * 4); // the song lasts 1.4 seconds
    EXPECT_EQ(std::string(audio.begin(), audio.begin() + 4), "RIFF");
    int peak = 0; // of samples of 16 bits
    for (std::size_t i = 44; i + 1 < audio.size(); i += 2) {
        peak = std::max(peak, std::abs(static_cast<std::int16_t>(audio[i] | audio[i + 1] << 8)));
    }
    const std::size_t told = out_.find(", peak ");
    ASSERT_NE(told, std::string::npos) << out_;
    EXPECT_NEAR(std::stod(out_.substr(told + 7)), 20 * std::log10(peak / 32768.0), 0.15) << out_;
}

TEST_F(RenderTest, ExitCodes) {
    EXPECT_EQ(Run({"render", At("missing.mid"), "--out", At("x.wav")}), 3);
    EXPECT_EQ(Run({"render", At("song.mid"), "--out", At("none/x.wav")}), 4);
    EXPECT_EQ(Run({"render", At("song.mid"), "--out", At("song.wav")}), 4);
    EXPECT_TRUE(Says("--yes")) << log_;
    EXPECT_EQ(Run({"render", At("song.mid"), "--yes", "--out", At("song.mid")}), 4);
    EXPECT_EQ(Get("song.mid"), Format0Song());
    EXPECT_EQ(Run({"render", At("song.mid"), "--lang", "de", "--out", At("x.wav"), "--soundfont",
                   At("song.mid")}),
              6);
    EXPECT_TRUE(Says("kein lesbarer SoundFont")) << log_;
    EXPECT_FALSE(Exists("x.wav"));
    EXPECT_EQ(Run({"render", "--help"}), 0);
    for (const char* option : {"-o,--out", "--soundfont", "--honour-zel-ignore", "--min-length"}) {
        EXPECT_TRUE(Shows(option)) << option;
    }
}

} // namespace
} // namespace tracksmith::cli
