#include "app/connection_test.h"

#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "base/recording_message_host.h"
#include "base/system/message_poster.h"
#include "support/song_assert.h"

#include "midi/backends/loop/driver.h"
#include "midi/portable_input_driver.h"

namespace tracksmith::app {
namespace {

using test::Bytes;

/// A player with three loops. What comes out of the first is collected.
class ConnectionTestTest : public testing::Test {
protected:
    ConnectionTestTest() {
        player.FormCreate({{{&outputs, false}}, &inputs, "", host});
        loop->SetRecording(0, true);
    }
    ~ConnectionTestTest() override {
        trial.reset();
        player.FormDestroy();
    }

    /// Messages at the first output since the last call.
    std::string Sent() {
        EXPECT_TRUE(player.WaitUntilSent(std::chrono::seconds(20)));
        std::string text;
        for (const midi::loop::LoopMessage& message : loop->TakeSent(0)) {
            text += (text.empty() ? "" : " ") + test::Hex(message.bytes);
        }
        return text;
    }
    bool Listen(const std::string& input) {
        return trial->Listen("Loop 1", input, [this](const PlayedKey& key) {
            heard += std::to_string(key.channel) + ":" + std::to_string(key.key) + "=" +
                     std::to_string(key.velocity) + " ";
        });
    }
    /// What is told of messages that come in at a loop.
    std::string Heard(std::size_t loopIndex, const std::vector<Bytes>& messages) {
        heard.clear();
        for (const Bytes& message : messages) {
            loop->Deliver(loopIndex, message);
        }
        system::DispatchMessages();
        return heard;
    }

    std::shared_ptr<midi::loop::LoopBackend> loop = std::make_shared<midi::loop::LoopBackend>(3);
    midi::loop::LoopOutputDriver outputs{loop};
    midi::PortableInputDriver inputs{loop};
    RecordingMessageHost host;
    song::Song song;
    player::TMidiPlayer player{song};
    std::unique_ptr<ConnectionTest> trial = std::make_unique<ConnectionTest>(player);
    std::string heard;
};

TEST_F(ConnectionTestTest, ItsNoteAlwaysEnds) {
    EXPECT_TRUE(trial->BeginNote("Loop 1"));
    EXPECT_EQ(Sent(), "903C64");
    EXPECT_TRUE(trial->BeginNote("Loop 2")); // where nobody hears the first any more
    EXPECT_EQ(Sent(), "803C00");
    EXPECT_TRUE(trial->BeginNote("Loop 1"));
    trial->EndNote();
    trial->EndNote();
    EXPECT_EQ(Sent(), "903C64 803C00");
    EXPECT_TRUE(trial->BeginNote("Loop 1"));
    trial.reset(); // the window is closed
    EXPECT_EQ(Sent(), "903C64 803C00");
}

TEST_F(ConnectionTestTest, AnOutputThatTakesNothingIsTold) {
    EXPECT_FALSE(trial->BeginNote("Loop 9"));
    EXPECT_TRUE(host.messages.empty());
    loop->FailNext(0, midi::kAllocated);
    EXPECT_FALSE(trial->BeginNote("Loop 1"));
    EXPECT_EQ(host.messages.size(), 1U);
    trial->EndNote();
    EXPECT_EQ(Sent(), "");
}

TEST_F(ConnectionTestTest, KeysOfTheInstrumentAreToldWhileItListens) {
    EXPECT_TRUE(Listen("Loop 2"));
    EXPECT_EQ(Heard(1, {{0x92, 64, 90}, {0x82, 64, 70}, {0xB2, 7, 100}, {0x9F, 1, 127}}),
              "2:64=90 2:64=0 15:1=127 ");
    EXPECT_EQ(Heard(1, {{0xF0, 0x90, 0xF7}, {0x90, 60, 0}}), "0:60=0 ");
    EXPECT_TRUE(Listen("Loop 3"));
    EXPECT_EQ(Heard(1, {{0x92, 64, 90}}) + Heard(2, {{0x90, 65, 1}}), "0:65=1 ");
    trial->EndListening();
    EXPECT_EQ(Heard(2, {{0x90, 65, 1}}), "");
}

// What the user has chosen to play on comes back, and nothing that was not chosen stays open.
TEST_F(ConnectionTestTest, TheInputIsOnlyBorrowed) {
    EXPECT_TRUE(Listen("")); // the one that is called like the output
    EXPECT_EQ(player.ChosenInput(), "Loop 1");
    trial->EndListening();
    EXPECT_EQ(player.ChosenInput(), "");
    player.SelectInput("Loop 3");
    EXPECT_TRUE(player.ConnectMidiInPort());
    int received = 0;
    player.SetInputListener(this, [&](const midi::TMyMidiEvent&) { ++received; });
    EXPECT_TRUE(Listen("Loop 2"));
    trial.reset();
    EXPECT_EQ(player.ChosenInput(), "Loop 3");
    Heard(2, {{0x90, 65, 1}});
    EXPECT_EQ(received, 1);
    trial = std::make_unique<ConnectionTest>(player);
    EXPECT_TRUE(Listen("Loop 2"));
    player.SelectInput("Loop 1"); // another choice meanwhile
    trial->EndListening();
    EXPECT_EQ(player.ChosenInput(), "Loop 1");
    EXPECT_FALSE(Listen("Loop 9"));
    loop->FailNext(1, midi::kAllocated);
    EXPECT_FALSE(Listen("Loop 2"));
    player.SetInputListener(this, nullptr);
}

} // namespace
} // namespace tracksmith::app
