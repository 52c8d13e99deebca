// The ports of the program over the system: what its callbacks hand over through hidden windows.

#include <numeric>
#include <string>
#include <thread>

#include "base/system/message_poster.h"

#include "midi/backends/winmm/loop_fixture.h"
#include "midi/errors.h"
#include "midi/midi_input.h"
#include "midi/midi_output.h"

namespace tracksmith::midi {
namespace {

using namespace std::chrono_literals;
using namespace test;
using wineloop::Completion;
using Clock = std::chrono::steady_clock;

// An output and the input that it is looped to, both open, the input started.
struct PortPair {
    PortPair() {
        output.SetDeviceID(wineloop::kTestDevice);
        output.SetOnMidiOutput([this](TMidiOutput&) {
            EXPECT_EQ(std::this_thread::get_id(), owner);
            ++sent;
        });
        input.SetOnMidiInput([this](TMidiInput&) {
            EXPECT_EQ(std::this_thread::get_id(), owner);
            Receive();
        });
        input.SetOnOverflow([this](TMidiInput&) { ++overflows; });
        output.Open();
        input.OpenAndStart();
    }

    void Receive() {
        while (const auto event = input.GetMidiEvent()) {
            if (event->MidiMessage == 0xF0) {
                longBytes.insert(longBytes.end(), event->Sysex, event->Sysex + event->SysexLength);
            } else {
                shorts.push_back(static_cast<std::uint32_t>(event->MidiMessage | event->Data1 << 8 |
                                                            event->Data2 << 16));
            }
        }
    }

    // Dispatches until `done` says so; false after 5 s.
    template <typename Condition>
    static bool Pump(Condition done) {
        const Clock::time_point deadline = Clock::now() + 5s;
        while (!done()) {
            if (Clock::now() > deadline) {
                return false;
            }
            system::DispatchMessages();
            std::this_thread::sleep_for(1ms);
        }
        return true;
    }

