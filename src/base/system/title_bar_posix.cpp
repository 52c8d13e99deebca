#include "base/system/title_bar.h"

namespace tracksmith::system {

void SetTitleBarDark(std::uintptr_t /*window*/, bool /*dark*/) noexcept {}

} // namespace tracksmith::system
