#include "midi/portable_input_driver.h"

#include <gtest/gtest.h>

#include "midi/backends/loop/backend.h"

namespace tracksmith::midi {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct Received {
    std::uint32_t message;
    Bytes bytes;
    bool operator==(const Received&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Received& received) {
    return stream << received.message << testing::PrintToString(received.bytes);
}

struct PortableInputTest : testing::Test {
    PortableInputTest() {
        EXPECT_EQ(driver.Open(0, &Receive, this, handle), kNoError);
        driver.Start(handle);
    }

    static void Receive(DeviceHandle /*handle*/, std::uint32_t message, void* instance,
                        std::uintptr_t param1, std::uintptr_t param2) {
        auto& self = *static_cast<PortableInputTest*>(instance);
        self.lastMs = param2;
        Received& received = self.received.emplace_back();
        received.message = message;
        if (message == kInputData) {
            received.bytes = {static_cast<std::uint8_t>(param1),
                              static_cast<std::uint8_t>(param1 >> 8),
                              static_cast<std::uint8_t>(param1 >> 16)};
        } else {
            const auto* header = reinterpret_cast<const MidiHeader*>(param1);
            EXPECT_EQ(header->flags, MidiHeader::kPrepared | MidiHeader::kDone);
            received.bytes.assign(header->data, header->data + header->bytesRecorded);
        }
    }

    void Lend(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            headers[i].data = memory[i];
            headers[i].bufferLength = 4;
            EXPECT_EQ(driver.PrepareHeader(handle, headers[i]), kNoError);
            EXPECT_EQ(driver.AddBuffer(handle, headers[i]), kNoError);
        }
    }

    std::shared_ptr<loop::LoopBackend> backend = std::make_shared<loop::LoopBackend>();
    PortableInputDriver driver{backend};
    DeviceHandle handle = 0;
    std::vector<Received> received;
    std::uintptr_t lastMs = 0;
    MidiHeader headers[3];
    std::uint8_t memory[3][4] = {};
};

struct SplitCase {
    std::size_t buffers;
    Bytes message;
    std::vector<Received> parts;
};

class SplitTest : public PortableInputTest, public testing::WithParamInterface<SplitCase> {};

TEST_P(SplitTest, GivesTheMessageInParts) {
    Lend(GetParam().buffers);
    backend->Deliver(0, GetParam().message);
    EXPECT_EQ(received, GetParam().parts);
    driver.Reset(handle);
}

INSTANTIATE_TEST_SUITE_P(
    Messages, SplitTest,
    testing::Values(SplitCase{0, {0x90, 1, 2}, {{kInputData, {0x90, 1, 2}}}},
                    SplitCase{0, {0xFE}, {{kInputData, {0xFE, 0, 0}}}},
                    SplitCase{1, {0xF0, 1, 2, 0xF7}, {{kInputLongData, {0xF0, 1, 2, 0xF7}}}},
                    SplitCase{1, {2, 3, 4, 0xF7}, {{kInputLongData, {2, 3, 4, 0xF7}}}}, // its end
                    SplitCase{1, {0xF0, 0xF7}, {{kInputLongData, {0xF0, 0xF7}}}},
                    SplitCase{3,
                              {0xF0, 1, 2, 3, 4, 0xF7},
                              {{kInputLongData, {0xF0, 1, 2, 3}}, {kInputLongData, {4, 0xF7}}}},
                    SplitCase{2,
                              {0xF0, 1, 2, 3, 4, 5, 6, 7, 8, 0xF7},
                              {{kInputLongData, {0xF0, 1, 2, 3}}, {kInputLongError, {4, 5, 6, 7}}}},
                    SplitCase{1, {0xF0, 1, 2}, {{kInputLongError, {0xF0, 1, 2}}}},
                    SplitCase{0, {0xF0, 1, 2, 0xF7}, {}}));

TEST_F(PortableInputTest, ReceivesOnlyBetweenStartAndStop) {
    const Bytes note{0x90, 1, 2};
    driver.Stop(handle);
    backend->Deliver(0, note);
    EXPECT_TRUE(received.empty());
    driver.Start(handle);
    backend->Deliver(0, note);
    EXPECT_EQ(received.size(), 1U);
    EXPECT_LT(lastMs, 5000U);
}

TEST_F(PortableInputTest, KeepsTheRulesForBuffers) {
    Lend(2);
    EXPECT_EQ(driver.AddBuffer(handle, headers[0]), kStillPlaying);
    EXPECT_EQ(driver.UnprepareHeader(handle, headers[0]), kStillPlaying);
    EXPECT_EQ(driver.AddBuffer(handle, headers[2]), kUnprepared);
    EXPECT_EQ(driver.Close(handle), kStillPlaying);
    EXPECT_EQ(driver.Reset(handle), kNoError);
    EXPECT_EQ(received, (std::vector<Received>{{kInputLongData, {}}, {kInputLongData, {}}}));
    EXPECT_EQ(driver.UnprepareHeader(handle, headers[0]), kNoError);
    EXPECT_EQ(driver.Close(handle), kNoError);
    EXPECT_EQ(driver.Start(handle), kInvalidHandle);
}

TEST_F(PortableInputTest, TellsWhyAPortCannotBeOpened) {
    DeviceHandle other = 0;
    EXPECT_EQ(driver.Open(1, &Receive, this, other), kBadDeviceId);
    backend->Vanish(0);
    EXPECT_EQ(driver.Open(0, &Receive, this, other), kNoDriver);
    EXPECT_EQ(driver.DeviceCount(), 0U);
    EXPECT_NE(driver.ErrorText(kNoDriver), "");
    EXPECT_EQ(driver.ErrorText(1000), "");
}

} // namespace
} // namespace tracksmith::midi
