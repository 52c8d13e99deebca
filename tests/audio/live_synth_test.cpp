#include "audio/live_synth.h"

#include <cmath>
#include <csignal>
#include <numeric>
#include <thread>
#include <vector>

#include "audio/synth_backend.h"
#include "audio_fixture.h"

namespace tracksmith::audio {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(MessageRingTest, KeepsOrderAndBytesAcrossTheEnd) {
    MessageRing ring;
    // Sizes that share no factor with the ring's, so that messages lie across its end.
    for (std::uint32_t i = 0; i < 5'000; ++i) {
        Bytes message(1 + i * 37 % 1'009);
        std::iota(message.begin(), message.end(), static_cast<std::uint8_t>(i));
        ASSERT_TRUE(ring.Put(message, i));
        std::int64_t time = -1;
        ASSERT_TRUE(ring.PeekTime(time));
        ASSERT_EQ(time, i);
        const std::span<const std::uint8_t> got = ring.Take();
        ASSERT_EQ(Bytes(got.begin(), got.end()), message);
    }
    std::int64_t time = 0;
    EXPECT_FALSE(ring.PeekTime(time));
}

TEST(MessageRingTest, RefusesWhatHasNoRoomAndKeepsTheRest) {
    MessageRing ring;
    EXPECT_FALSE(ring.Put(Bytes(MessageRing::kLongestMessage + 1), 0));
    const Bytes long_(MessageRing::kLongestMessage, 0x42);
    int accepted = 0;
    while (accepted < 100 && ring.Put(long_, accepted)) {
        ++accepted;
    }
    EXPECT_EQ(accepted, 7);
    for (int i = 0; i < accepted; ++i) {
        EXPECT_EQ(ring.Take().size(), long_.size());
    }
    EXPECT_TRUE(ring.Put(long_, 0));
}

TEST(MessageRingTest, TwoSendersLoseNothing) {
    MessageRing ring;
    constexpr int kEach = 20'000;
    const auto send = [&ring](std::uint8_t sender) {
        for (int i = 0; i < kEach; ++i) {
            const Bytes message{sender, static_cast<std::uint8_t>(i & 0x7F),
                                static_cast<std::uint8_t>(i >> 7 & 0x7F)};
            while (!ring.Put(message, i)) {
                std::this_thread::yield();
            }
        }
    };
    std::thread first(send, std::uint8_t{0});
    std::thread second(send, std::uint8_t{1});
    int next[2] = {};
    for (int received = 0; received < 2 * kEach;) {
        std::int64_t time = 0;
        if (!ring.PeekTime(time)) {
            std::this_thread::yield();
            continue;
        }
        const std::span<const std::uint8_t> message = ring.Take();
        int& expected = next[message[0]];
        EXPECT_EQ(message[1] | message[2] << 7, expected & 0x3FFF);
        ++expected;
        ++received;
    }
    first.join();
    second.join();
}

class LiveSynthTest : public AudioTest {
protected:
    // Frame at which sound begins, -1 for silence.
    static int Onset(const std::vector<float>& samples) {
        for (std::size_t i = 0; i < samples.size(); ++i) {
            if (std::abs(samples[i]) > 0.0005F) {
                return static_cast<int>(i / 2);
            }
        }
        return -1;
    }
};

TEST_F(LiveSynthTest, NotesKeepTheirDistanceThoughBuffersAreFetchedUnevenly) {
    constexpr int kFrames = 1'024;
    constexpr std::int64_t kBufferUs = kFrames * 1'000'000LL / 44'100;
    std::vector<int> onsets;
    for (const std::int64_t noteUs : {300'000, 307'000, 319'000}) {
        LiveSynth synth({soundfont_, 1.0F, 64, 44'100});
        std::vector<float> all;
        for (int buffer = 0; buffer < 40; ++buffer) {
            const std::int64_t jitter = buffer % 3 * 2'000;
            const std::int64_t now = buffer * kBufferUs + jitter;
            if (noteUs <= now && noteUs > now - kBufferUs - 6'000 && all.size() > 0) {
                // Repeated sending is harmless: the same note sounds from its first time on.
                EXPECT_TRUE(synth.Send(Bytes{0x90, 60, 127}, noteUs));
            }
            std::vector<float> block(2 * kFrames);
            synth.Render(block, now);
            all.insert(all.end(), block.begin(), block.end());
        }
        onsets.push_back(Onset(all));
    }
    ASSERT_GT(onsets[0], 0);
    // 64 frames are the grid in which notes begin.
    EXPECT_NEAR(onsets[1] - onsets[0], 7 * 44.1, 80);
    EXPECT_NEAR(onsets[2] - onsets[1], 12 * 44.1, 80);
}

TEST_F(LiveSynthTest, VolumeIsHeard) {
    const auto loudest = [this](std::uint32_t volume) {
        LiveSynth synth({soundfont_, 1.0F, 64, 44'100});
        synth.SetVolume(volume);
        synth.Send(Bytes{0x90, 60, 127}, 0);
        std::vector<float> block(8'192);
        synth.Render(block, 1'000'000);
        synth.Render(block, 1'100'000);
        float peak = 0;
        for (const float sample : block) {
            peak = std::max(peak, std::abs(sample));
        }
        return peak;
    };
    const float full = loudest(0xFFFF);
    EXPECT_GT(full, 0.01F);
    EXPECT_NEAR(loudest(0x4000), full / 4, full / 40);
    EXPECT_EQ(loudest(0), 0);
}

TEST_F(LiveSynthTest, PortPlaysWithoutASoundCard) {
    SynthBackend backend({soundfont_});
    midi::ResultCode result = midi::kNoDriver;
    EXPECT_EQ(backend.OpenOutput("Other", result), nullptr);
    EXPECT_EQ(result, midi::kBadDeviceId);
    const auto connection = backend.OpenOutput(backend.Outputs().at(0).productName, result);
    ASSERT_NE(connection, nullptr);
    EXPECT_FALSE(backend.LastError());
    EXPECT_TRUE(backend.IsSilent());
    // What ends the program is left to the program.
    for (const int signal : {SIGTERM, SIGINT}) {
        EXPECT_EQ(std::signal(signal, SIG_DFL), SIG_DFL);
    }
    // More than fits at once: sending waits until the silent device has fetched some.
    const Bytes sysex(10, 0x01);
    int refused = 0;
    for (int i = 0; i < 100'000; ++i) {
        refused += connection->Send(sysex) == midi::kNoError ? 0 : 1;
    }
    EXPECT_EQ(refused, 0);
    EXPECT_EQ(connection->Send(Bytes(70'000)), midi::kInvalidParameter);
}

TEST_F(LiveSynthTest, BrokenSoundfontIsToldAndTheUsualOnePlays) {
    SynthBackend backend({folder_ / "missing.sf2"});
    midi::ResultCode result = midi::kNoDriver;
    EXPECT_NE(backend.OpenOutput(kSynthPort, result), nullptr);
    EXPECT_EQ(result, midi::kNoError);
    ASSERT_TRUE(backend.LastError());
    EXPECT_NE(backend.LastError()->In(Language::English).find("missing.sf2"), std::string::npos);
}

} // namespace
} // namespace tracksmith::audio
