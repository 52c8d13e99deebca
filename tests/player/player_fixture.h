#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "base/system/message_poster.h"
#include "fake_stopwatch.h"
#include "recording_driver.h"
#include "support/midi_file_builder.h"
#include "support/song_assert.h"

#include "player/player.h"

namespace tracksmith::test {

/// Notes that still sound on each device after all that it has received.
class SoundingNotes {
public:
    void Take(const Received& message) {
        const std::vector<std::uint8_t>& bytes = message.bytes;
        const int channel = bytes[0] & 0x0F;
        const auto note = [&] { return std::pair(message.device, channel * 128 + bytes[1]); };
        const int command = bytes[0] & 0xF0;
        if (command == 0x90 && bytes[2] > 0) {
            notes_.insert(note());
        } else if (command == 0x80 || command == 0x90) {
            notes_.erase(note());
        } else if (command == 0xB0 && (bytes[1] == 120 || bytes[1] == 123)) {
            std::erase_if(notes_, [&](const auto& sounding) {
                return sounding.first == message.device && sounding.second / 128 == channel;
            });
        }
    }
    /// A device that has gone sounds no more.
    void Forget(const std::string& device) {
        std::erase_if(notes_, [&](const auto& sounding) { return sounding.first == device; });
    }
    std::size_t Count() const { return notes_.size(); }

private:
    std::set<std::pair<std::string, int>> notes_;
};

/// A song of one tick per millisecond: division 500 at 120 BPM.
inline MidiFileBuilder MillisecondFile() {
    return MidiFileBuilder(1, 500);
}

/// A player with a fake clock, one recording driver and a song. What the devices receive is
/// collected in `log` and checked for notes that nobody ends.
class PlayerFixture : public ::testing::Test {
protected:
    ~PlayerFixture() override {
        if (player) {
            player->FormDestroy();
            Collect();
            EXPECT_EQ(sounding.Count(), 0U) << "notes are left hanging";
        }
    }

    /// Makes the player for the file.
    void Load(const Bytes& file) {
        decoded = std::make_unique<DecodedSong>(file);
        decoded->Timed();
        auto stopwatch = std::make_unique<FakeStopwatch>();
        clock = stopwatch.get();
        driver.clock = [this] { return clock->ElapsedUs(); };
        player = std::make_unique<player::TMidiPlayer>(decoded->song, std::move(stopwatch));
        clock->awaitSending = [this] { EXPECT_TRUE(player->WaitUntilSent(kPatient)); };
        player->SetListener({[this](bool playing) { told.push_back(playing); },
                             [this] { ++portChanges; },
                             {},
                             [this] { ++hangsOver; }});
        player->FormCreate({{{&driver, false}}, nullptr, "", host, sendPatience});
        EXPECT_TRUE(player->SongLoaded());
        Collect();
        log.clear();
    }
    void Load(const MidiFileBuilder& file) { Load(file.Build()); }

    void Play() { EXPECT_TRUE(player->Play()); }
    void Stop() { EXPECT_TRUE(player->Stop()); }
    void Route(std::size_t channel, std::size_t port, std::uint8_t target) {
        player::ChannelRoutes routes = player->Routes().Routes();
        routes[channel] = {port, target};
        EXPECT_TRUE(player->SetRoutes(routes));
    }
    /// Lets `ms` milliseconds pass.
    void Run(std::int64_t ms) {
        clock->RunUntil(clock->ElapsedUs() + ms * 1000);
        system::DispatchMessages();
        Collect();
    }
    void Collect() {
        EXPECT_TRUE(player->WaitUntilSent(kPatient));
        auto taken = driver.Take();
        // Each port sends on its own thread, so nothing says which of two comes first.
        std::ranges::stable_sort(taken, {}, [](const Received& message) {
            return std::tie(message.us, message.device);
        });
        for (Received& message : taken) {
            sounding.Take(message);
            log.push_back(std::move(message));
        }
    }
    /// What was received since the last call, "ms bytes" joined by "; ". Silencing all channels is
    /// shown as "ms silence".
    std::string Log() {
        Collect();
        std::string text;
        for (std::size_t i = 0; i < log.size();) {
            const bool silence = IsSilence(i);
            text += (text.empty() ? "" : "; ") + std::to_string(log[i].us / 1000) + " " +
                    (silence ? "silence" : Hex(log[i].bytes));
            i += silence ? 32 : 1;
        }
        log.clear();
        return text;
    }
    /// The same without times.
    std::string Messages() {
        std::string text;
        Collect();
        for (const Received& message : std::exchange(log, {})) {
            text += (text.empty() ? "" : " ") + Hex(message.bytes);
        }
        return text;
    }

    /// Longer than any machine takes.
    static constexpr std::chrono::milliseconds kPatient{20'000};

    std::chrono::milliseconds sendPatience = kPatient;
    std::unique_ptr<DecodedSong> decoded;
    RecordingDriver driver;
    RecordingMessageHost host;
    FakeStopwatch* clock = nullptr;
    std::unique_ptr<player::TMidiPlayer> player;
    std::vector<Received> log;
    std::vector<bool> told;
    int portChanges = 0;
    int hangsOver = 0;
    SoundingNotes sounding;

private:
    bool IsSilence(std::size_t at) const {
        bool all = at + 32 <= log.size();
        for (std::size_t i = 0; all && i < 32; ++i) {
            const auto status = static_cast<std::uint8_t>(0xB0 + i / 2);
            const std::uint8_t controller = i % 2 == 0 ? 120 : 123;
            all = log[at + i].bytes == Bytes{status, controller, 0};
        }
        return all;
    }
};

} // namespace tracksmith::test
