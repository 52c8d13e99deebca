#include "midi/driver_set.h"

#include <gtest/gtest.h>

#include "midi/fake_input_driver.h"
#include "midi/fake_output_driver.h"

namespace tracksmith::midi {
namespace {

std::vector<DeviceCapabilities> Named(const std::vector<std::string>& names) {
    std::vector<DeviceCapabilities> devices(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        devices[i].productName = names[i];
    }
    return devices;
}

struct Received {
    DeviceHandle handle = 0;
    std::uintptr_t parameter = 0;
};

void Receive(DeviceHandle handle, std::uint32_t /*message*/, void* instance, std::uintptr_t param1,
             std::uintptr_t /*param2*/) {
    *static_cast<Received*>(instance) = {handle, param1};
}

struct OutputSetTest : testing::Test {
    OutputSetTest() {
        std::vector<std::unique_ptr<MidiOutputDriver>> drivers;
        for (FakeOutputDriver** driver : {&first, &second}) {
            auto owned = std::make_unique<FakeOutputDriver>();
            *driver = owned.get();
            drivers.push_back(std::move(owned));
        }
        first->devices = Named({"A", "B"});
        second->devices = Named({"B", "C"});
        set = std::make_unique<MidiOutputDriverSet>(std::move(drivers));
    }

    std::string Name(std::uint32_t device) {
        DeviceCapabilities capabilities;
        return set->Capabilities(device, capabilities) == kNoError ? capabilities.productName : "-";
    }

    FakeOutputDriver* first = nullptr;
    FakeOutputDriver* second = nullptr;
    std::unique_ptr<MidiOutputDriverSet> set;
    Received received;
};

TEST_F(OutputSetTest, NumbersDevicesOnAsTheyCome) {
    EXPECT_EQ(Name(2), "B (2)");
    EXPECT_EQ(set->DeviceCount(), 4U);
    EXPECT_EQ(Name(3), "C");
    EXPECT_EQ(Name(4), "-");
    first->devices = Named({"A"});
    // Numbers hold until the next count
    EXPECT_EQ(Name(3), "C");
    EXPECT_EQ(set->DeviceCount(), 3U);
    EXPECT_EQ(Name(1), "B");
}

TEST_F(OutputSetTest, RoutesCallsByHandleAndByNumber) {
    DeviceHandle inFirst = 0;
    DeviceHandle inSecond = 0;
    EXPECT_EQ(set->Open(1, &Receive, &received, inFirst), kNoError);
    EXPECT_EQ(set->Open(3, &Receive, &received, inSecond), kNoError);
    EXPECT_NE(inFirst, inSecond);
    first->calls.clear();
    second->calls.clear();
    second->results["LongMessage"] = kNotReady;
    MidiHeader header;
    EXPECT_EQ(set->ShortMessage(inSecond, 144), kNoError);
    EXPECT_EQ(set->PrepareHeader(inSecond, header), kNoError);
    EXPECT_EQ(set->LongMessage(inSecond, header), kNotReady);
    EXPECT_EQ(set->UnprepareHeader(inSecond, header), kNoError);
    EXPECT_EQ(set->SetVolume(2, 9), kNoError);
    EXPECT_EQ(set->Reset(inFirst), kNoError);
    EXPECT_EQ(second->calls,
              (std::vector<std::string>{"ShortMessage 144", "PrepareHeader 0", "LongMessage 0",
                                        "UnprepareHeader 0", "SetVolume 0"}));
    EXPECT_EQ(first->calls, std::vector<std::string>{"Reset 77"});
    second->callback(FakeOutputDriver::kHandle, kOutputDone, second->instance, 5, 0);
    EXPECT_EQ(received.handle, inSecond);
    EXPECT_EQ(received.parameter, 5U);
}

TEST_F(OutputSetTest, RefusesWhatIsNotOpenOrNotThere) {
    DeviceHandle handle = 0;
    EXPECT_EQ(set->Open(4, &Receive, &received, handle), kBadDeviceId);
    EXPECT_EQ(set->SetVolume(4, 0), kBadDeviceId);
    first->results["Open"] = kAllocated;
    EXPECT_EQ(set->Open(0, &Receive, &received, handle), kAllocated);
    EXPECT_EQ(set->ShortMessage(1, 0), kInvalidHandle);
    first->results.clear();
    set->Open(0, &Receive, &received, handle);
    first->results["Close"] = kStillPlaying;
    EXPECT_EQ(set->Close(handle), kStillPlaying);
    EXPECT_EQ(set->ShortMessage(handle, 0), kNoError);
    first->results.clear();
    EXPECT_EQ(set->Close(handle), kNoError);
    EXPECT_EQ(set->ShortMessage(handle, 0), kInvalidHandle);
    EXPECT_EQ(set->ErrorText(4), "system text 4");
}

TEST(InputSetTest, RoutesBuffersAndMessages) {
    std::vector<std::unique_ptr<MidiInputDriver>> drivers;
    drivers.push_back(std::make_unique<FakeInputDriver>());
    auto owned = std::make_unique<FakeInputDriver>();
    FakeInputDriver& second = *owned;
    drivers.push_back(std::move(owned));
    MidiInputDriverSet set(std::move(drivers));
    Received received;
    DeviceHandle handle = 0;
    MidiHeader header;
    ASSERT_EQ(set.Open(1, &Receive, &received, handle), kNoError);
    set.PrepareHeader(handle, header);
    set.AddBuffer(handle, header);
    set.Start(handle);
    second.DeliverShort(0x90);
    EXPECT_EQ(received.handle, handle);
    EXPECT_EQ(received.parameter, 0x90U);
    set.Stop(handle);
    set.Reset(handle);
    set.UnprepareHeader(handle, header);
    set.Close(handle);
    EXPECT_EQ(second.calls,
              (std::vector<std::string>{"Capabilities", "Open", "PrepareHeader", "AddBuffer",
                                        "Start", "Stop", "Reset", "UnprepareHeader", "Close"}));
}

} // namespace
} // namespace tracksmith::midi
