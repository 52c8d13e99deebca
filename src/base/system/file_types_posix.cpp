#include "base/system/file_types.h"

namespace tracksmith::system {

void TellFileTypesChanged() {}

} // namespace tracksmith::system
