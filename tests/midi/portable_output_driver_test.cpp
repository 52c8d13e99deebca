#include <gtest/gtest.h>
#include <thread>

#include "midi/backends/loop/driver.h"
#include "midi/portable_driver.h"

namespace tracksmith::midi {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct PortableOutputTest : testing::Test {
    PortableOutputTest() {
        backend->SetRecording(0, true);
        driver.DeviceCount();
        EXPECT_EQ(driver.Open(0, &Count, &completed, handle), kNoError);
        header.data = bytes.data();
        header.bufferLength = static_cast<std::uint32_t>(bytes.size());
    }

    static void Count(DeviceHandle /*handle*/, std::uint32_t message, void* instance,
                      std::uintptr_t /*param1*/, std::uintptr_t /*param2*/) {
        *static_cast<int*>(instance) += message == kOutputDone ? 1 : 0;
    }

    std::vector<Bytes> Sent() {
        std::vector<Bytes> sent;
        for (const auto& message : backend->TakeSent(0)) {
            sent.push_back(message.bytes);
        }
        return sent;
    }

    std::shared_ptr<loop::LoopBackend> backend = std::make_shared<loop::LoopBackend>(2);
    loop::LoopOutputDriver driver{backend};
    DeviceHandle handle = 0;
    int completed = 0;
    Bytes bytes{0xF0, 1, 2, 0xF7};
    MidiHeader header;
};

TEST_F(PortableOutputTest, KeepsTheRulesForHeaders) {
    EXPECT_EQ(driver.LongMessage(handle, header), kUnprepared);
    EXPECT_EQ(driver.UnprepareHeader(handle, header), kNoError);
    EXPECT_EQ(driver.PrepareHeader(handle, header), kNoError);
    EXPECT_EQ(driver.PrepareHeader(handle, header), kNoError);
    driver.HoldCompletions(true);
    EXPECT_EQ(driver.LongMessage(handle, header), kNoError);
    EXPECT_EQ(header.flags, MidiHeader::kPrepared | MidiHeader::kInQueue);
    EXPECT_EQ(driver.LongMessage(handle, header), kStillPlaying);
    EXPECT_EQ(driver.UnprepareHeader(handle, header), kStillPlaying);
    EXPECT_EQ(driver.Close(handle), kStillPlaying);
    EXPECT_EQ(completed, 0);
    driver.HoldCompletions(false);
    EXPECT_EQ(completed, 1);
    EXPECT_EQ(header.flags, MidiHeader::kPrepared | MidiHeader::kDone);
    EXPECT_EQ(driver.UnprepareHeader(handle, header), kNoError);
    EXPECT_EQ(header.flags, MidiHeader::kDone);
    EXPECT_EQ(driver.Close(handle), kNoError);
    EXPECT_EQ(driver.PrepareHeader(handle, header), kInvalidHandle);
    EXPECT_EQ(driver.Close(handle), kInvalidHandle);
}

TEST_F(PortableOutputTest, RefusesBuffersThatAreTooLongOrMissing) {
    bytes.assign(65'536, 1);
    header.data = bytes.data();
    header.bufferLength = 65'536;
    EXPECT_EQ(driver.PrepareHeader(handle, header), kInvalidParameter);
    header.bufferLength = 65'535;
    EXPECT_EQ(driver.PrepareHeader(handle, header), kNoError);
    MidiHeader bare;
    EXPECT_EQ(driver.PrepareHeader(handle, bare), kInvalidParameter);
}

TEST_F(PortableOutputTest, ReturnsTheCodeOfAFailedSending) {
    driver.PrepareHeader(handle, header);
    backend->FailNext(0, kNotReady);
    EXPECT_EQ(driver.LongMessage(handle, header), kNotReady);
    EXPECT_EQ(completed, 0);
    EXPECT_EQ(driver.LongMessage(handle, header), kNoError);
    EXPECT_EQ(completed, 1);
    EXPECT_EQ(Sent(), std::vector<Bytes>{bytes});
    backend->FailNext(1, kAllocated);
    DeviceHandle other = 0;
    EXPECT_EQ(driver.Open(1, &Count, &completed, other), kAllocated);
    EXPECT_EQ(driver.Open(2, &Count, &completed, other), kBadDeviceId);
}

TEST_F(PortableOutputTest, SendsShortMessagesAtTheirLength) {
    for (const std::uint32_t packed : {0xFFFF90U, 0x0102C1U, 0x0102DFU, 0x0102E0U, 0x0102F1U,
                                       0x0102F2U, 0x0102F3U, 0x0102F6U, 0x0102F8U, 0x0102FFU}) {
        EXPECT_EQ(driver.ShortMessage(handle, packed), kNoError);
    }
    EXPECT_EQ(Sent(), (std::vector<Bytes>{{0x90, 0x7F, 0x7F},
                                          {0xC1, 2},
                                          {0xDF, 2},
                                          {0xE0, 2, 1},
                                          {0xF1, 2},
                                          {0xF2, 2, 1},
                                          {0xF3, 2},
                                          {0xF6},
                                          {0xF8},
                                          {0xFF}}));
    EXPECT_EQ(driver.ShortMessage(handle, 0x3C), kBadOpenMode);
    EXPECT_EQ(driver.ShortMessage(handle, 0xF0), kInvalidParameter);
    EXPECT_TRUE(Sent().empty());
}

TEST_F(PortableOutputTest, ResetEndsTheNotesOfEveryChannel) {
    EXPECT_EQ(driver.Reset(handle), kNoError);
    const auto sent = Sent();
    ASSERT_EQ(sent.size(), 32U);
    EXPECT_EQ(sent[0], (Bytes{0xB0, 64, 0}));
    EXPECT_EQ(sent[31], (Bytes{0xBF, 123, 0}));
    backend->Vanish(0);
    EXPECT_EQ(driver.Reset(handle), kNoDriver);
}

TEST_F(PortableOutputTest, RemembersTheVolumeOfADevice) {
    std::uint32_t volume = 0;
    EXPECT_EQ(driver.GetVolume(0, volume), kNoError);
    EXPECT_EQ(volume, 0xFFFFFFFFU);
    EXPECT_EQ(driver.SetVolume(0, 0x40001000), kNoError);
    EXPECT_EQ(backend->Volume(0), 0x4000U);
    EXPECT_EQ(driver.SetVolume(1, 0x20002000), kNoError);
    EXPECT_EQ(backend->Volume(1), 0xFFFFU);
    DeviceHandle other = 0;
    driver.Open(1, &Count, &completed, other);
    EXPECT_EQ(backend->Volume(1), 0x2000U);
    driver.GetVolume(0, volume);
    EXPECT_EQ(volume, 0x40001000U);
    EXPECT_EQ(driver.SetVolume(2, 0), kBadDeviceId);
}

TEST_F(PortableOutputTest, KeepsMessagesOfSeveralThreadsApart) {
    driver.PrepareHeader(handle, header);
    {
        const std::jthread notes([&] {
            for (int i = 0; i < 300; ++i) {
                driver.ShortMessage(handle, 0x010290);
            }
        });
        for (int i = 0; i < 100; ++i) {
            ASSERT_EQ(driver.LongMessage(handle, header), kNoError);
            driver.SetVolume(0, 1);
            driver.DeviceCount();
        }
    }
    EXPECT_EQ(completed, 100);
    EXPECT_EQ(Sent().size(), 400U);
}

} // namespace
} // namespace tracksmith::midi
