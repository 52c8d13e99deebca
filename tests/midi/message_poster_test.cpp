#include "base/system/message_poster.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

namespace tracksmith::system {
namespace {

using Messages = std::vector<std::uint32_t>;

TEST(MessagePoster, HandsEachNumberOverOnceToItsOwnThread) {
    Messages received;
    std::thread::id thread;
    MessagePoster poster([&](std::uint32_t message) {
        received.push_back(message);
        thread = std::this_thread::get_id();
    });
    std::jthread([&] {
        for (int i = 0; i < 20'000; ++i) {
            poster.Post(963);
        }
        poster.Post(969);
        poster.Post(4095);
        // Another thread's messages are none of its business
        DispatchMessages();
    }).join();
    EXPECT_TRUE(received.empty());
    DispatchMessages();
    EXPECT_EQ(received, (Messages{963, 969, 4095}));
    EXPECT_EQ(thread, std::this_thread::get_id());
    DispatchMessages();
    EXPECT_EQ(received.size(), 3U);
}

TEST(MessagePoster, TakesNumbersThatTheSystemUses) {
    Messages received;
    MessagePoster poster([&](std::uint32_t message) { received.push_back(message); });
    const Messages numbers{0, 1, 2, 16, 17, 18, 928, 1024, 4095};
    for (const std::uint32_t number : numbers) {
        poster.Post(number);
    }
    DispatchMessages();
    EXPECT_EQ(received, numbers);
}

TEST(MessagePoster, MayBePostedToAndDestroyedByItsHandler) {
    int calls = 0;
    std::unique_ptr<MessagePoster> poster;
    poster = std::make_unique<MessagePoster>([&](std::uint32_t message) {
        ++calls;
        if (message == 1) {
            poster->Post(2);
        } else {
            poster.reset();
        }
    });
    MessagePoster behind([&](std::uint32_t /*message*/) { calls += 10; });
    poster->Post(1);
    poster->Post(3000);
    poster->Post(3001);
    behind.Post(1);
    DispatchMessages();
    DispatchMessages();
    EXPECT_EQ(poster, nullptr);
    EXPECT_EQ(calls, 12);
}

TEST(MessagePoster, KeepsWhatIsPostedWhileTheSameIsHandled) {
    int calls = 0;
    std::unique_ptr<MessagePoster> poster;
    poster = std::make_unique<MessagePoster>([&](std::uint32_t message) {
        if (++calls == 1) {
            poster->Post(message);
        }
    });
    poster->Post(5);
    DispatchMessages();
    DispatchMessages();
    EXPECT_EQ(calls, 2);
}

TEST(MessagePoster, LosesNoMessagePostedWhileOthersAreHandled) {
    constexpr int kCount = 5000;
    std::atomic<int> posted = 0;
    int seen = 0;
    MessagePoster poster([&](std::uint32_t /*message*/) { seen = posted; });
    const std::jthread posting([&] {
        for (int i = 0; i < kCount; ++i) {
            ++posted;
            poster.Post(5);
        }
    });
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (seen < kCount && std::chrono::steady_clock::now() < deadline) {
        DispatchMessages();
    }
    EXPECT_EQ(seen, kCount);
}

#ifndef _WIN32
TEST(MessagePoster, WakesTheThreadUpOncePerMessage) {
    std::atomic<int> wakeUps = 0;
    MessagePoster poster([](std::uint32_t /*message*/) {});
    SetMessageWakeUp([&] { ++wakeUps; });
    std::jthread([&] {
        poster.Post(1);
        poster.Post(1);
    }).join();
    EXPECT_EQ(wakeUps, 1);
    DispatchMessages();
    poster.Post(1);
    EXPECT_EQ(wakeUps, 2);
    SetMessageWakeUp(nullptr);
    poster.Post(2);
    EXPECT_EQ(wakeUps, 2);
}
#endif

} // namespace
} // namespace tracksmith::system
