#include "midi/backends/alsa/backend.h"

#include <chrono>
#include <gtest/gtest.h>
#include <unistd.h>

namespace tracksmith::midi::alsa {
namespace {

TEST(AlsaBackend, MissingPortsGiveCodesAndNoNoise) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const auto backend = MakePortBackend();
    std::size_t ports = 0;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 20; ++i) {
        ports += backend->Outputs().size() + backend->Inputs().size();
    }
    const auto duration = std::chrono::steady_clock::now() - start;
    ResultCode outResult = kNoError;
    ResultCode inResult = kNoError;
    EXPECT_EQ(backend->OpenOutput("No such port", outResult), nullptr);
    EXPECT_EQ(backend->OpenInput(
                  "No such port", [](auto, auto) {}, inResult),
              nullptr);
    EXPECT_EQ(outResult, kBadDeviceId);
    EXPECT_EQ(inResult, kBadDeviceId);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_LT(duration, std::chrono::seconds(1));
    if (access("/dev/snd/seq", F_OK) != 0) {
        EXPECT_EQ(ports, 0U);
    }
}

} // namespace
} // namespace tracksmith::midi::alsa
