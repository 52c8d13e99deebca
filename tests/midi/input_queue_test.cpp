#include "midi/input_queue.h"

#include <gtest/gtest.h>
#include <thread>

namespace tracksmith::midi {
namespace {

TEST(InputQueue, KeepsOrderBetweenTwoThreadsOverManyWraps) {
    constexpr std::uint64_t kCount = 20'000;
    InputQueue queue(7);
    std::jthread producer([&] {
        for (std::uint64_t i = 0; i < kCount;) {
            if (queue.Put({i, i * 3, nullptr})) {
                ++i;
            } else {
                std::this_thread::yield();
            }
        }
    });
    for (std::uint64_t i = 0; i < kCount;) {
        QueueEntry entry;
        if (queue.Take(entry)) {
            ASSERT_EQ(entry.time, i);
            ASSERT_EQ(entry.shortData, i * 3);
            ++i;
        }
    }
    producer.join();
    EXPECT_EQ(queue.MessageCount(), 0);
}

TEST(InputQueue, HoldsExactlyItsCapacity) {
    for (const std::uint16_t capacity : std::initializer_list<std::uint16_t>{0, 1, 65'535}) {
        InputQueue queue(capacity);
        for (std::uint32_t i = 0; i < capacity; ++i) {
            ASSERT_TRUE(queue.Put({i, 0, nullptr}));
        }
        EXPECT_FALSE(queue.Put({1, 0, nullptr}));
        EXPECT_EQ(queue.MessageCount(), capacity);
    }
}

} // namespace
} // namespace tracksmith::midi
