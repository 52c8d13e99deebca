#include "base/parallel.h"

#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <numeric>
#include <stdexcept>
#include <vector>

namespace tracksmith {
namespace {

TEST(ParallelTest, EveryPieceIsDoneOnce) {
    for (const std::size_t threads : {1U, 2U, 4U, 100U}) {
        std::vector<std::atomic<int>> done(1'000);
        ParallelFor(done.size(), threads, [&done](std::size_t i) { ++done[i]; });
        for (const std::atomic<int>& count : done) {
            ASSERT_EQ(count, 1) << threads << " threads";
        }
    }
    ParallelFor(0, 4, [](std::size_t) { FAIL(); });
}

TEST(ParallelTest, ExceptionsReachTheCallerWhenAllHaveEnded) {
    std::atomic<int> running = 0;
    const auto work = [&running](std::size_t i) {
        ++running;
        if (i == 7) {
            --running;
            throw std::runtime_error("seven");
        }
        --running;
    };
    EXPECT_THROW(ParallelFor(1'000, 4, work), std::runtime_error);
    EXPECT_EQ(running, 0);
}

// Blocks of odd sizes at odd places, so that every way of copying has its rest.
TEST(ParallelTest, BlocksOfAnySizeAreCopiedWhole) {
    constexpr std::size_t kMiB = std::size_t{1} << 20;
    for (const std::size_t size : {std::size_t{1}, 3 * kMiB, 5 * kMiB + 13}) {
        for (const std::size_t place : {std::size_t{0}, std::size_t{1}, std::size_t{16}}) {
            std::vector<std::uint8_t> from(2 * size);
            std::iota(from.begin(), from.end(), std::uint8_t{1});
            std::vector<std::uint8_t> to(place + 2 * size + 1, 0xEE);
            std::uint8_t* target = to.data() + place;
            const std::array<MemoryCopy, 3> blocks{{{target, from.data(), size},
                                                    {target + size, from.data() + size, size},
                                                    {nullptr, nullptr, 0}}};
            CopyLarge(blocks);
            EXPECT_TRUE(std::equal(from.begin(), from.end(), target)) << size << " " << place;
            EXPECT_EQ(to.back(), 0xEE);
            EXPECT_TRUE(place == 0 || to[place - 1] == 0xEE);
        }
    }
}

} // namespace
} // namespace tracksmith
