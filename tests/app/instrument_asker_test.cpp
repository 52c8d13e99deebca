#include "app/instrument_asker.h"

#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>

#include "base/recording_message_host.h"
#include "base/system/message_poster.h"
#include "support/loop_instrument.h"
#include "support/song_assert.h"

#include "app/ask_words.h"
#include "midi/backends/loop/driver.h"
#include "midi/portable_input_driver.h"

namespace tracksmith::app {
namespace {

using namespace std::chrono_literals;
using test::Bytes;
using test::LoopInstrument;

/// A player with three loops, and an instrument that hears the first and answers at the second.
class AskerTest : public testing::Test {
protected:
    AskerTest() {
        decoded.Timed();
        player.FormCreate({{{&outputs, false}}, &inputs, "", host});
        EXPECT_TRUE(player.SongLoaded());
    }
    ~AskerTest() override {
        asker.reset();
        player.FormDestroy();
    }

    void Begin(const std::string& input = "Loop 2") { asker->Begin("Loop 1", input, now); }
    /// Lets `time` of the question's clock pass, and what was sent arrive.
    AskState Pass(std::chrono::milliseconds time) {
        EXPECT_TRUE(player.WaitUntilSent(5'000ms));
        system::DispatchMessages();
        now += time;
        return asker->Step(now);
    }
    /// The outcome, with the names of who has answered.
    std::string Outcome() {
        for (int i = 0; i < 30 && Pass(100ms) == AskState::Asking; ++i) {
        }
        std::string text = WordsOf(asker->Result(), std::nullopt, Language::English).headline;
        for (const auto& answer : asker->Result().answers) {
            text += "; " + AnswerName(answer, Language::English);
        }
        return text;
    }

    std::shared_ptr<midi::loop::LoopBackend> loop = std::make_shared<midi::loop::LoopBackend>(3);
    midi::loop::LoopOutputDriver outputs{loop};
    midi::PortableInputDriver inputs{loop};
    LoopInstrument instrument{loop};
    RecordingMessageHost host;
    test::DecodedSong decoded{
        test::MidiFileBuilder(1, 500)
            .Track(test::TrackBuilder().Note(0, 0, 60, 90).NoteOff(30'000, 0, 60).End())
            .Build()};
    player::TMidiPlayer player{decoded.song};
    std::unique_ptr<InstrumentAsker> asker =
        std::make_unique<InstrumentAsker>(player, instruments::IdentityTable::Load());
    InstrumentAsker::Time now;
};

TEST_F(AskerTest, NamesWhatAnswers) {
    const Bytes& reply = LoopInstrument::kGenosReply;
    const Bytes roland{0xF0, 0x7E, 0x10, 0x06, 0x02, 0x41, 0x42, 0x00,
                       0x00, 0x07, 0x00, 0x00, 0x00, 0x00, 0xF7};
    struct Case {
        std::vector<Bytes> pieces;
        const char* outcome;
    };
    for (const Case& each : std::vector<Case>{
             {{reply}, "Yamaha Genos answered on Loop 1; Yamaha Genos"},
             {{Bytes(reply.begin(), reply.begin() + 7),
               {0xFE},
               {0xF8},
               {0xFA},
               Bytes(reply.begin() + 7, reply.end())},
              "Yamaha Genos answered on Loop 1; Yamaha Genos"},
             {{{0x90, 60, 90}, Bytes(reply.begin(), reply.end() - 5), {0x80, 60, 0}, reply},
              "Yamaha Genos answered on Loop 1; Yamaha Genos"},
             {{roland, reply, roland},
              "Roland SC-8820 answered on Loop 1; Roland SC-8820; Yamaha Genos"},
             {{{0xF0, 0x7E, 0x00, 0x06, 0x02, 0x26, 1, 2, 3, 4, 5, 6, 7, 8, 0xF7}},
              "An instrument by Ketron answered on Loop 1; An instrument by Ketron"},
             {{Bytes(reply.begin(), reply.end() - 1), {0x90, 60, 0}},
              "Nothing answered on Loop 1"}}) {
        instrument.SetAnswer(LoopInstrument::kIdentityRequest, each.pieces);
        Begin();
        EXPECT_EQ(Outcome(), each.outcome);
    }
}

TEST_F(AskerTest, SilenceIsBrokenByTheXgName) {
    instrument.SetAnswer(LoopInstrument::kXgRequest, {LoopInstrument::kXgReply});
    Begin();
    EXPECT_EQ(Pass(900ms), AskState::Asking);
    EXPECT_EQ(instrument.Heard(), 1);
    EXPECT_EQ(Outcome(), "Yamaha PSR-SX900 answered on Loop 1; Yamaha PSR-SX900");
    EXPECT_EQ(instrument.Heard(), 2);
}

TEST_F(AskerTest, InputIsGuessedByItsNameAndLeftAsItWas) {
    Begin(""); // the loop's own input, where only the questions come back
    EXPECT_EQ(asker->Result().input, "Loop 1");
    EXPECT_EQ(Outcome(), "Nothing answered on Loop 1");
    EXPECT_EQ(player.ChosenInput(), "");
    player.SelectInput("Loop 3");
    player.ConnectMidiInPort();
    Begin();
    EXPECT_EQ(player.ChosenInput(), "Loop 2");
    asker->Cancel();
    EXPECT_EQ(player.ChosenInput(), "Loop 3");
    EXPECT_EQ(asker->Result().state, AskState::Cancelled);
    Begin("Loop 9");
    EXPECT_EQ(Outcome(), "The input for the answer is missing");
    loop->FailNext(1, midi::kAllocated);
    Begin();
    EXPECT_EQ(Outcome(), "The input Loop 2 cannot be opened");
    EXPECT_EQ(player.ChosenInput(), "Loop 3");
}

TEST_F(AskerTest, OutputsThatTakeNothingAreSaid) {
    instrument.SetGenos();
    loop->FailNext(0, midi::kAllocated);
    Begin();
    EXPECT_EQ(Outcome(), "The output Loop 1 takes no messages");
    EXPECT_EQ(instrument.Heard(), 0);
    Begin();
    EXPECT_EQ(Outcome(), "Yamaha Genos answered on Loop 1; Yamaha Genos");
    loop->Vanish(0);
    player.CheckPorts();
    Begin();
    EXPECT_EQ(Outcome(), "The output Loop 1 takes no messages");
    asker->Begin("Loop 9", "", now);
    EXPECT_EQ(Outcome(), "The output Loop 9 is not there");
}

TEST_F(AskerTest, HangingOutputHoldsNobodyUp) {
    loop->SetDelay(0, 1h); // whoever waited for it would wait beyond the test's time
    Begin();
    while (player.OutputDevices()[0].state != player::PortState::Hanging) {
        std::this_thread::sleep_for(10ms);
    }
    for (int i = 0; i < 3; ++i) {
        now += 1'000ms;
        asker->Step(now);
    }
    EXPECT_EQ(asker->Result().state, AskState::OutputFails);
    loop->SetDelay(0, 0ms);
}

TEST_F(AskerTest, PlayingIsNotDisturbed) {
    Begin();
    EXPECT_EQ(Pass(10ms), AskState::Asking);
    EXPECT_TRUE(player.Play());
    EXPECT_EQ(Pass(1'000ms), AskState::Playing);
    Begin();
    EXPECT_EQ(Outcome(), "A song is playing");
    EXPECT_EQ(instrument.Heard(), 1);
    EXPECT_TRUE(player.Stop());
}

TEST(AskWordsTest, SayWhatTheAnswerMeansForTheChoice) {
    const instruments::IdentityTable table = instruments::IdentityTable::Load();
    AskResult result{AskState::Answered, "USB", "USB", {}};
    const auto words = [&](const instruments::IdentityReply& reply, const char* chosen) {
        result.answers = {table.Name(reply)};
        const AskWords all = WordsOf(result, chosen, Language::English);
        return all.detail + "|" + (all.offer == nullptr ? "" : std::string(all.offer->name));
    };
    const instruments::IdentityReply genos{"43", "00 44", "42 1C", ""};
    EXPECT_EQ(words(genos, "Yamaha Genos"),
              "Songs are prepared for this instrument. There is nothing more to do.|");
    EXPECT_EQ(words(genos, "Korg Pa700"),
              "Songs are prepared for Korg Pa700 at present.|Yamaha Genos");
    EXPECT_EQ(words(genos, ""), "No instrument is chosen yet.|Yamaha Genos");
    EXPECT_EQ(words({"43", "00 41", "1B 04", ""}, "Korg Pa700"),
              "It is not in the list of instruments, but follows XG.\n"
              "Songs are prepared for Korg Pa700 at present.|Yamaha XG Soundset");
    EXPECT_EQ(words({"26", "01 02", "03 04", ""}, ""),
              "Its code (01 02 03 04) does not tell the model. Choose it in the list of "
              "instruments.\nNo instrument is chosen yet.|");
    result.answers.push_back(table.Name(genos));
    EXPECT_EQ(MainAnswer(result, "")->model, "Genos");
    EXPECT_NE(WordsOf(result, "", Language::English).detail.find("Also answered: An instrument by"),
              std::string::npos);
}

} // namespace
} // namespace tracksmith::app
