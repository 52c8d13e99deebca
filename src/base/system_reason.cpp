#include "base/system_reason.h"

#include <array>
#include <cerrno>

#include "base/display_text.h"
#include "base/texts.h"

namespace tracksmith {
namespace {

struct Reason {
    std::errc condition;
    const Text* words;
};

constexpr auto kReasons = std::to_array<Reason>({
    {std::errc::no_space_on_device, &texts::kDiskFull},
    {std::errc::file_too_large, &texts::kTooLargeHere},
    {std::errc::permission_denied, &texts::kNoPermission},
    {std::errc::operation_not_permitted, &texts::kNoPermission},
    {std::errc::read_only_file_system, &texts::kWriteProtected},
    {std::errc::no_such_file_or_directory, &texts::kDoesNotExist},
    {std::errc::not_a_directory, &texts::kNoFolder},
    {std::errc::is_a_directory, &texts::kIsFolder},
    {std::errc::operation_not_supported, &texts::kNoRegularFile},
    {std::errc::filename_too_long, &texts::kNameTooLong},
    {std::errc::io_error, &texts::kDiskFault},
    {std::errc::device_or_resource_busy, &texts::kInUse},
    {std::errc::text_file_busy, &texts::kInUse},
    {std::errc::too_many_files_open, &texts::kTooManyOpen},
    {std::errc::too_many_files_open_in_system, &texts::kTooManyOpen},
    {std::errc::not_enough_memory, &texts::kNoMemory},
});

// A full share of the disk has no name among the conditions of the language.
bool IsQuota([[maybe_unused]] const std::error_code& error) {
#ifdef EDQUOT
    return error.category() == std::system_category() && error.value() == EDQUOT;
#else
    return false;
#endif
}

} // namespace

std::string SystemReason(const std::error_code& error, Language language) {
    if (!error) {
        return {};
    }
    if (IsQuota(error)) {
        return std::string(texts::kDiskFull.In(language));
    }
    for (const Reason& reason : kReasons) {
        if (error == reason.condition) {
            return std::string(reason.words->In(language));
        }
    }
    return std::string(texts::kSystemSays.In(language)) + DisplayText(error.message());
}

} // namespace tracksmith
