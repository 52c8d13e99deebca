#include <windows.h>
// Needs the types of windows.h.
#include <shlobj.h>

#include "base/system/file_types.h"

namespace tracksmith::system {

void TellFileTypesChanged() {
    SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
}

} // namespace tracksmith::system
