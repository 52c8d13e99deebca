#include "midi/backends/alsa/packet_joiner.h"

#include <gtest/gtest.h>

namespace tracksmith::midi::alsa {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct JoinCase {
    std::vector<Bytes> packets;
    /// What leaves, packet by packet; a refused packet leaves nothing.
    std::vector<Bytes> sent;
    ResultCode last = kNoError;
};

class Joins : public testing::TestWithParam<JoinCase> {};

TEST_P(Joins, SendOnlyWholeMessages) {
    PacketJoiner joiner;
    std::vector<Bytes> sent;
    ResultCode result = kNoError;
    for (const Bytes& packet : GetParam().packets) {
        std::span<const std::uint8_t> ready;
        result = joiner.Join(packet, ready);
        if (!ready.empty()) {
            sent.emplace_back(ready.begin(), ready.end());
        }
    }
    EXPECT_EQ(sent, GetParam().sent);
    EXPECT_EQ(result, GetParam().last);
}

INSTANTIATE_TEST_SUITE_P(
    Packets, Joins,
    testing::Values(JoinCase{{{0x90, 1, 2}, {0xF0, 1, 0xF7}}, {{0x90, 1, 2}, {0xF0, 1, 0xF7}}},
                    JoinCase{{{0xF0, 1}, {0xF7, 2, 3}, {0xF8}, {0xF7, 4, 0xF7}, {0x90, 1, 2}},
                             {{0xF8}, {0xF0, 1, 2, 3, 4, 0xF7}, {0x90, 1, 2}}},
                    JoinCase{{{0xF0, 1}, {0xF7}}, {{0xF0, 1, 0xF7}}},
                    JoinCase{
                        {{0xF0, 1}, {0x90, 1, 2}, {0xF7, 4, 0xF7}}, {{0x90, 1, 2}}, kNotSupported},
                    JoinCase{{{0xF0, 1}, {0xF0, 2}, {0xF7, 3, 0xF7}}, {{0xF0, 2, 3, 0xF7}}},
                    JoinCase{{{0xF7, 0xF3, 5}}, {{0xF3, 5}}}));

TEST(PacketJoiner, RefusesAMessageThatNeverEnds) {
    PacketJoiner joiner;
    std::span<const std::uint8_t> ready;
    ASSERT_EQ(joiner.Join(Bytes{0xF0, 1}, ready), kNoError);
    Bytes packet(65536, 1);
    packet.front() = 0xF7;
    ResultCode result = kNoError;
    for (int i = 0; i < 17 && result == kNoError; ++i) {
        result = joiner.Join(packet, ready);
    }
    EXPECT_EQ(result, kNoMemory);
    EXPECT_TRUE(ready.empty());
}

} // namespace
} // namespace tracksmith::midi::alsa
