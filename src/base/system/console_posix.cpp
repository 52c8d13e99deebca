#include "base/system/console.h"

namespace tracksmith::system {

void JoinParentConsole() {}

} // namespace tracksmith::system
