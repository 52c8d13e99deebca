#include "base/system/crash_watch.h"

namespace tracksmith::system {

CrashWatch::CrashWatch(const std::filesystem::path& /*folder*/) {}
CrashWatch::~CrashWatch() = default;

} // namespace tracksmith::system
