#include <algorithm>
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <thread>
#include <utility>

#include "midi/backends/jack/backend.h"
#include "midi/backends/jack/jack_server.h"
#include "midi/backends/jack/test_client.h"

namespace tracksmith::midi::jack {
namespace {

using std::chrono::steady_clock;
using test::Bytes;
using test::Eventually;
using test::TestClient;

constexpr std::chrono::seconds kSoon{1};

// Runs `work` and tells how long it took.
template <typename Work>
steady_clock::duration Duration(Work work) {
    const auto start = steady_clock::now();
    work();
    return steady_clock::now() - start;
}

TEST(JackWithoutServer, ListsNothingQuicklyAndSilently) {
    const test::JackServer neverStarted;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const auto backend = MakePortBackend();
    std::size_t ports = 0;
    const auto duration = Duration([&] {
        for (int i = 0; i < 100; ++i) {
            ports += backend->Outputs().size() + backend->Inputs().size();
        }
    });
    ResultCode result = kNoError;
    EXPECT_EQ(backend->OpenOutput("Piano:keys", result), nullptr);
    EXPECT_EQ(result, kBadDeviceId);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(ports, 0U);
    // One search takes about 4 ms.
    EXPECT_LT(duration, std::chrono::milliseconds(200));
    EXPECT_FALSE(test::ServerAnswers());
}

class OpenPort : public testing::Test {
protected:
    void OpenPiano() {
        receiver_ = std::make_unique<TestClient>("Piano", "keys", JackPortIsInput);
        ASSERT_TRUE(receiver_->Works());
        ASSERT_TRUE(Eventually([this] { return !backend_->Outputs().empty(); }));
        ResultCode result = kUnspecifiedError;
        out_ = backend_->OpenOutput("Piano:keys", result);
        ASSERT_EQ(result, kNoError);
        ASSERT_EQ(out_->Send(Bytes{0x90, 60, 64}), kNoError);
        ASSERT_TRUE(Eventually([this] { return receiver_->Count() == 1; }));
    }

    // Sends until an error comes, at most a second; tells the longest call.
    ResultCode SendUntilError(steady_clock::duration& longest) {
        ResultCode result = kNoError;
        const auto end = steady_clock::now() + kSoon;
        while (result == kNoError && steady_clock::now() < end) {
            const Bytes message{0x90, 61, 64};
            longest = std::max(longest, Duration([&] { result = out_->Send(message); }));
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return result;
    }

    test::JackServer server_;
    std::unique_ptr<PortBackend> backend_ = MakePortBackend(test::kPatient);
    std::unique_ptr<TestClient> receiver_;
    std::unique_ptr<OutputConnection> out_;
};

class ServerLoss : public OpenPort, public testing::WithParamInterface<int> {};

TEST_P(ServerLoss, IsNoticedAndTheNextServerIsUsed) {
    ASSERT_EQ(server_.Start(), "");
    ASSERT_NO_FATAL_FAILURE(OpenPiano());
    ResultCode result = kUnspecifiedError;
    auto keyboard = std::make_unique<TestClient>("Keyboard", "out", JackPortIsOutput);
    const auto in = backend_->OpenInput(
        "Keyboard:out", [](auto, auto) {}, result);
    ASSERT_EQ(result, kNoError);

    server_.End(GetParam());
    steady_clock::duration longest{};
    EXPECT_EQ(SendUntilError(longest), kNoDriver);
    EXPECT_LT(longest, std::chrono::milliseconds(200));
    // The library must not have clients of an ended server when another is searched for.
    keyboard.reset();
    receiver_.reset();
    EXPECT_LT(Duration([&] { EXPECT_TRUE(backend_->Outputs().empty()); }), kSoon);

    // The old connections stay open until the new one is used.
    ASSERT_EQ(server_.Start(), "");
    std::unique_ptr<OutputConnection> lost = std::move(out_);
    ASSERT_NO_FATAL_FAILURE(OpenPiano());
    EXPECT_EQ(lost->Send(Bytes{0x90, 61, 64}), kNoDriver);
    EXPECT_LT(Duration([&] { lost.reset(); }), kSoon);
}

INSTANTIATE_TEST_SUITE_P(Signals, ServerLoss, testing::Values(SIGKILL, SIGTERM));

TEST_F(OpenPort, AVanishedPortIsNoticedWhileTheServerRuns) {
    ASSERT_EQ(server_.Start(), "");
    ASSERT_NO_FATAL_FAILURE(OpenPiano());
    receiver_.reset();
    steady_clock::duration longest{};
    EXPECT_EQ(SendUntilError(longest), kNoDriver);
    EXPECT_TRUE(backend_->Outputs().empty());
    out_.reset();
    OpenPiano();
}

// A server that is stopped answers nothing: nobody may wait for it, and all goes on when it does.
TEST_F(OpenPort, AStoppedServerHoldsUpNobody) {
    constexpr std::chrono::milliseconds kPatience{100};
    constexpr std::chrono::milliseconds kLimit{250};
    ASSERT_EQ(server_.Start(), "");
    ASSERT_NO_FATAL_FAILURE(OpenPiano());
    auto impatient = MakePortBackend(kPatience);
    ASSERT_TRUE(Eventually([&] { return impatient->Outputs().size() == 1; }));
    ASSERT_TRUE(Eventually([&] { return impatient->Inputs().empty(); }));
    server_.Freeze();
    const auto quick = [&](auto work) { EXPECT_LT(Duration(work), kLimit); };
    ResultCode result = kNoError;
    std::unique_ptr<OutputConnection> second;
    const auto open = [&] { second = impatient->OpenOutput("Piano:keys", result); };
    quick(open);
    EXPECT_EQ(result, kNotReady);
    EXPECT_EQ(second, nullptr);
    const auto newcomer = MakePortBackend(kPatience);
    quick([&] { EXPECT_EQ(newcomer->Outputs().size(), 0U); });
    // What is open says so instead of taking what would never be heard.
    EXPECT_TRUE(Eventually([&] { return out_->Send(Bytes{0x90, 62, 64}) == kNotReady; }));
    // First the list of before, then none.
    quick([&] { EXPECT_EQ(impatient->Outputs().size(), 1U); });
    EXPECT_TRUE(Eventually([&] { return impatient->Outputs().empty(); }));
    quick(open);
    server_.Thaw();
    // What was begun is found, and makes no second connection.
    EXPECT_TRUE(Eventually([&] {
        open();
        return second != nullptr;
    }));
    // The library would copy what two play to one port, unseen by a sanitizer.
    out_.reset();
    EXPECT_EQ(second->Send(Bytes{0x90, 63, 64}), kNoError);
    EXPECT_TRUE(Eventually([&] {
        const auto messages = receiver_->Messages();
        return std::any_of(messages.begin(), messages.end(), [](const auto& message) {
            return message.bytes == Bytes{0x90, 63, 64};
        });
    }));
    server_.Freeze();
    quick([&] { second.reset(); });
    EXPECT_LT(Duration([&] { impatient.reset(); }), std::chrono::seconds(1));
    server_.Thaw();
}

} // namespace
} // namespace tracksmith::midi::jack
