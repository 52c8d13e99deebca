#include <functional>
#include <set>
#include <utility>

#include "base/system/interrupt.h"
#include "device_fixture.h"

namespace tracksmith::cli {
namespace {

using Keys = std::vector<int>;

/// Four measures of four beats of 60 ms, on two channels in turn; the keys tell measure and beat:
/// 23 is measure 2, beat 3.
test::Bytes QuickSong() {
    test::TrackBuilder track;
    track.Tempo(0, 60'000).Program(0, 0, 24);
    int delta = 0;
    for (const int measure : {1, 2, 3, 4}) {
        for (const int beat : {1, 2, 3, 4}) {
            const int key = 10 * measure + beat;
            const int channel = beat % 2 * 5;
            track.Note(static_cast<std::uint64_t>(delta), channel, key, 100)
                .NoteOff(470, channel, key);
            delta = 10;
        }
    }
    return test::MidiFileBuilder(0).Track(track.End(10)).Build();
}

/// What arrives at the first port.
class PlayTest : public DeviceTest {
protected:
    void SetUp() override {
        Put("song.mid", QuickSong());
        midi::ResultCode result = midi::kNoError;
        listener_ = loop_->OpenInput(
            "Loop 1", [this](auto message, std::uint64_t) { Receive(message); }, result);
        ASSERT_NE(listener_, nullptr);
    }

    /// Plays the song to the first port.
    int Play(std::vector<std::string> arguments) {
        keys_.clear();
        arguments.insert(arguments.begin(), {"play", At("song.mid"), "--port", "Loop 1"});
        const int code = Run(arguments);
        EXPECT_TRUE(sounding_.empty()) << "notes are left hanging";
        return code;
    }

    Keys keys_;
    int program_ = -1;
    /// Called with the number of the note that has begun, on the playback thread.
    std::function<void(std::size_t)> onNote_ = [](std::size_t) {};

private:
    void Receive(std::span<const std::uint8_t> message) {
        const int command = message[0] & 0xF0;
        const int channel = message[0] & 0x0F;
        if (command == 0x90 && message[2] > 0) {
            keys_.push_back(message[1]);
            sounding_.insert({channel, message[1]});
            onNote_(keys_.size());
        } else if (command == 0x80 || command == 0x90) {
            sounding_.erase({channel, message[1]});
        } else if (command == 0xB0 && message[1] == 123) {
            std::erase_if(sounding_, [=](const auto& note) { return note.first == channel; });
        } else if (command == 0xC0) {
            program_ = message[1];
        }
    }

    std::unique_ptr<midi::InputConnection> listener_;
    std::set<std::pair<int, int>> sounding_; // channel and key
};

TEST_F(PlayTest, RangeBeginsAndEndsAtItsBeats) {
    struct Range {
        std::vector<std::string> arguments;
        Keys keys;
    };
    const Range ranges[] = {{{"--to", "1:03"}, {11, 12}},
                            {{"--from", "2:03", "--to", "3"}, {23, 24}},
                            {{"--from", "2:04", "--to", "3:2"}, {24, 31}}};
    for (const Range& range : ranges) {
        program_ = -1;
        EXPECT_EQ(Play(range.arguments), 0) << log_;
        EXPECT_EQ(keys_, range.keys);
        EXPECT_EQ(program_, 24) << "set before the start";
    }
}

TEST_F(PlayTest, EndsByItselfBehindTheSong) {
    EXPECT_EQ(Play({"--from", "4:03", "--to", "99"}), 0) << log_;
    EXPECT_EQ(keys_, (Keys{43, 44}));
}

TEST_F(PlayTest, LoopGoesOnUntilInterrupted) {
    onNote_ = [](std::size_t count) {
        if (count == 5) {
            system::InterruptWatch::Request();
        }
    };
    EXPECT_EQ(Play({"--loop", "--from", "2:02", "--to", "2:04"}), 0) << log_;
    ASSERT_GE(keys_.size(), 5U);
    keys_.resize(5);
    EXPECT_EQ(keys_, (Keys{22, 23, 22, 23, 22}));
}

TEST_F(PlayTest, ProgressIsForPeopleAtATerminal) {
    EXPECT_EQ(Play({"--to", "1:02"}), 0);
    EXPECT_EQ(log_, "Output: Loop 1\n");
    EXPECT_EQ(Play({"--to", "1:02", "--quiet"}), 0);
    EXPECT_EQ(log_, "");
    terminal_ = true;
    EXPECT_EQ(Play({"--from", "2:1", "--to", "2:02", "--tempo", "-500"}), 0);
    EXPECT_TRUE(Says("\r002.01.0")) << log_;
    EXPECT_TRUE(Says("0:00/0:01  500 BPM")) << log_;
    EXPECT_EQ(log_.back(), '\r') << log_;
    EXPECT_EQ(Play({"--quiet", "--to", "1:02"}), 0);
    EXPECT_EQ(log_, "");
}

TEST_F(PlayTest, LostPortEndsWithSix) {
    onNote_ = [this](std::size_t count) {
        if (count == 2) {
            loop_->Vanish(0);
        }
    };
    keys_.clear();
    EXPECT_EQ(Run({"play", At("song.mid"), "--port", "1"}), 6);
    EXPECT_EQ(keys_, (Keys{11, 12}));
    EXPECT_TRUE(Says("no longer responds: Loop 1")) << log_;
}

TEST_F(PlayTest, MissingPortsEndWithSix) {
    EXPECT_EQ(Run({"play", At("song.mid"), "--port", "Genos"}), 6);
    EXPECT_TRUE(Says("is called Genos. There are: Loop 1, Loop 2")) << log_;
    EXPECT_EQ(Run({"play", At("song.mid"), "--port", "loop"}), 6);
    EXPECT_TRUE(Says("Several")) << log_;
    loop_->FailNext(0, midi::kAllocated);
    EXPECT_EQ(Play({}), 6);
    EXPECT_TRUE(Says("cannot be opened: Loop 1")) << log_;
    EXPECT_EQ(Play({"--soundfont", "a.sf2"}), 6);
    EXPECT_TRUE(Says("no built-in instrument")) << log_;
    outputs_ = Outputs::None;
    EXPECT_EQ(Run({"play", At("song.mid")}), 6);
    EXPECT_TRUE(Says("no midi interface")) << log_;
    EXPECT_EQ(keys_, Keys{});
}

TEST_F(PlayTest, BuiltInInstrumentIsTheUsualPort) {
    outputs_ = Outputs::BuiltIn;
    trouble_ = "no sound device";
    EXPECT_EQ(Run({"play", At("song.mid"), "--to", "1:02"}), 0);
    EXPECT_EQ(keys_, Keys{11});
    EXPECT_TRUE(Says("no sound device")) << log_;
    trouble_ = "no SoundFont";
    loop_->FailNext(0, midi::kNoDriver);
    EXPECT_EQ(Run({"play", At("song.mid"), "--to", "1:02"}), 6);
    EXPECT_TRUE(Says("no SoundFont")) << log_;
    EXPECT_EQ(keys_, Keys{11});
}

TEST_F(PlayTest, WishesThatTheSongCannotFulfil) {
    struct Wish {
        std::vector<std::string> arguments;
        const char* complaint;
    };
    for (const Wish& wish :
         {Wish{{"--from", "x"}, "--from: measure:beat"},
          Wish{{"--from", "0:01"}, "--from: measure:beat"},
          Wish{{"--from", "1:05"}, "--from: There is no such place in the song."},
          Wish{{"--from", "5"}, "--from: The place is behind the end of the song."},
          Wish{{"--to", "2:9"}, "--to: There is no such place in the song."},
          Wish{{"--to", "1:01"}, "--to: The end is not behind the start."},
          Wish{{"--from", "3", "--to", "2"}, "--to: The end is not behind the start."},
          Wish{{"--tempo", "24"}, "--tempo: The tempo is not between 25 and 65535 BPM."},
          Wish{{"--tempo", "fast"}, "--tempo: for example +5"}}) {
        EXPECT_EQ(Play(wish.arguments), 2) << wish.complaint;
        EXPECT_TRUE(Says(std::string("Usage error: ") + wish.complaint)) << log_;
    }
    EXPECT_EQ(Play({"--loop", "--from", "1:01", "--to", "1:01.050"}), 2);
    EXPECT_TRUE(Says("The loop is too short.")) << log_;
    EXPECT_EQ(Run({"play", At("missing.mid")}), 3);
    Put("two.mid", QuickSong());
    EXPECT_EQ(Run({"play", At(".")}), 2);
    EXPECT_EQ(keys_, Keys{});
}

} // namespace
} // namespace tracksmith::cli
