#include "app/backups/texts.h"

#include <new>
#include <system_error>

#include "base/system_reason.h"

#include "app/session/texts.h"

namespace tracksmith::backups::texts {

std::string Failed(Language language, std::string_view reason) {
    constexpr Text kFailed{
        De{"Der Song konnte nicht gesichert werden. Bitte selbst speichern, bis das wieder geht."},
        En{"The song could not be backed up. Save it yourself until that works again."}};
    std::string text(kFailed.In(language));
    return reason.empty() ? text : text.append(" ").append(reason);
}

std::string Reason(const std::exception& error, Language language) {
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        return std::string(session::texts::kNoMemory.In(language));
    }
    if (const auto* fault = dynamic_cast<const std::system_error*>(&error)) {
        return SystemReason(fault->code(), language);
    }
    return error.what();
}

} // namespace tracksmith::backups::texts
