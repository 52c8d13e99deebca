#include "midi/backends/jack/message_ring.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace tracksmith::midi::jack {
namespace {

// A ring of 128 bytes makes nearly every message wrap around at another place.
TEST(MessageRing, TwoThreadsKeepOrderAndBytes) {
    constexpr std::uint64_t kMessages = 100000;
    MessageRing ring(128);
    const auto sizeOf = [](std::uint64_t number) { return 1 + number * number % 60; };

    std::jthread writer([&] {
        for (std::uint64_t number = 0; number < kMessages;) {
            const std::vector<std::uint8_t> message(sizeOf(number),
                                                    static_cast<std::uint8_t>(number));
            if (ring.Put(message, number << 32)) {
                ++number;
            } else {
                std::this_thread::yield();
            }
        }
    });
    std::vector<std::uint8_t> message;
    std::uint64_t wrong = 0;
    for (std::uint64_t number = 0; number < kMessages;) {
        MessageRing::Head head;
        if (!ring.Peek(head)) {
            std::this_thread::yield();
            continue;
        }
        message.resize(head.size);
        ring.Take(message.data());
        const std::vector<std::uint8_t> expected(sizeOf(number), static_cast<std::uint8_t>(number));
        wrong += head.time != number << 32 || message != expected;
        ++number;
    }
    EXPECT_EQ(wrong, 0U);
    EXPECT_TRUE(ring.Empty());
}

TEST(MessageRing, RefusesWhatDoesNotFitAndForgetsUpToAPosition) {
    MessageRing ring(64);
    EXPECT_FALSE(ring.Put(std::vector<std::uint8_t>(53), 0));
    EXPECT_TRUE(ring.Put(std::vector<std::uint8_t>(20), 1));
    const std::uint64_t position = ring.Written();
    EXPECT_TRUE(ring.Put(std::vector<std::uint8_t>(20), 2));
    EXPECT_FALSE(ring.Put(std::vector<std::uint8_t>(1), 3));
    ring.DropUntil(position);
    MessageRing::Head head;
    ASSERT_TRUE(ring.Peek(head));
    EXPECT_EQ(head.time, 2U);
    EXPECT_TRUE(ring.Put(std::vector<std::uint8_t>(20), 3));
}

} // namespace
} // namespace tracksmith::midi::jack
