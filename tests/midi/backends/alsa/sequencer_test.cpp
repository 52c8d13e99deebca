#include <algorithm>
#include <alsa/asoundlib.h>
#include <array>
#include <chrono>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>
#include <unistd.h>

#include "midi/backends/alsa/backend.h"

namespace tracksmith::midi::alsa {
namespace {

using Message = std::vector<std::uint8_t>;
using namespace std::chrono_literals;

/// What a receiver got, in its order.
class Inbox {
public:
    void Add(std::span<const std::uint8_t> message) {
        const std::scoped_lock lock(mutex_);
        messages_.emplace_back(message.begin(), message.end());
    }
    std::vector<Message> WaitFor(std::size_t count) {
        for (int i = 0; i < 1000 && Count() < count; ++i) {
            std::this_thread::sleep_for(10ms);
        }
        const std::scoped_lock lock(mutex_);
        return messages_;
    }

private:
    std::size_t Count() {
        const std::scoped_lock lock(mutex_);
        return messages_.size();
    }

    std::mutex mutex_;
    std::vector<Message> messages_;
};

/// A program of its own with a port that comes and goes.
class OtherProgram {
public:
    OtherProgram() {
        EXPECT_EQ(snd_seq_open(&sequencer_, "default", SND_SEQ_OPEN_INPUT, SND_SEQ_NONBLOCK), 0);
        snd_seq_set_client_name(sequencer_, "Other program");
        snd_seq_create_simple_port(sequencer_, "Sink",
                                   SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE,
                                   SND_SEQ_PORT_TYPE_APPLICATION);
    }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;
    ~OtherProgram() { snd_seq_close(sequencer_); }

    /// Whether the note-on of `key` comes within a second.
    bool Hears(int key) {
        for (int i = 0; i < 100; ++i) {
            snd_seq_event_t* event = nullptr;
            while (snd_seq_event_input(sequencer_, &event) >= 0) {
                if (event->type == SND_SEQ_EVENT_NOTEON && event->data.note.note == key) {
                    return true;
                }
            }
            std::this_thread::sleep_for(10ms);
        }
        return false;
    }

private:
    snd_seq_t* sequencer_ = nullptr;
};

std::string NameWith(const std::vector<DeviceCapabilities>& ports, std::string_view part) {
    const auto found = std::ranges::find_if(ports, [part](const DeviceCapabilities& port) {
        return port.productName.find(part) != std::string::npos;
    });
    return found == ports.end() ? std::string() : found->productName;
}

/// Against the kernel's own sequencer; skipped where there is none.
class SequencerTest : public testing::Test {
protected:
    void SetUp() override {
        if (access("/dev/snd/seq", R_OK | W_OK) != 0) {
            GTEST_SKIP() << "this system has no ALSA sequencer";
        }
    }

    std::unique_ptr<PortBackend> backend_ = MakePortBackend();
};

TEST_F(SequencerTest, EveryByteArrivesInOrder) {
    const std::string through = NameWith(backend_->Outputs(), "Midi Through");
    ASSERT_NE(through, "");
    Inbox inbox;
    ResultCode result = kNoError;
    const auto input = backend_->OpenInput(
        through, [&](std::span<const std::uint8_t> bytes, std::uint64_t) { inbox.Add(bytes); },
        result);
    ASSERT_EQ(result, kNoError);
    const auto output = backend_->OpenOutput(through, result);
    ASSERT_EQ(result, kNoError);
    std::vector<Message> sent;
    for (std::uint8_t i = 0; i < 128; ++i) {
        sent.push_back({static_cast<std::uint8_t>(0x90 | (i & 15)), i, 100});
        sent.push_back({static_cast<std::uint8_t>(0xC0 | (i & 15)), i});
        sent.push_back({static_cast<std::uint8_t>(0xE0 | (i & 15)), i, 64});
    }
    for (const std::size_t size : {2U, 3U, 11U, 255U, 256U, 257U, 4'096U, 16'384U, 65'535U}) {
        Message sysex(size, 0x55);
        sysex.front() = 0xF0;
        sysex.back() = 0xF7;
        sent.push_back(sysex);
        sent.push_back({0xB0, 7, 100});
    }
    for (const Message& message : sent) {
        EXPECT_EQ(output->Send(message), kNoError) << message.size();
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_EQ(inbox.WaitFor(sent.size()), sent);
}

TEST_F(SequencerTest, APortThatGoesAndComesBackIsFoundAgain) {
    ResultCode result = kNoError;
    for (const std::uint8_t key : std::array<std::uint8_t, 2>{60, 62}) {
        auto program = std::make_unique<OtherProgram>();
        const std::string name = NameWith(backend_->Outputs(), "Other program");
        ASSERT_NE(name, "");
        const auto output = backend_->OpenOutput(name, result);
        ASSERT_EQ(result, kNoError);
        EXPECT_EQ(output->Send(Message{0x90, key, 100}), kNoError);
        EXPECT_TRUE(program->Hears(key));
        program.reset();
        EXPECT_EQ(NameWith(backend_->Outputs(), "Other program"), "");
        output->Send(Message{0x80, key, 0}); // goes nowhere, but neither hangs nor throws
    }
}

} // namespace
} // namespace tracksmith::midi::alsa
