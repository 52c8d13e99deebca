#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <mutex>

#include "midi/backends/jack/backend.h"
#include "midi/backends/jack/jack_server.h"
#include "midi/backends/jack/test_client.h"

namespace tracksmith::midi::jack {
namespace {

using test::Bytes;
using test::Exclusive;

std::uint64_t NowMs() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

class Collector {
public:
    void Add(std::span<const std::uint8_t> message, std::uint64_t timeMs) {
        const std::lock_guard lock(mutex_);
        messages_.emplace_back(message.begin(), message.end());
        times_.push_back(timeMs);
    }
    std::vector<Bytes> Messages() {
        const std::lock_guard lock(mutex_);
        return messages_;
    }
    std::vector<std::uint64_t> Times() {
        const std::lock_guard lock(mutex_);
        return times_;
    }

private:
    std::mutex mutex_;
    std::vector<Bytes> messages_;
    std::vector<std::uint64_t> times_;
};

TEST(JackIn, DeliversCompleteMessagesWithTheirTimes) {
    test::JackServer server;
    ASSERT_EQ(server.Start(), "");
    std::vector<Bytes> sent;
    for (std::uint8_t i = 0; i < 100; ++i) {
        sent.push_back({0x90, i, 64});
    }
    sent.push_back(Exclusive(30000));
    sent.push_back(Exclusive(2));
    sent.push_back({0xFE});
    sent.push_back({0xC3, 7});
    test::TestClient keyboard("Keyboard", "out", JackPortIsOutput, sent);
    ASSERT_TRUE(keyboard.Works());

    const auto backend = MakePortBackend(test::kPatient);
    Collector collector;
    ResultCode result = kUnspecifiedError;
    const auto in = backend->OpenInput(
        "Keyboard:out",
        [&](std::span<const std::uint8_t> message, std::uint64_t timeMs) {
            collector.Add(message, timeMs);
        },
        result);
    ASSERT_EQ(result, kNoError);
    const std::uint64_t before = NowMs();
    keyboard.StartSending();
    ASSERT_TRUE(test::Eventually([&] { return collector.Messages().size() >= sent.size(); }));
    EXPECT_TRUE(collector.Messages() == sent);

    // One message a period, 104 periods of 5.33 ms. A loaded machine handles a period late.
    const std::vector<std::uint64_t> times = collector.Times();
    EXPECT_GE(times.front() + 1000, before);
    EXPECT_LE(times.back(), NowMs());
    EXPECT_TRUE(std::is_sorted(times.begin(), times.end()));
    EXPECT_GE(times.back() - times.front(), 400U);
}

} // namespace
} // namespace tracksmith::midi::jack
