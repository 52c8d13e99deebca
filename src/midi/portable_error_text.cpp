#include "midi/portable_error_text.h"

#include <algorithm>
#include <array>

#include "midi/texts.h"

namespace tracksmith::midi {
namespace {

struct Row {
    ResultCode code = kNoError;
    Text text;
};

constexpr auto kRows = std::to_array<Row>({
    {kUnspecifiedError, texts::kUnspecifiedError},
    {kBadDeviceId, texts::kBadDeviceId},
    {kAllocated, texts::kAllocated},
    {kInvalidHandle, texts::kInvalidHandle},
    {kNoDriver, texts::kNoDriver},
    {kNoMemory, texts::kNoMemory},
    {kNotSupported, texts::kNotSupported},
    {kInvalidFlag, texts::kInvalidFlag},
    {kInvalidParameter, texts::kInvalidParameter},
    {kUnprepared, texts::kUnprepared},
    {kStillPlaying, texts::kStillPlaying},
    {kNotReady, texts::kNotReady},
    {kNoDevice, texts::kNoDevice},
    {kBadOpenMode, texts::kBadOpenMode},
});

} // namespace

std::string PortableErrorText(ResultCode code) {
    const auto* row = std::find_if(kRows.begin(), kRows.end(),
                                   [&](const Row& candidate) { return candidate.code == code; });
    return row != kRows.end() ? std::string(row->text.english) : std::string();
}

} // namespace tracksmith::midi
