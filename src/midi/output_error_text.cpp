#include "midi/output_error_text.h"

#include <algorithm>
#include <array>

#include "midi/system_error_text.h"
#include "midi/texts.h"

namespace tracksmith::midi {
namespace {

struct Row {
    OutputOperation operation = OutputOperation::Other;
    ResultCode code = kNoError;
    Text text;
};

constexpr auto kRows = std::to_array<Row>({
    {OutputOperation::Caching, kInvalidHandle, texts::kCachingHandle},
    {OutputOperation::Caching, kNoMemory, texts::kCachingMemory},
    {OutputOperation::Caching, kNotSupported, texts::kCachingUnsupported},
    {OutputOperation::Caching, kInvalidFlag, texts::kCachingFlag},
    {OutputOperation::Caching, kInvalidParameter, texts::kCachingArray},
    {OutputOperation::ShortMessage, kInvalidHandle, texts::kShortHandle},
    {OutputOperation::ShortMessage, kNotReady, texts::kShortBusy},
    {OutputOperation::ShortMessage, kBadOpenMode, texts::kShortMode},
    {OutputOperation::LongMessage, kInvalidHandle, texts::kLongHandle},
    {OutputOperation::LongMessage, kInvalidParameter, texts::kLongPointer},
    {OutputOperation::LongMessage, kUnprepared, texts::kLongUnprepared},
    {OutputOperation::LongMessage, kNotReady, texts::kLongBusy},
    {OutputOperation::PrepareHeader, kInvalidHandle, texts::kPrepareHandle},
    {OutputOperation::PrepareHeader, kNoMemory, texts::kPrepareMemory},
    {OutputOperation::PrepareHeader, kInvalidParameter, texts::kPrepareAddress},
});

} // namespace

std::string OutputErrorText(OutputOperation operation, ResultCode code, MidiOutputDriver& driver) {
    const auto* row = std::find_if(kRows.begin(), kRows.end(), [&](const Row& candidate) {
        return candidate.operation == operation && candidate.code == code;
    });
    return row != kRows.end() ? std::string(row->text.english) : SystemErrorText(driver, code);
}

} // namespace tracksmith::midi
