#include "midi/backends/jack/midi_out.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <thread>

#include "midi/backends/jack/backend.h"
#include "midi/backends/jack/jack_server.h"
#include "midi/backends/jack/test_client.h"

namespace tracksmith::midi::jack {
namespace {

using test::Bytes;
using test::Eventually;
using test::Exclusive;
using test::TestClient;

class JackOut : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(server_.Start(), "");
        backend_ = MakePortBackend(test::kPatient);
        receiver_ = std::make_unique<TestClient>("Piano", "keys", JackPortIsInput);
        ASSERT_TRUE(receiver_->Works());
        ResultCode result = kUnspecifiedError;
        out_ = backend_->OpenOutput("Piano:keys", result);
        ASSERT_EQ(result, kNoError);
    }

    // Sends again while the way is full.
    ResultCode SendPatiently(const Bytes& message) {
        ResultCode result = kNotReady;
        Eventually([&] { return (result = out_->Send(message)) != kNotReady; });
        return result;
    }

    std::vector<Bytes> ReceivedBytes() const {
        std::vector<Bytes> all;
        for (TestClient::Received& message : receiver_->Messages()) {
            all.push_back(std::move(message.bytes));
        }
        return all;
    }

    test::JackServer server_;
    std::unique_ptr<PortBackend> backend_;
    std::unique_ptr<TestClient> receiver_;
    std::unique_ptr<OutputConnection> out_;
};

std::vector<Bytes> ShortsWithExclusives() {
    const std::size_t sizes[] = {2,    3,    4,     5,     100,   1000, 4095,
                                 4097, 8192, 16383, 16385, 25000, 30000};
    std::vector<Bytes> messages;
    for (unsigned i = 0; i < 10000; ++i) {
        messages.push_back({static_cast<std::uint8_t>(0x90 + i % 16),
                            static_cast<std::uint8_t>(i % 128),
                            static_cast<std::uint8_t>(i / 128)});
        if (i % 250 == 0) {
            messages.push_back(Exclusive(sizes[i / 250 % std::size(sizes)]));
        }
    }
    messages.push_back({0xC0, 5});
    messages.push_back({0xF8});
    messages.push_back({0xF7, 1, 2, 3});
    return messages;
}

TEST_F(JackOut, EveryByteArrivesInOrder) {
    const std::vector<Bytes> messages = ShortsWithExclusives();
    for (const Bytes& message : messages) {
        ASSERT_EQ(SendPatiently(message), kNoError);
    }
    EXPECT_TRUE(Eventually([&] { return receiver_->Count() >= messages.size(); }));
    EXPECT_EQ(receiver_->Count(), messages.size());
    EXPECT_TRUE(ReceivedBytes() == messages);
}

TEST_F(JackOut, ClosingStillSendsWhatWasAccepted) {
    for (int i = 0; i < 5; ++i) {
        ASSERT_EQ(out_->Send(Exclusive(20000)), kNoError);
    }
    ASSERT_EQ(out_->Send(Bytes{0xB0, 123, 0}), kNoError);
    out_.reset();
    EXPECT_TRUE(Eventually([&] { return receiver_->Count() == 6; }));
    EXPECT_EQ(ReceivedBytes().back(), (Bytes{0xB0, 123, 0}));
}

TEST_F(JackOut, AFullWayIsBusyAndLosesNothing) {
    std::vector<Bytes> accepted;
    ResultCode result = kNoError;
    for (std::size_t i = 0; i < 1000 && result == kNoError; ++i) {
        const Bytes message = Exclusive(30000 - i);
        result = out_->Send(message);
        if (result == kNoError) {
            accepted.push_back(message);
        }
    }
    EXPECT_EQ(result, kNotReady);
    accepted.push_back({0x90, 60, 1});
    ASSERT_EQ(SendPatiently(accepted.back()), kNoError);
    EXPECT_TRUE(Eventually([&] { return receiver_->Count() >= accepted.size(); }));
    EXPECT_TRUE(ReceivedBytes() == accepted);
}