    const std::thread::id owner = std::this_thread::get_id();
    WinmmOutputDriver outputDriver;
    WinmmInputDriver inputDriver;
    std::size_t sent = 0;
    std::size_t overflows = 0;
    Bytes longBytes;
    std::vector<std::uint32_t> shorts;
    TMidiOutput output{outputDriver};
    TMidiInput input{inputDriver};
};

class Ports : public LoopTest {};

TEST_F(Ports, ShortMessagesArriveInOrderOnTheOwnersThread) {
    PortPair ports;
    std::jthread player([&] {
        for (unsigned i = 0; i < 1000; ++i) {
            ports.output.PutShort(0xE0, static_cast<std::uint8_t>(i % 128),
                                  static_cast<std::uint8_t>(i / 128));
        }
    });
    EXPECT_TRUE(ports.Pump([&] { return ports.shorts.size() == 1000; })) << ports.shorts.size();
    player.join();
    for (std::uint32_t i = 0; i < ports.shorts.size(); ++i) {
        EXPECT_EQ(ports.shorts[i], 0xE0 | (i % 128) << 8 | (i / 128) << 16);
    }
    EXPECT_EQ(ports.overflows, 0U);
}

TEST_F(Ports, LongMessagesOfAnyLengthArriveAndAreReleased) {
    PortPair ports;
    std::size_t messages = 0;
    for (const std::size_t length : {0U, 1U, 3U, 4096U, 65'535U}) {
        Bytes content(length);
        std::iota(content.begin(), content.end(), std::uint8_t{0xF0});
        ports.longBytes.clear();
        ports.output.PutLong(content.data(), static_cast<std::uint16_t>(length));
        ++messages;
        EXPECT_TRUE(ports.Pump([&] {
            return ports.sent == messages && ports.longBytes.size() == length;
        })) << length
            << ": " << ports.sent << " " << ports.longBytes.size();
        EXPECT_EQ(ports.longBytes, content);
        EXPECT_EQ(LentBuffers(), ports.input.SysexBufferCount());
    }
}

TEST_F(Ports, ManyLongMessagesFromThePlayersThreadAreAllReleased) {
    PortPair ports;
    std::jthread player([&] {
        const Bytes content(300, 0x11);
        for (int i = 0; i < 500; ++i) {
            ports.output.PutLong(content);
        }
    });
    EXPECT_TRUE(ports.Pump([&] { return ports.sent == 500; })) << ports.sent;
    player.join();
    ports.output.Close();
    ports.input.Close();
}

TEST_F(Ports, AFullQueueIsToldAndHoldsWhatCameFirst) {
    PortPair ports;
    for (unsigned i = 0; i < 1030; ++i) {
        ports.output.PutShort(0xE0, static_cast<std::uint8_t>(i % 128),
                              static_cast<std::uint8_t>(i / 128));
    }
    ports.output.SetFullResetOnClose(true);
    ports.output.Close(); // all has been delivered after it
    EXPECT_EQ(ports.input.MessageCount(), 1024U);
    ASSERT_TRUE(ports.Pump([&] { return ports.overflows > 0 && ports.shorts.size() == 1024; }));
    EXPECT_EQ(ports.shorts.back(), 0xE0U | 127U << 8 | 7U << 16);
}

struct ClosingRow {
    Completion completion;
    std::chrono::milliseconds delay;
    std::chrono::milliseconds shortest;
    std::chrono::milliseconds longest;
    ResultCode code;
};

class PortsClosing : public LoopTest, public testing::WithParamInterface<ClosingRow> {};

TEST_P(PortsClosing, WaitsForTheLongMessagesButNotForEver) {
    const ClosingRow& row = GetParam();
    PortPair ports;
    SetCompletion(row.completion, row.delay);
    for (int i = 0; i < 3; ++i) {
        ports.output.PutLong(Bytes{0xF0, 0x7D, 0xF7});
    }
    const Clock::time_point start = Clock::now();
    if (row.code == kNoError) {
        EXPECT_TRUE(ports.output.Close());
    } else {
        EXPECT_THROW(ports.output.Close(), EMidiOutputError);
    }
    const auto passed = Clock::now() - start;
    EXPECT_GE(passed, row.shortest);
    EXPECT_LE(passed, row.longest);
    EXPECT_EQ(ports.output.Error(), row.code);
    EXPECT_EQ(ports.output.State(), MidiOutputState::mosClosed);
    // Closing with messages under way is the one wrong use, and only when they are missing.
    EXPECT_EQ(Misuses(), row.code == kNoError ? 0U : 1U);

    Steer(wineloop::kRestore);
    ports.sent = 0;
    EXPECT_TRUE(ports.output.Open());
    ports.output.PutLong(Bytes{0xF0, 0x7E, 0xF7});
    EXPECT_TRUE(ports.Pump([&] { return ports.sent == 1; })) << ports.sent;
}

INSTANTIATE_TEST_SUITE_P(
    Completions, PortsClosing,
    testing::Values(ClosingRow{Completion::Prompt, 0ms, 0ms, 400ms, kNoError},
                    ClosingRow{Completion::Held, 0ms, 0ms, 400ms, kNoError},
                    ClosingRow{Completion::Late, 150ms, 100ms, 400ms, kNoError},
                    ClosingRow{Completion::Lost, 0ms, 450ms, 1000ms, kStillPlaying}));

TEST_F(Ports, FailingCallsRaiseAndLeaveTheirCode) {
    PortPair ports;
    FailNext(kModData, kNotReady);
    EXPECT_THROW(ports.output.PutShort(0x90, 60, 64), EMidiOutputError);
    EXPECT_EQ(ports.output.Error(), kNotReady);
    FailNext(kModLongData, kNotReady);
    EXPECT_THROW(ports.output.PutLong(Bytes{0xF0, 0xF7}), EMidiOutputError);
    EXPECT_EQ(ports.output.Error(), kNotReady);

    ports.input.Close();
    FailNext(kMidAddBuffer, kNoMemory);
    EXPECT_THROW(ports.input.Open(), EMidiInputError);
    EXPECT_EQ(ports.input.Error(), kNoMemory);
    EXPECT_EQ(ports.input.State(), MidiInputState::misClosed);
    EXPECT_EQ(LentBuffers(), 0U);
    EXPECT_TRUE(ports.input.OpenAndStart());
    ports.output.PutShort(0x90, 60, 64);
    EXPECT_TRUE(ports.Pump([&] { return ports.shorts.size() == 1; }));
}

} // namespace
} // namespace tracksmith::midi
