#include <array>
#include <memory>
#include <string>

#include "midi/backends/winmm/loop_fixture.h"

namespace tracksmith::midi {
namespace {

using namespace test;

class Devices : public LoopTest {
protected:
    WinmmOutputDriver output_;
    WinmmInputDriver input_;
};

TEST_F(Devices, OutputsTellWhatTheyAre) {
    DeviceCapabilities port;
    ASSERT_EQ(output_.Capabilities(wineloop::kTestDevice, port), kNoError);
    EXPECT_EQ(port.productName, "Loop Flügel");
    EXPECT_EQ(port.driverVersion, wineloop::kDriverVersion);
    EXPECT_EQ(port.technology, 1U);
    EXPECT_EQ(port.channelMask, 0xFFFF);
    EXPECT_EQ(port.support, 0U);

    DeviceCapabilities synthesizer;
    ASSERT_EQ(output_.Capabilities(wineloop::kSteeringDevice, synthesizer), kNoError);
    EXPECT_EQ(synthesizer.productName, "Loop Steering");
    EXPECT_EQ(synthesizer.technology, 2U);
    EXPECT_EQ(synthesizer.voices, 64U);
    EXPECT_EQ(synthesizer.notes, 48U);
    EXPECT_EQ(synthesizer.channelMask, 0x0FFF);
    EXPECT_EQ(synthesizer.support, DeviceCapabilities::kVolume | DeviceCapabilities::kStereoVolume);
}

TEST_F(Devices, InputsTellWhatTheyAre) {
    DeviceCapabilities port;
    ASSERT_EQ(input_.Capabilities(wineloop::kTestDevice, port), kNoError);
    EXPECT_EQ(port.productName, "Loop Flügel");
    EXPECT_EQ(port.driverVersion, wineloop::kDriverVersion);
    EXPECT_EQ(port.technology, 0U);
}

TEST_F(Devices, NumbersBeyondTheLastAreRefused) {
    DeviceCapabilities unchanged{.productName = "before"};
    DeviceHandle handle = 1;
    EXPECT_EQ(output_.Capabilities(wineloop::kDevices, unchanged), kBadDeviceId);
    EXPECT_EQ(input_.Capabilities(wineloop::kDevices, unchanged), kBadDeviceId);
    EXPECT_EQ(unchanged.productName, "before");
    EXPECT_EQ(output_.Open(wineloop::kDevices, Notices::Callback, nullptr, handle), kBadDeviceId);
    EXPECT_EQ(input_.Open(wineloop::kDevices, Notices::Callback, nullptr, handle), kBadDeviceId);
    EXPECT_EQ(handle, 0U);
}

TEST_F(Devices, AnOpenDeviceCannotBeOpenedAgainUntilItIsClosed) {
    DeviceHandle second = 1;
    auto output = std::make_unique<LoopOutputPort>();
    auto input = std::make_unique<LoopInputPort>();
    EXPECT_EQ(output_.Open(wineloop::kTestDevice, Notices::Callback, nullptr, second), kAllocated);
    EXPECT_EQ(input_.Open(wineloop::kTestDevice, Notices::Callback, nullptr, second), kAllocated);
    const DeviceHandle closed = output->handle;
    output.reset();
    input.reset();
    EXPECT_EQ(output_.ShortMessage(closed, 0x90), kInvalidHandle);
    const LoopOutputPort outputAgain;
    const LoopInputPort inputAgain;
}

TEST_F(Devices, VolumeIsKeptByTheDeviceWithoutOpeningIt) {
    std::uint32_t volume = 0;
    EXPECT_EQ(output_.SetVolume(wineloop::kTestDevice, 0x1234ABCD), kNoError);
    EXPECT_EQ(output_.GetVolume(wineloop::kTestDevice, volume), kNoError);
    EXPECT_EQ(volume, 0x1234ABCDU);

    FailNext(kModSetVolume, kNotSupported);
    EXPECT_EQ(output_.SetVolume(wineloop::kTestDevice, 0), kNotSupported);
    FailNext(kModGetVolume, kNoDriver);
    EXPECT_EQ(output_.GetVolume(wineloop::kTestDevice, volume), kNoDriver);
    EXPECT_EQ(volume, 0x1234ABCDU);
    EXPECT_EQ(output_.GetVolume(wineloop::kTestDevice, volume), kNoError);
    EXPECT_EQ(volume, 0x1234ABCDU);
}

TEST_F(Devices, CachingIsRefusedAsTheSystemDoes) {
    const LoopOutputPort port;
    const std::array<std::uint16_t, 128> patches = {0xFFFF};
    EXPECT_EQ(output_.CachePatches(port.handle, 0, patches, 1), kNotSupported);
    EXPECT_EQ(output_.CacheDrumPatches(port.handle, 0, patches, 1), kNotSupported);
}

TEST_F(Devices, ErrorTextsAreTheSystemsAndEmptyForOtherCodes) {
    EXPECT_FALSE(output_.ErrorText(kInvalidHandle).empty());
    EXPECT_NE(output_.ErrorText(kInvalidHandle), output_.ErrorText(kUnprepared));
    EXPECT_EQ(output_.ErrorText(kNotReady), input_.ErrorText(kNotReady));
    EXPECT_EQ(output_.ErrorText(12345), "");
    EXPECT_EQ(input_.ErrorText(12345), "");
}

} // namespace
} // namespace tracksmith::midi