TEST_F(JackOut, RefusesAMessageLongerThanAPeriodCanCarry) {
    EXPECT_EQ(out_->Send(Exclusive(40000)), kInvalidParameter);
    EXPECT_EQ(out_->Send(Bytes{}), kInvalidParameter);
    ASSERT_EQ(out_->Send(Bytes{0xFE}), kNoError);
    EXPECT_TRUE(Eventually([&] { return receiver_->Count() == 1; }));
}

TEST_F(JackOut, DiscardDropsWhatWaitsAndNothingLater) {
    // The server may have sent everything before Discard when this process was held up.
    std::size_t dropped = 0;
    for (int attempt = 0; attempt < 10 && dropped == 0; ++attempt) {
        const std::size_t before = receiver_->Count();
        for (int i = 0; i < 8; ++i) {
            ASSERT_EQ(SendPatiently(Exclusive(30000)), kNoError);
        }
        out_->Discard();
        ASSERT_EQ(out_->Send(Bytes{0x80, 1, 0}), kNoError);
        ASSERT_TRUE(Eventually([&] {
            const auto messages = ReceivedBytes();
            return messages.size() > before && messages.back().size() == 3;
        }));
        dropped = 9 - (receiver_->Count() - before);
    }
    EXPECT_GT(dropped, 0U);
}

// What is heard must keep the distances at which it was sent, not those of the periods.
TEST_F(JackOut, MessagesKeepTheirDistances) {
    constexpr std::size_t kMessages = 101;
    std::vector<jack_nframes_t> sent;
    for (std::size_t i = 0; i < kMessages; ++i) {
        sent.push_back(jack_frame_time(receiver_->Handle()));
        ASSERT_EQ(out_->Send(Bytes{0x90, static_cast<std::uint8_t>(i), 1}), kNoError);
        std::this_thread::sleep_for(std::chrono::microseconds(1700));
    }
    ASSERT_TRUE(Eventually([&] { return receiver_->Count() == kMessages; }));
    const auto received = receiver_->Messages();
    std::vector<int> deviations;
    for (std::size_t i = 1; i < kMessages; ++i) {
        const auto heard = static_cast<int>(received[i].frame - received[i - 1].frame);
        const auto meant = static_cast<int>(sent[i] - sent[i - 1]);
        EXPECT_GE(heard, 0);
        deviations.push_back(std::abs(heard - meant));
    }
    // A loaded machine misses some periods; with all at the start of one the median would be near
    // 80 frames.
    std::nth_element(deviations.begin(), deviations.begin() + 50, deviations.end());
    EXPECT_LT(deviations[50], 16);
}

TEST_F(JackOut, ListsOtherClientsPortsButNotOurOwn) {
    TestClient keyboard("Keyboard", "out", JackPortIsOutput);
    ResultCode result = kUnspecifiedError;
    const auto in = backend_->OpenInput(
        "Keyboard:out", [](auto, auto) {}, result);
    ASSERT_EQ(result, kNoError);
    ASSERT_EQ(backend_->Outputs().size(), 1U);
    EXPECT_EQ(backend_->Outputs()[0].productName, "Piano:keys");
    ASSERT_EQ(backend_->Inputs().size(), 1U);
    EXPECT_EQ(backend_->Inputs()[0].productName, "Keyboard:out");
    EXPECT_EQ(backend_->OpenOutput("Keyboard:out", result), nullptr);
    EXPECT_EQ(result, kBadDeviceId);
}

struct OffsetCase {
    jack_nframes_t stamp;
    jack_nframes_t start;
    jack_nframes_t offset;
};

class Offsets : public testing::TestWithParam<OffsetCase> {};

TEST_P(Offsets, FollowTheFrameTime) {
    const OffsetCase& c = GetParam();
    EXPECT_EQ(FrameOffset(c.stamp, c.start, 256, 48000), c.offset);
}

constexpr jack_nframes_t kLast = std::numeric_limits<jack_nframes_t>::max();
INSTANTIATE_TEST_SUITE_P(Stamps, Offsets,
                         testing::Values(OffsetCase{1000, 1000, 0}, OffsetCase{1255, 1000, 255},
                                         OffsetCase{1256, 1000, 256}, OffsetCase{999, 1000, 0},
                                         OffsetCase{99, kLast - 100, 200}, OffsetCase{kLast, 10, 0},
                                         OffsetCase{50000, 1000, 0}));

} // namespace
} // namespace tracksmith::midi::jack
