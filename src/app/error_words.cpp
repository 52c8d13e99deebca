#include "app/error_words.h"

#include <new>
#include <system_error>

#include "base/system_reason.h"

#include "app/texts.h"

namespace tracksmith::app {

std::string ErrorWords(const std::exception& error, Language language) {
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        return std::string(app::texts::kBufferMemory.In(language));
    }
    if (const auto* refused = dynamic_cast<const std::system_error*>(&error)) {
        return SystemReason(refused->code(), language);
    }
    return error.what();
}

} // namespace tracksmith::app
