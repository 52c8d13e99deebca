#include "audio/render_song.h"

#include <fstream>

#include "audio/audio_error.h"
#include "audio/soundfont.h"
#include "audio_fixture.h"

#include "song/event_chain.h"

namespace tracksmith::audio {
namespace {

namespace fs = std::filesystem;

// Reverb and chorus keep a trace of themselves when nothing plays.
constexpr float kNoiseFloor = 0.0001F;

class RenderSongTest : public AudioTest {
protected:
    /// One second of rest, a held organ note of one second, then rest up to four seconds.
    void MakeSong() {
        StartSong(song_, 2);
        song::InsertByTick(song_.tracks[1],
                           song::NewShortEvent(song_.pool, 0, song::kProgramChange, 16, 0));
        AddNote(song_, 1, 960, 1920, 0, 60);
        FinishSong(song_, 3840);
    }

    std::vector<fs::path> FilesInFolder() const {
        std::vector<fs::path> files;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            files.push_back(entry.path().filename());
        }
        return files;
    }

    static std::string ErrorOf(const std::function<void()>& action, AudioFault fault) {
        try {
            action();
        } catch (const EAudioError& error) {
            EXPECT_EQ(error.Fault(), fault);
            EXPECT_NE(error.In(Language::German), error.In(Language::English));
            return error.In(Language::English);
        }
        return "no error";
    }

    song::Song song_;
};

TEST_F(RenderSongTest, NoteSoundsInItsTimeOnly) {
    MakeSong();
    const fs::path file = folder_ / "song.wav";
    const RenderResult result = RenderSong(song_, file);
    const Recording sound = ReadWav(file);
    ASSERT_EQ(sound.channels, 2);
    EXPECT_EQ(sound.sampleRate, 44'100);
    EXPECT_LT(sound.Peak(0, 999), kNoiseFloor);
    EXPECT_GT(sound.Peak(1000, 1100), 0.01F);
    EXPECT_GT(sound.Peak(1800, 2000), 0.01F);
    EXPECT_LT(sound.Peak(3700, 3990), 0.002F);
    EXPECT_GE(result.lengthMs, 3990);
    EXPECT_NEAR(static_cast<double>(sound.samples.size()) / 2 * 1000 / 44'100,
                static_cast<double>(result.lengthMs), 1.5);
    EXPECT_NEAR(sound.Peak(0, 60'000), result.peak, 0.001F);
    EXPECT_EQ(FilesInFolder(), std::vector<fs::path>{"song.wav"});
}

TEST_F(RenderSongTest, IgnoredTracksAndDeadEventsAreSilent) {
    StartSong(song_, 2);
    AddNote(song_, 0, 0, 480, 0, 60);
    AddNote(song_, 1, 0, 480, 0, 64);
    FinishSong(song_, 960);
    song_.tracks[0].ignored = 1;
    song_.tracks[1].first->next->length = 0;
    EXPECT_LT(RenderSong(song_, folder_ / "song.wav").peak, kNoiseFloor);
}

TEST_F(RenderSongTest, MuteAndTimeShiftAreAsInPlaying) {
    MakeSong();
    const fs::path file = folder_ / "song.wav";
    RenderOptions options;
    options.channels = 0xFFFE;
    EXPECT_LT(RenderSong(song_, file, options).peak, kNoiseFloor);
    options.channels = 0x0001;
    song_.tracks[1].timeShiftMs = 500;
    RenderSong(song_, file, options);
    EXPECT_GT(ReadWav(file).Peak(500, 600), 0.01F);
    // Only settings remain of what is moved before the start.
    song_.tracks[1].timeShiftMs = 1500;
    EXPECT_LT(RenderSong(song_, file, options).peak, kNoiseFloor);
}

TEST_F(RenderSongTest, LoudSoundIsLimited) {
    StartSong(song_, 1);
    for (std::uint8_t key = 36; key < 84; ++key) {
        AddNote(song_, 0, 0, 900, 0, key, 127);
    }
    FinishSong(song_, 1000);
    RenderOptions options;
    options.bits = SampleBits::Pcm24;
    options.sampleRate = 48'000;
    options.gain = 3.0F;
    const RenderResult result = RenderSong(song_, folder_ / "song.wav", options);
    EXPECT_GT(result.peak, 1.0F);
    EXPECT_GT(result.limitedSamples, 0);
    const Recording sound = ReadWav(folder_ / "song.wav");
    EXPECT_EQ(sound.sampleRate, 48'000);
    EXPECT_LE(sound.Peak(0, 60'000), 1.0F);
}

TEST_F(RenderSongTest, CancelLeavesNothingAndKeepsTheOldFile) {
    MakeSong();
    const fs::path file = folder_ / "song.wav";
    std::int64_t last = -1;
    const RenderProgress stopAtOneSecond = [&](std::int64_t doneMs, std::int64_t totalMs) {
        EXPECT_GT(doneMs, last);
        EXPECT_EQ(totalMs, song_.lengthMs);
        last = doneMs;
        return doneMs < 1000;
    };
    EXPECT_TRUE(RenderSong(song_, file, {}, stopAtOneSecond).cancelled);
    EXPECT_GE(last, 1000);
    EXPECT_LT(last, 1300);
    EXPECT_TRUE(FilesInFolder().empty());

    std::ofstream(file) << "old";
    last = -1;
    EXPECT_TRUE(RenderSong(song_, file, {}, stopAtOneSecond).cancelled);
    EXPECT_EQ(fs::file_size(file), 3U);
}

TEST_F(RenderSongTest, UnwritableTargets) {
    MakeSong();
    fs::create_directory(folder_ / "folder.wav");
    for (const fs::path& target : {folder_ / "missing" / "song.wav", folder_ / "folder.wav"}) {
        const std::string text =
            ErrorOf([&] { RenderSong(song_, target); }, AudioFault::NotWritten);
        EXPECT_EQ(text, "The audio file cannot be created: " + target.string());
    }
    song_.lengthMs = 2'000'000'000;
    EXPECT_NE(ErrorOf([&] { RenderSong(song_, folder_ / "long.wav"); }, AudioFault::NotWritten)
                  .find("too long"),
              std::string::npos);
    EXPECT_EQ(FilesInFolder(), std::vector<fs::path>{"folder.wav"});
}

TEST_F(RenderSongTest, MissingAndBrokenSoundfonts) {
    MakeSong();
    RenderOptions options;
    options.soundfont = folder_ / "none.sf2";
    const auto render = [&] { RenderSong(song_, folder_ / "song.wav", options); };
    EXPECT_EQ(ErrorOf(render, AudioFault::NoInstrument),
              "The SoundFont file was not found: " + options.soundfont.string());
    options.soundfont = folder_ / "broken.sf2";
    for (const std::string_view bytes : {"RIFF, but no more", "RIFF\x08\x01\x01\x01sfbkLIST"}) {
        std::ofstream(options.soundfont) << bytes;
        EXPECT_EQ(ErrorOf(render, AudioFault::NoInstrument),
                  "The file is no readable SoundFont: " + options.soundfont.string());
    }
    EXPECT_FALSE(fs::exists(folder_ / "song.wav"));
}

} // namespace
} // namespace tracksmith::audio
