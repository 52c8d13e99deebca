#include "midi/abandoned.h"

#include <mutex>
#include <vector>

namespace tracksmith::midi {

void Abandon(std::shared_ptr<void> object) {
    static std::mutex mutex;
    // Never destroyed: a driver's thread may outlive the destructors of the program
    static auto& objects = *new std::vector<std::shared_ptr<void>>;
    const std::scoped_lock lock(mutex);
    objects.push_back(std::move(object));
}

} // namespace tracksmith::midi
